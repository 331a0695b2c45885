// A watermark drawn.
#pragma once

#include "driver/pages/stored_mark.h"
#include "platform/drawing/PDFPage.h"

/// What a mark does to what lies beneath it.
enum class MarkInk {
    /// It covers it. For marks behind a page.
    opaque,
    /// It leaves it readable: the color is not thinned but broken up, of a text into fine dots, of a picture into
    /// narrow
    /// strips, which together are as light as the thinned one. No transparency is needed, which would turn the whole
    /// page into one picture on its way to a printer.
    screened,
};

/// A PDF of one page with the mark around the origin of its coordinates. `scale` is the size at which it is going to be
/// drawn, so that the screen is not scaled along. Nothing, with the reason, for a font or picture that cannot be drawn.
std::optional<std::string> drawMark(const StoredMark& mark, MarkInk ink, double scale, std::string* reason);
