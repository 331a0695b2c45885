// What a document's pages show on paper and not on a screen, or the other way round.
#pragma once

#include <qpdf/QPDF.hh>

/// Makes the document's pages show what of it is printed: fields and notes become part of their pages, because a page
/// that is drawn by another has none of its own, and layers that are for paper or for screens only are switched on or
/// off. Links and the like show nothing. The document has its pages in one list (flattenPages()).
void showAsPrinted(QPDF& pdf);
