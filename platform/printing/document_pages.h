// The pages of a document that are printed, where the filters cannot pick them.
#pragma once

#include "platform/foundation/CFBase.h"

#include <string>

/// A cover page in front of a document.
struct Cover {
    CFDataRef pdf;  // of one page; null for none
    int rotation;   // in degrees, a multiple of 90, clockwise
};

/// Writes the cover and the document's pages of a range ("2-3,7", well formed; empty for all) to a file that exists.
/// False, with the reason, when the document cannot be read or the file cannot be written, or when no page is left.
bool writePages(const Cover& cover, const std::string& range, const std::string& document,
                const std::string& destination, std::string* reason);
