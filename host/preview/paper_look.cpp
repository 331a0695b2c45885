#include "host/preview/paper_look.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

struct ColorRow {
    std::string_view name;  // of MediaColor
    CanvasColor color;
};
// clang-format off
constexpr std::array kColors{
    // name                color
    ColorRow{"White",      {255, 255, 255}},
    ColorRow{"Blue",       {196, 221, 246}},
    ColorRow{"Yellow",     {255, 246, 160}},
    ColorRow{"Green",      {201, 238, 196}},
    ColorRow{"Pink",       {252, 212, 224}},
    ColorRow{"Clear",      {236, 243, 247}},
    ColorRow{"Buff",       {246, 226, 183}},
    ColorRow{"Goldenrod",  {250, 209, 105}},
    ColorRow{"Red",        {245, 160, 150}},
    ColorRow{"Ivory",      {255, 251, 232}},
    ColorRow{"Gray",       {214, 214, 214}},
    ColorRow{"Orange",     {255, 204, 150}},
};
static_assert(kColors.size() == 12);

constexpr std::array kTabTypes{std::string_view("TabStock"), std::string_view("HeavyTabStock")};
/// Sizes that are those of a sheet with its tab; with others the tab lies beyond the size.
constexpr std::array kTabSizes{std::string_view("9x11"), std::string_view("A4Cover")};
// clang-format on

constexpr CanvasColor kOtherColor{248, 248, 248};  // one that nobody knows
constexpr double kTabDepth = 36;
constexpr int kUsualTabs = 5;
constexpr int kHolesInPaper = 3;

CanvasColor colorOf(const std::string& name) {
    const auto* const row = std::ranges::find(kColors, std::string_view(name), &ColorRow::name);
    return row != kColors.end() ? row->color : name.empty() ? kColors.front().color : kOtherColor;
}

/// A sheet with a tab at its right edge, the first at the top.
CanvasShape tabbed(const Size& size, bool isInside, int tab, int count) {
    constexpr double kSlope = 0.12;  // of a tab's height
    const double edge = isInside ? size.width - kTabDepth : size.width;
    const double height = size.height / count;
    const double top = size.height - tab * height;
    const double slope = height * kSlope;
    const double out = edge + kTabDepth;
    return {{0, 0},      {edge, 0},           {edge, top - height}, {out, top - height + slope}, {out, top - slope},
            {edge, top}, {edge, size.height}, {0, size.height}};
}

}  // namespace

CanvasPoint turnedOver(const CanvasPoint& point, const Size& size, Sides sides) {
    const bool isOverUprightEdge = (sides == Sides::shortEdge) == size.isLandscape();
    return isOverUprightEdge ? CanvasPoint{size.width - point.x, point.y} : CanvasPoint{point.x, size.height - point.y};
}

std::vector<double> holePlaces(int count, double edge) {
    constexpr double kMetricGap = 226.8;  // 80 mm, of two and of four
    constexpr double kInchGap = 306;      // of three
    constexpr double kMostOfEdge = 0.9;
    const double gap = count == 3 ? kInchGap : kMetricGap;
    const double span = std::min(gap * (count - 1), edge * kMostOfEdge);
    std::vector<double> places(static_cast<std::size_t>(std::max(count, 0)));
    for (std::size_t i = 0; i < places.size(); ++i) {
        places[i] = count > 1 ? span * static_cast<double>(i) / (count - 1) - span / 2 : 0;
    }
    return places;
}

int tabsInBank(const Paper& paper) {
    if (std::ranges::find(kTabTypes, std::string_view(paper.type)) == kTabTypes.end()) {
        return 0;
    }
    return paper.tabsInBank > 0 ? paper.tabsInBank : kUsualTabs;
}

PaperLook lookOf(const Paper& paper, const Size& size, int tab, Sides sides, bool isSide2) {
    PaperLook look{colorOf(paper.color), {{0, 0}, {size.width, 0}, {size.width, size.height}, {0, size.height}}, {}};
    if (const int tabs = tabsInBank(paper); tabs > 0) {
        const bool isInside = std::ranges::find(kTabSizes, std::string_view(paper.size)) != kTabSizes.end();
        look.outline = tabbed(size, isInside, tab % tabs, tabs);
    }
    if (paper.isPunched || paper.type == "Punched") {
        for (const double place : holePlaces(kHolesInPaper, size.height)) {
            look.holes.push_back({kHoleDepth, size.height / 2 + place});
        }
    }
    if (isSide2) {
        for (CanvasShape* const points : {&look.outline, &look.holes}) {
            std::ranges::transform(*points, points->begin(),
                                   [&](const CanvasPoint& point) { return turnedOver(point, size, sides); });
        }
    }
    return look;
}
