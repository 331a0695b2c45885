// Where a mark comes that lies behind a page.
#pragma once

#include "driver/pages/pdf_page.h"

/// Many programs begin a page by painting it white, which would hide what lies behind.
struct PageBackground {
    enum class Place {
        beforeContent,
        behindWhite,  // after the page was painted white, within its content
        inFront,      // a picture or a form covers the page, and shows nothing of what is behind it
    } place = Place::beforeContent;
    std::size_t end = 0;  // of behindWhite: how many bytes of the content paint the page white
    Matrix space;         // of behindWhite: from the units in which the content goes on to the page's own
};

/// Looks at the beginning of a page's content, as far as its first letter or line.
PageBackground backgroundOf(QPDFPageObjectHelper page, const PageBox& box);
