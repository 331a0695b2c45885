// The cover sheet of a fax, drawn into a PDF of one page.
#pragma once

#include "driver/instructions/job_instructions.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFRef.h"

#include <cstdint>
#include <string>
#include <vector>

struct CoverSheet {
    CFRef<CFDataRef> pdf;
    /// What could not be put on it, each in a line that names the thing and the reason.
    std::vector<std::string> faults;
};

/// Draws the sheet of a fax that has one and that many pages, itself included. What does not fit is left out, and the
/// sheet says so. `texts` is the program's own bundle; it has the labels that the fax lacks. A sheet whose labels run
/// from right to left is laid out that way.
CoverSheet drawCoverSheet(const FaxInstruction& fax, std::int64_t pageCount, CFBundleRef texts);
