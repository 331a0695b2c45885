#include "host/preview/shown_side.h"

#include <algorithm>
#include <optional>

namespace {

bool hasBack(const SheetPlan& plan, std::size_t sheet) {
    return plan.sheets[sheet].sides != Sides::one;
}

/// The first page of the document on a side.
std::optional<std::int32_t> pageOn(const SheetPlan& plan, const ShownSide& side) {
    const Sheet& sheet = plan.sheets[side.sheet];
    for (const std::int32_t page : plan.cellsOf(side.isSide2 ? sheet.side2 : sheet.side1)) {
        if (page != kBlankCell) {
            return page;
        }
    }
    return std::nullopt;
}

std::optional<ShownSide> sideOfPage(const SheetPlan& plan, std::int32_t page) {
    for (std::size_t i = 0; i < plan.sheets.size(); ++i) {
        for (const SheetSide* side : {&plan.sheets[i].side1, &plan.sheets[i].side2}) {
            if (std::ranges::count(plan.cellsOf(*side), page) > 0) {
                return ShownSide{i, side == &plan.sheets[i].side2};
            }
        }
    }
    return std::nullopt;
}

}  // namespace

ShownSide turned(const SheetPlan& plan, ShownSide side, int sides) {
    for (; sides > 0; --sides) {
        if (!side.isSide2 && hasBack(plan, side.sheet)) {
            side.isSide2 = true;
        } else if (side.sheet + 1 < plan.sheets.size()) {
            side = {side.sheet + 1, false};
        }
    }
    for (; sides < 0; ++sides) {
        if (side.isSide2) {
            side.isSide2 = false;
        } else if (side.sheet > 0) {
            side = {side.sheet - 1, hasBack(plan, side.sheet - 1)};
        }
    }
    return side;
}

ShownSide lastSide(const SheetPlan& plan) {
    return {plan.sheets.size() - 1, hasBack(plan, plan.sheets.size() - 1)};
}

ShownSide sideInstead(const SheetPlan& before, ShownSide side, const SheetPlan& after) {
    if (before.sheets.empty() || after.sheets.empty() || side == ShownSide()) {
        return {};
    }
    if (const auto page = pageOn(before, side)) {
        if (const auto found = sideOfPage(after, *page)) {
            return *found;
        }
    }
    const std::size_t sheet = std::min(side.sheet, after.sheets.size() - 1);
    return {sheet, side.isSide2 && hasBack(after, sheet)};
}

std::vector<ShownSide> neighboursOf(const SheetPlan& plan, ShownSide side) {
    std::vector<ShownSide> neighbours;
    for (const int sides : {1, -1, 2, -2}) {
        const ShownSide neighbour = turned(plan, side, sides);
        if (neighbour != side && std::ranges::count(neighbours, neighbour) == 0) {
            neighbours.push_back(neighbour);
        }
    }
    return neighbours;
}
