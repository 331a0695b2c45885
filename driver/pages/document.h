// A PDF document as the driver sees it: how large its pages are, or why it cannot be printed.
#pragma once

#include "driver/pages/sheet_geometry.h"

#include <optional>
#include <string>
#include <vector>

struct DocumentPages {
    std::vector<Size> sizes;  // as they are shown: turned, and in points; kMostPlannedPages at most
    bool isRepaired = false;  // it was damaged, and may lack something
};

/// The reason of a document that needs a password, or another one than it was given.
std::string reasonOfLock();

/// The pages of an open plain file. Nothing, with the reason, for a file that is no PDF, has no pages or too many, or
/// must not be printed. A damaged one is repaired as far as that goes.
///
/// What strangers made is read by a library here, through memory that ends where the file does: whoever does not trust
/// it calls this in a process of its own (driver/worker).
std::optional<DocumentPages> readDocument(int file, std::string* reason, const std::string& password = {});

/// The size of a page whose own makes no sense.
inline constexpr Size kUsualPage{612, 792};
/// No side of a page is longer, in points: it is what no paper has, but a plan that is made to fit.
inline constexpr double kLongestSide = 200 * 72 * 100;
