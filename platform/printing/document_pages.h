// The pages of a document that are printed, where the filters cannot pick them.
#pragma once

#include "platform/files/byte_sink.h"
#include "platform/foundation/CFBase.h"

#include <optional>
#include <string>

/// A cover page in front of a document.
struct Cover {
    CFDataRef pdf;  // of one page; null for none
    int rotation;   // in degrees, a multiple of 90, clockwise
};

/// Writes the cover and the document's pages of a range ("2-3,7", well formed; empty for all) as a PDF. False when the
/// document cannot be read or no page is left, with the reason, or when `destination` takes no more, without one.
bool writePages(const Cover& cover, const std::string& range, const std::string& document, ByteSink& destination,
                std::string* reason);

/// How many pages a PDF says that it has; none for a file that is no PDF.
std::optional<std::size_t> countPages(const std::string& document);
