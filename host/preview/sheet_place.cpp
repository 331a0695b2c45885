#include "host/preview/sheet_place.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

/// By how many quarters to the left the side's pages lie on it, mirrored or not; nothing for a blank one.
std::optional<int> turnsOf(const JobSheets& job, const Sheet& sheet, bool isSide2) {
    PageLayout plain = job.layout;
    plain.isMirrored = false;
    plain.isRotated = false;
    const PaperShape& paper = job.papers[sheet.paper];
    Matrix matrix;
    if (sheet.kind == SheetKind::faxCover && job.faxCover.width > 0) {
        matrix = placeWholePage(job.faxCover, plain, paper);
    } else {
        const auto placed = placePages(job.plan, sheet, isSide2, plain, *job.pages, paper);
        if (placed.empty()) {
            return std::nullopt;
        }
        matrix = placed.front().matrix;
    }
    const double quarters = std::atan2(matrix.b, matrix.a) / (std::numbers::pi / 2);
    return (static_cast<int>(std::lround(quarters)) + 4) % 4;
}

/// A blank side lies as its other one, or as the next sheets that have pages.
int turnsOf(const JobSheets& job, const SheetView& view) {
    constexpr std::size_t kSheetsThatAreAsked = 50;
    const std::vector<Sheet>& sheets = job.plan.sheets;
    for (const bool isSide2 : {view.isSide2, !view.isSide2}) {
        if (const auto turns = turnsOf(job, sheets[view.sheet], isSide2)) {
            return *turns;
        }
    }
    for (std::size_t i = 0; i < std::min(sheets.size(), kSheetsThatAreAsked); ++i) {
        if (const auto turns = turnsOf(job, sheets[i], false)) {
            return *turns;
        }
    }
    return 0;
}

/// Of how many sheets of a paper lie in front of one.
int countBefore(const SheetPlan& plan, std::size_t sheet) {
    const std::uint32_t paper = plan.sheets[sheet].paper;
    return static_cast<int>(
        std::count_if(plan.sheets.begin(), plan.sheets.begin() + static_cast<std::ptrdiff_t>(sheet),
                      [paper](const Sheet& each) { return each.paper == paper && each.kind != SheetKind::banner; }));
}

Matrix turnedRight(int turns) {
    switch (turns) {
        case 1:
            return {0, -1, 1, 0, 0, 0};
        case 2:
            return {-1, 0, 0, -1, 0, 0};
        case 3:
            return {0, 1, -1, 0, 0, 0};
        default:
            return {};
    }
}

struct Box {
    double left = 0;
    double bottom = 0;
    Size size;
};

Box boxOf(const CanvasShape& shape, const Matrix& matrix) {
    double left = INFINITY;
    double bottom = INFINITY;
    double right = -INFINITY;
    double top = -INFINITY;
    for (const CanvasPoint& point : shape) {
        const double x = matrix.a * point.x + matrix.c * point.y + matrix.e;
        const double y = matrix.b * point.x + matrix.d * point.y + matrix.f;
        left = std::min(left, x);
        bottom = std::min(bottom, y);
        right = std::max(right, x);
        top = std::max(top, y);
    }
    return {left, bottom, {right - left, top - bottom}};
}

}  // namespace

SheetPlace placeSheet(const JobSheets& job, const SheetView& view) {
    const Sheet& sheet = job.plan.sheets[view.sheet];
    const Paper& paper = job.plan.papers[sheet.paper];
    SheetPlace place;
    place.turns = turnsOf(job, view);
    const int tab = tabsInBank(paper) > 0 ? countBefore(job.plan, view.sheet) : 0;
    place.look = lookOf(paper, job.papers[sheet.paper].size, tab, sheet.sides, view.isSide2);

    const Matrix turned = turnedRight(place.turns);
    const double room = 2 * kSheetMargin * view.scale;
    place.factor = INFINITY;
    for (std::size_t i = 0; i < job.papers.size(); ++i) {
        const PaperLook other = lookOf(job.plan.papers[i], job.papers[i].size, 0, Sides::one, false);
        const Size size = boxOf(other.outline, turned).size;
        place.factor = std::min({place.factor, (view.width - room) / size.width, (view.height - room) / size.height});
    }
    place.factor = std::max(place.factor, 0.001);
    const Box box = boxOf(place.look.outline, turned);
    // On whole pixels, so that what lies at the edges is sharp.
    const double left = std::round((view.width - box.size.width * place.factor) / 2);
    const double top = std::round((view.height - box.size.height * place.factor) / 2);
    place.toPicture = turned * Matrix{1, 0, 0, 1, -box.left, -box.bottom - box.size.height} *
                      Matrix{place.factor, 0, 0, -place.factor, left, top};
    return place;
}
