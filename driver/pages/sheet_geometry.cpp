#include "driver/pages/sheet_geometry.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kTolerance = 0.5;  // by which a page may be larger than its paper

Matrix translation(double x, double y) {
    return {1, 0, 0, 1, x, y};
}

Matrix scale(double factor) {
    return {factor, 0, 0, factor, 0, 0};
}

/// An area in which a page is read upright, turned to the left by `turns` quarters on the area that it takes up.
Matrix turned(int turns, const Size& taken) {
    switch (turns) {
        case 1:
            return {0, 1, -1, 0, taken.width, 0};
        case 2:
            return {-1, 0, 0, -1, taken.width, taken.height};
        case 3:
            return {0, -1, 1, 0, 0, taken.height};
        default:
            return {};
    }
}

Size turnedSize(int turns, const Size& size) {
    return turns % 2 == 0 ? size : Size{size.height, size.width};
}

double factorToFit(const Size& page, const Size& area) {
    return page.width > 0 && page.height > 0 ? std::min(area.width / page.width, area.height / page.height) : 1;
}

/// By how many quarters an upright reader's area is turned on a sheet or in a cell of that size.
int quarterTurns(bool isLandscape, bool isReverse, const Size& area) {
    if (isReverse) {
        return isLandscape == area.isLandscape() ? 2 : 3;
    }
    return isLandscape == area.isLandscape() ? 0 : 1;
}

/// A page scaled in the middle of an area.
Matrix inMiddle(const Size& page, double factor, double left, double bottom, const Size& area) {
    return scale(factor) * translation(left + (area.width - page.width * factor) / 2,
                                       bottom + (area.height - page.height * factor) / 2);
}

// ---- One page on a side

double factorOf(const Scaling& scaling, const Size& page, const Size& sheet, const Size& printable) {
    switch (scaling.kind) {
        case Scaling::Kind::actualSize:
            return 1;
        case Scaling::Kind::fit:
            return factorToFit(page, printable);
        case Scaling::Kind::percent:
            return scaling.percent / 100;
        case Scaling::Kind::shrink:
            break;
    }
    const bool isOnSheet = page.width <= sheet.width + kTolerance && page.height <= sheet.height + kTolerance;
    return isOnSheet ? 1 : factorToFit(page, printable);
}

Matrix placeSinglePage(const Size& page, const PageLayout& layout, const PaperShape& paper, Matrix* mark) {
    const bool isTurnedJob = layout.orientation != Orientation::portrait;
    const int turns = quarterTurns(isTurnedJob || page.isLandscape(),
                                   layout.orientation == Orientation::reverseLandscape, paper.size);
    const Size sheet = turnedSize(turns, paper.size);
    const Matrix onSheet = turned(turns, paper.size);
    const Size printable = turnedSize(turns, {paper.right - paper.left, paper.top - paper.bottom});
    Scaling scaling = layout.scaling;
    // A page that the job turns against its own direction would hang over the paper.
    if (isTurnedJob && scaling.kind == Scaling::Kind::shrink && !page.isLandscape()) {
        scaling.kind = Scaling::Kind::fit;
    }
    const double factor = factorOf(scaling, page, sheet, printable);
    *mark = translation(sheet.width / 2, sheet.height / 2) * onSheet;
    if (factor == 1) {
        return inMiddle(page, 1, 0, 0, sheet) * onSheet;
    }
    // What is made to fit lies in the middle of what can be printed on; the rest in the middle of the sheet.
    const bool isFitted = scaling.kind == Scaling::Kind::fit || scaling.kind == Scaling::Kind::shrink;
    if (!isFitted) {
        return inMiddle(page, factor, 0, 0, sheet) * onSheet;
    }
    const Matrix fitted =
        inMiddle(page, factor, 0, 0, printable) * turned(turns, {paper.right - paper.left, paper.top - paper.bottom});
    return fitted * translation(paper.left, paper.bottom);
}

// ---- Several pages on a side

struct Grid {
    int columns;
    int rows;
};

/// For upright pages; for landscape ones columns and rows change places.
Grid gridOf(int numberUp) {
    switch (numberUp) {
        case 2:
            return {2, 1};
        case 6:
            return {3, 2};
        default: {
            const int root = static_cast<int>(std::ceil(std::sqrt(static_cast<double>(std::max(numberUp, 1)))));
            return {root, root};
        }
    }
}

struct Place {
    int column;  // from the left
    int row;     // from the top
};

Place placeOf(int cell, const Grid& grid, NumberUpOrder order) {
    using enum NumberUpOrder;
    const bool isByRows = order == rightDown || order == leftDown || order == rightUp || order == leftUp;
    Place place =
        isByRows ? Place{cell % grid.columns, cell / grid.columns} : Place{cell / grid.rows, cell % grid.rows};
    if (order == leftDown || order == downLeft || order == leftUp || order == upLeft) {
        place.column = grid.columns - 1 - place.column;
    }
    if (order == rightUp || order == upRight || order == leftUp || order == upLeft) {
        place.row = grid.rows - 1 - place.row;
    }
    return place;
}

struct CellLayout {
    Grid grid;
    int turns;   // of the whole on the sheet
    Size sheet;  // as it is read
    Size cell;
};

