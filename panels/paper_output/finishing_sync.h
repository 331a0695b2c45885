// The finishing of the menu in the print settings ticket: its items, and the PPD's options that go with them on
// printers that have these.
#pragma once

#include "panels/paper_output/finishing_choices.h"
#include "platform/printing/PMTicket.h"

/// Reads the finishing. Where the ticket has no item of the finishing menu, its PPD dictionary says what is chosen. The
/// offset of sets is one state with the PPD's "Jog" on a printer whose menu has it.
[[nodiscard]] FinishingSettings ReadFinishing(PMTicketRef ticket);

/// Writes the items, and asks for the PPD's options. The printer's default takes back what an earlier choice of the
/// menu asked for, and leaves all else as it is. A panel that is not shown takes over an offset that another one has
/// changed in the PPD dictionary.
void WriteFinishing(FinishingSettings* finishing, bool isShown, PMTicketRef ticket);
