// Where a sheet lies in its picture.
#pragma once

#include "host/preview/job_sheets.h"
#include "host/preview/paper_look.h"

#include <cstddef>

/// Which side is shown, and in how large a picture.
struct SheetView {
    std::size_t sheet = 0;  // of the plan
    bool isSide2 = false;
    int width = 0;  // in pixels
    int height = 0;
    double scale = 1;  // pixels in one of the screen's units, in which lines and margins are measured
};

struct SheetPlace {
    PaperLook look;
    int turns = 0;      // quarters to the right, so that the pages are upright
    Matrix toPicture;   // from the sheet to pixels from the upper left corner
    double factor = 1;  // pixels in a point
};

/// Around the sheet, in the screen's units.
inline constexpr double kSheetMargin = 3;

/// All sheets of a job are shown at one scale, at which the largest fits.
SheetPlace placeSheet(const JobSheets& job, const SheetView& view);
