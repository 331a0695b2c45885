// A watermark as PostScript.
#pragma once

#include "host/job/stored_mark.h"
#include "platform/drawing/PDFPage.h"

#include <vector>

/// What a page of the job gets.
enum class PageMark : unsigned char {
    none,
    upright,   // the page is drawn in the direction of its sheet, and so is the mark
    turned90,  // both are turned to the left by that many degrees
    turned270 = 4,
};

struct MarkPlacement {
    bool inFront;                 // of the page's content, or behind it
    std::vector<PageMark> pages;  // of one copy of the job, in its order
};

/// The code for the end of a job's setup that draws a text on the pages; lines of printable characters. `font` is the
/// program that defines mark.fontName, a name in the sense of PostScript.
std::string textMarkProgram(const StoredMark& mark, const std::string& font, const MarkPlacement& placement);
/// The same for a picture in colors: unscaled, a pixel of its file is a point wide. White stays clear.
std::string pictureMarkProgram(const StoredMark& mark, const Picture& picture, const MarkPlacement& placement);
