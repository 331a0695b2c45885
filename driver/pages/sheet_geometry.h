// Where the pages lie on a side of a sheet. The job's pages are drawn from this, and so is the preview of them.
//
// All lengths are points. A sheet stands upright, as the PPD gives its paper, with the origin at its lower left corner;
// a page stands upright as a reader sees it, with the origin at the lower left corner of what is shown of it.
#pragma once

#include "driver/plan/sheet_plan.h"

#include <vector>

/// A PDF's own matrix: x' = a x + c y + e, y' = b x + d y + f.
struct Matrix {
    double a = 1;
    double b = 0;
    double c = 0;
    double d = 1;
    double e = 0;
    double f = 0;

    bool operator==(const Matrix&) const = default;
};

/// What the first matrix does, and then the second.
Matrix operator*(const Matrix& first, const Matrix& second);
/// What undoes it; of one that cannot be undone, nothing.
Matrix inverse(const Matrix& matrix);

struct Size {
    double width = 0;
    double height = 0;

    [[nodiscard]] bool isLandscape() const { return width > height; }
    bool operator==(const Size&) const = default;
};

/// A paper of the printer, and what of it can be printed on.
struct PaperShape {
    Size size;
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;

    bool operator==(const PaperShape&) const = default;
};

/// How a job's pages are laid on their sheets.
struct PageLayout {
    Orientation orientation = Orientation::portrait;
    Scaling scaling;
    int numberUp = 1;
    NumberUpOrder numberUpOrder = NumberUpOrder::rightDown;
    bool isBooklet = false;
    bool hasOutlines = false;  // around each page of several on a side
    bool isMirrored = false;
    bool isRotated = false;          // by 180 degrees
    bool arePagesLandscape = false;  // the first that is printed, which several on a side follow
};

/// The layout of a job whose first printed page has that size. Mirroring and turning are in it: whoever leaves them to
/// the printer takes them out.
PageLayout layoutOf(const JobInstructions& instructions, const Size& firstPage);

struct PlacedPage {
    std::int32_t page;  // of the document, from 0
    Matrix matrix;      // from the page to the sheet
    Matrix mark;        // from a watermark, whose origin is its middle, to the sheet
    bool hasOutline;    // a line around the page
};

/// A line inside of a page's edge, in the page's own units.
struct PageOutline {
    double inset;
    double thickness;
};
/// As thin on the paper whatever the page's scale is.
PageOutline outlineOf(const Matrix& matrix);

/// The pages on a side of a sheet, blank cells left out, in the order of its cells. `pages` has the sizes of all pages
/// of the document.
std::vector<PlacedPage> placePages(const SheetPlan& plan, const Sheet& sheet, bool isSide2, const PageLayout& layout,
                                   const std::vector<Size>& pages, const PaperShape& paper);

/// Where a page of our own, a fax's cover sheet, lies on its sheet: upright as the job's pages are, made to fit.
Matrix placeWholePage(const Size& page, const PageLayout& layout, const PaperShape& paper);
