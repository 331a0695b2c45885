// A job's options, as the tickets ask for them.
#pragma once

#include "platform/printing/PMTicket.h"
#include "platform/printing/option_list.h"
#include "platform/printing/ppd_file.h"

#include <optional>
#include <string>

/// The option of a job that prints some pages only.
inline constexpr const char* kPageRangesOption = "page-ranges";
/// The option that puts several pages on a sheet.
inline constexpr const char* kNumberUpOption = "number-up";
/// The option that turns pages, and its value that does not.
inline constexpr const char* kOrientationOption = "orientation-requested";
inline constexpr const char* kPortraitRequested = "3";

/// Whether a job can have so many copies: 1 to 9999.
bool isNumberOfCopies(SInt32 copies);
/// Whether the text is "1-3,7" or the like, with nothing else in it.
bool isPageRange(const std::string& text);

/// How pages are fitted on their sheets. A turned page is made to fit, unless something else is saved for the queue.
inline constexpr const char* kScalingOption = "print-scaling";
/// Whether pages that lie across their sheets are turned; not those of a job that is turned.
inline constexpr const char* kAutorotateOption = "pdfAutorotate";

struct JobRequest {
    std::string title;
    std::string owner;  // empty for the user of this process
    int copies = 1;
    OptionList choices;                   // the PPD dictionary's pairs
    std::optional<std::string> passcode;  // 4 to 10 ASCII digits
    OptionList secrets;                   // what is typed into options that nobody else may see, the passcode too
    std::string holdUntil;                // "HH:MM" in UTC; empty for a job that does not wait
};

/// Reads the ticket. On failure the reason is in PMGetLastErrorText: kPMInvalidTicket, or paramErr for a value that
/// no job can have: copies outside 1 to 9999, a malformed page range, an option with control characters (they would
/// become printer commands) or with a name that is no keyword, a passcode that is none, a secret that the printer does
/// not take. Secrets that are asked for by options of the PPD are taken out of the choices.
OSStatus readJobRequest(PMTicketRef printSettings, const PPDFile& ppd, JobRequest* request);

/// What other programs ask for to turn the pages of a job as a page format ticket says; none for upright pages.
OptionList orientationOptions(PMTicketRef pageFormat);