CellLayout cellsOn(const PageLayout& layout, const PaperShape& paper) {
    const bool isLandscape =
        !layout.isBooklet && (layout.orientation != Orientation::portrait || layout.arePagesLandscape);
    Grid grid = layout.isBooklet ? Grid{2, 1} : gridOf(layout.numberUp);
    if (isLandscape) {
        std::swap(grid.columns, grid.rows);
    }
    // The whole lies so that its cells are as tall, or as wide, as the pages.
    const bool isWholeLandscape = grid.columns == grid.rows ? isLandscape : grid.columns > grid.rows;
    const int turns = quarterTurns(isWholeLandscape, layout.orientation == Orientation::reverseLandscape, paper.size);
    const Size sheet = turnedSize(turns, paper.size);
    return {grid, turns, sheet, {sheet.width / grid.columns, sheet.height / grid.rows}};
}

PlacedPage placeInCell(std::int32_t page, int index, const Size& size, const CellLayout& cells,
                       const PageLayout& layout, const PaperShape& paper) {
    const Place place = layout.isBooklet ? Place{index, 0} : placeOf(index, cells.grid, layout.numberUpOrder);
    const double left = place.column * cells.cell.width;
    const double bottom = (cells.grid.rows - 1 - place.row) * cells.cell.height;
    const int turns =
        layout.orientation == Orientation::portrait ? quarterTurns(size.isLandscape(), false, cells.cell) : 0;
    const Size area = turnedSize(turns, cells.cell);
    const Matrix onSheet = turned(turns, cells.cell) * translation(left, bottom) * turned(cells.turns, paper.size);
    // A watermark is made for a whole sheet that lies as the page does.
    const Size markedSheet = turnedSize(quarterTurns(size.isLandscape(), false, paper.size), paper.size);
    return {page, inMiddle(size, factorToFit(size, area), 0, 0, area) * onSheet,
            scale(factorToFit(markedSheet, area)) * translation(area.width / 2, area.height / 2) * onSheet,
            layout.hasOutlines};
}

/// What happens to a whole side.
Matrix finishOf(const PageLayout& layout, double shift, const PaperShape& paper) {
    Matrix finish = translation(shift, 0);
    if (layout.isMirrored) {
        finish = finish * Matrix{-1, 0, 0, 1, paper.size.width, 0};
    }
    if (layout.isRotated) {
        finish = finish * turned(2, paper.size);
    }
    return finish;
}

}  // namespace

Matrix operator*(const Matrix& first, const Matrix& second) {
    return {first.a * second.a + first.b * second.c,
            first.a * second.b + first.b * second.d,
            first.c * second.a + first.d * second.c,
            first.c * second.b + first.d * second.d,
            first.e * second.a + first.f * second.c + second.e,
            first.e * second.b + first.f * second.d + second.f};
}

Matrix inverse(const Matrix& matrix) {
    const double area = matrix.a * matrix.d - matrix.b * matrix.c;
    if (area == 0 || !std::isfinite(1 / area)) {
        return {};
    }
    return {matrix.d / area,
            -matrix.b / area,
            -matrix.c / area,
            matrix.a / area,
            (matrix.c * matrix.f - matrix.d * matrix.e) / area,
            (matrix.b * matrix.e - matrix.a * matrix.f) / area};
}

PageLayout layoutOf(const JobInstructions& instructions, const Size& firstPage) {
    const bool isBooklet = instructions.booklet && instructions.kind != JobKind::fax;
    return {instructions.orientation,
            instructions.scaling,
            std::max(instructions.numberUp, 1),
            instructions.numberUpOrder,
            isBooklet,
            isBooklet ? instructions.booklet->hasOutlines : instructions.hasBorders,
            instructions.isMirrored,
            instructions.isRotated,
            firstPage.isLandscape()};
}

std::vector<PlacedPage> placePages(const SheetPlan& plan, const Sheet& sheet, bool isSide2, const PageLayout& layout,
                                   const std::vector<Size>& pages, const PaperShape& paper) {
    const bool isSeveral = layout.isBooklet || layout.numberUp > 1;
    const SheetSide& side = isSide2 ? sheet.side2 : sheet.side1;
    const ImageShift& shift = plan.treatments[side.treatment].shift;
    const Matrix finish = finishOf(layout, isSide2 ? shift.side2 : -shift.side1, paper);
    const CellLayout cells = cellsOn(layout, paper);
    std::vector<PlacedPage> placed;
    int index = -1;
    for (const std::int32_t page : plan.cellsOf(side)) {
        ++index;
        if (page == kBlankCell || static_cast<std::size_t>(page) >= pages.size()) {
            continue;
        }
        const Size& size = pages[static_cast<std::size_t>(page)];
        PlacedPage one{page, {}, {}, layout.hasOutlines};
        if (isSeveral) {
            one = placeInCell(page, index, size, cells, layout, paper);
        } else {
            one.matrix = placeSinglePage(size, layout, paper, &one.mark);
        }
        one.matrix = one.matrix * finish;
        one.mark = one.mark * finish;
        placed.push_back(one);
    }
    return placed;
}

PageOutline outlineOf(const Matrix& matrix) {
    constexpr double kInset = 2;
    constexpr double kThickness = 0.5;
    const double unit = 1 / std::max(std::hypot(matrix.a, matrix.b), 0.001);
    return {kInset * unit, kThickness * unit};
}

Matrix placeWholePage(const Size& page, const PageLayout& layout, const PaperShape& paper) {
    PageLayout upright = layout;
    upright.orientation = Orientation::portrait;
    upright.scaling = {};
    Matrix mark;
    return placeSinglePage(page, upright, paper, &mark) * finishOf(layout, 0, paper);
}
