// Which side of a job's sheets is looked at, as somebody turns them over one by one.
#pragma once

#include "driver/plan/sheet_plan.h"

#include <cstddef>
#include <vector>

struct ShownSide {
    std::size_t sheet = 0;  // of a plan that has sheets
    bool isSide2 = false;

    bool operator==(const ShownSide&) const = default;
};

/// So many sides further on, or back when negative, as far as there are sides: a front, its back where it may have
/// something on it, the next front.
ShownSide turned(const SheetPlan& plan, ShownSide side, int sides);
ShownSide lastSide(const SheetPlan& plan);

/// Where to look when another plan takes the place of one: at the same page of the document. Whoever looks at the
/// first side goes on doing so, and without that page it is the same place in the stack.
ShownSide sideInstead(const SheetPlan& before, ShownSide side, const SheetPlan& after);

/// What will probably be looked at next, the likeliest first.
std::vector<ShownSide> neighboursOf(const SheetPlan& plan, ShownSide side);
