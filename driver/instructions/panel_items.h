// Items of the print settings ticket that the panels read in place of the PPD dictionary, and write over it on OK.
#pragma once

#include "platform/printing/PMTicket.h"

#include <string>

// Items that the ticket has stay.

/// The job's paper and the output tray, as the PPD dictionary has them.
void fillPaperAndTray(PMTicketRef printSettings);
/// An item of the menu of sets, counted from 0.
void fillSets(PMTicketRef printSettings, SInt32 item);
/// Black and white, if the color correction is.
void fillOutputColor(PMTicketRef printSettings);

/// Gives the document another name. The notes' name of the job follows when it was the document's.
void setDocumentName(PMTicketRef printSettings, const std::string& name);

/// Takes away all that the panels would write over an option of the PPD.
void clearPanelItems(PMTicketRef printSettings, const std::string& mainKeyword);

/// Makes the job one that is printed; everything else that its record holds stays.
void makeNormalJob(PMTicketRef printSettings);

/// The MediaType of the panels' own record of the job's paper; empty when there is none.
std::string panelPaperType(PMTicketRef printSettings);
