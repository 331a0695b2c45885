#include "driver/plan/sheet_plan.h"

#include "driver/plan/plan_booklet.h"
#include "driver/plan/plan_fax.h"
#include "driver/plan/plan_stack.h"

#include <algorithm>

namespace {

/// The last sheet becomes the first one. Where two sheets lie offset from each other stays where it is.
void reverse(std::vector<Sheet>* sheets) {
    std::ranges::reverse(*sheets);
    for (std::size_t i = sheets->size(); i-- > 1;) {
        (*sheets)[i].beginsSubset = (*sheets)[i - 1].beginsSubset;
    }
    if (!sheets->empty()) {
        sheets->front().beginsSubset = false;
    }
}

}  // namespace

bool SheetPlan::isBlank(const SheetSide& side) const {
    return std::ranges::all_of(cellsOf(side), [](std::int32_t cell) { return cell == kBlankCell; });
}

bool SheetPlan::isSent(std::size_t sheet, bool isSide2) const {
    const Sheet& one = sheets[sheet];
    return !isSide2 || (one.sides != Sides::one && (sheet + 1 < sheets.size() || !isBlank(one.side2)));
}

SheetPlan planSheets(const JobInstructions& instructions, std::int64_t pageCount) {
    SheetStack stack(instructions);
    const std::vector<std::int32_t> pages = chosenPages(instructions, pageCount);
    if (pages.empty()) {
        stack.notes().add(PlanNote::Kind::noPages);
    } else if (instructions.kind == JobKind::fax) {
        planFax(instructions, pages, &stack);
    } else if (instructions.booklet) {
        planBooklet(instructions, pages, &stack);
    } else {
        planStack(instructions, pages, pageCount, &stack);
    }
    SheetPlan plan = stack.take();
    plan.pageCount = std::ssize(pages);
    plan.firstPage = pages.empty() ? 0 : pages.front();
    plan.hasBanner = instructions.hasBanner && instructions.kind != JobKind::fax && !plan.sheets.empty();
    if (instructions.isReversed && instructions.kind != JobKind::fax) {
        reverse(&plan.sheets);
    }
    return plan;
}
