// A job's options, as the tickets ask for them.
#pragma once

#include "platform/printing/PMTicket.h"
#include "platform/printing/cups_server.h"

#include <optional>
#include <string>

/// The option of a job that prints some pages only.
inline constexpr const char* kPageRangesOption = "page-ranges";

struct JobRequest {
    std::string title;
    int copies = 1;
    OptionList options;  // the PPD dictionary's pairs, page-ranges, orientation-requested; not the copies
    std::optional<std::string> passcode;  // 4 to 10 ASCII digits
    std::string holdUntil;                // "HH:MM" in UTC; empty for a job that does not wait
};

/// Reads the tickets. On failure the reason is in PMGetLastErrorText: kPMInvalidTicket, or paramErr for a value that
/// no job can have: copies outside 1 to 9999, a malformed page range, an option with control characters (they would
/// become printer commands) or with a name that is no keyword, a passcode that is none. `passcodeKeyword` is that of
/// the printer's PPD: a passcode that is chosen as its option is taken out of the options.
OSStatus readJobRequest(PMTicketRef printSettings, PMTicketRef pageFormat, const std::string& passcodeKeyword,
                        JobRequest* request);

/// The orientation of a page format ticket: 1 portrait, 2 and 3 landscape; 1 when it holds none.
SInt32 jobOrientation(PMTicketRef pageFormat);

/// The options in the one-argument notation that CUPS filters read ("name=value name=value", blanks, quotes and
/// backslashes in values escaped).
std::string filterOptionsText(const OptionList& options);
