// A cover page in front of a document that is to be printed.
#pragma once

#include "platform/foundation/CFBase.h"

#include <string>

/// Writes the document with the cover's one page in front to a file that exists. The cover is turned by `rotation`
/// degrees (a multiple of 90, clockwise). False, with the reason, when the document cannot be read or the file cannot
/// be written.
bool writeWithCover(CFDataRef cover, int rotation, const std::string& document, const std::string& destination,
                    std::string* reason);

/// The range of the cover and the same pages of the document behind it: "2-3,7" becomes "1,3-4,8". The range must be
/// well formed (see readJobRequest).
std::string rangeWithCover(const std::string& range);
