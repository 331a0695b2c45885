// A PDF document as the driver sees it: how large its pages are, or why it cannot be printed.
#pragma once

#include "driver/pages/sheet_geometry.h"

#include <optional>
#include <string>
#include <vector>

struct DocumentPages {
    std::vector<Size> sizes;  // as they are shown: turned, and in points
    bool isRepaired = false;  // it was damaged, and may lack something
};

/// The pages of a file. Nothing, with the reason, for a file that is no PDF, has no pages, or must not be printed. A
/// damaged one is repaired as far as that goes.
///
/// What strangers made is read by a library here: whoever does not trust it calls this in a process of its own.
std::optional<DocumentPages> readDocument(const std::string& path, std::string* reason);

/// The size of a page whose own makes no sense.
inline constexpr Size kUsualPage{612, 792};
