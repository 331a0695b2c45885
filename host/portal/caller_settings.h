// The settings of a program that prints through the desktop's portal: what it begins with, and what it is told.
//
// The caller draws the pages, on paper of the size and direction that it is told. All that is done with the pages then
// is done here, when the document is printed, and the caller is told to do none of it: copies, their order, several
// pages on a sheet, scaling, and ranges too, since inserts and exceptions count the pages of the whole document. Only
// the caller knows its current page and what is selected; of these it sends just the pages.
#pragma once

#include "host/portal/portal_request.h"
#include "host/settings/pages_asked.h"
#include "host/settings/print_session.h"

#include <optional>
#include <string>

/// The queue that the caller has used before when it is one of the maker's, else the default one, else the sample
/// printer. May wait for the print server.
Result<Printer> printerOfCaller(const PortalRequest& request, const std::string& samplePPD);

/// What the caller asks for, as far as the printer has it. `installedOptions` may be null.
JobSettings settingsOfCaller(const PortalRequest& request, const Printer& printer, CFDictionaryRef installedOptions);

/// What the caller says of its pages; ranges are in its settings.
PagesOffered pagesOfCaller(const PortalRequest& request);

/// Writes the request's answer and, beside it, the settings that its document will be printed with. Why that was not
/// possible, in a line.
std::optional<std::string> answerCaller(const PortalRequest& request, const PrintSession& session, PagesAsked pages);
