// The defaults of a queue, as the maker's panels read them.
#pragma once

#include "host/settings/ppd_choices.h"

/// Writes what the PPD dictionary asks for into those items of the print settings ticket that the Paper and Output
/// panel reads instead, and writes over the dictionary on OK: the job's paper, the output tray and how the sets are
/// stapled. Items that the ticket has stay.
void writePanelDefaults(const PPDChoices& choices, PMTicketRef printSettings);
