// What reads and makes pages of PDFs. It brings libqpdf along, thousands of names that the system's loader would have
// to find before a window shows, so it is loaded when the first page is wanted, and not when the program starts.
#pragma once

#include "driver/pages/document.h"
#include "driver/pages/make_pages.h"
#include "driver/pages/mark_drawing.h"

/// The functions of those names, as the loaded object has them.
struct PagesLibrary {
    decltype(&readDocument) read;
    decltype(&makePages) make;
    decltype(&drawMark) draw;
};

/// What the loaded object exports.
extern "C" const PagesLibrary* tavroPagesLibrary();
