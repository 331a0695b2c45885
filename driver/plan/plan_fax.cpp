#include "driver/plan/plan_fax.h"

#include <algorithm>

void planFax(const JobInstructions& job, std::span<const std::int32_t> pages, SheetStack* stack) {
    if (job.fax && job.fax->coverSheet) {
        stack->add(SheetKind::faxCover, Sides::one, stack->paper({.size = job.fax->coverSheet->paperSize}));
    }
    const auto onSide = static_cast<std::size_t>(std::max(job.numberUp, 1));
    const std::uint32_t paper = stack->paper({});
    for (std::size_t first = 0; first < pages.size(); first += onSide) {
        if (!stack->add(SheetKind::document, Sides::one, paper, pages[first] + 1)) {
            break;
        }
        stack->print(&Sheet::side1, pages.subspan(first, std::min(onSide, pages.size() - first)));
    }
    const std::int64_t leftOut = std::int64_t(job.booklet.has_value()) + job.frontCover.has_value() +
                                 job.backCover.has_value() + std::ssize(job.inserts) + std::ssize(job.exceptions) +
                                 (job.separators != Separators::none && job.paper.type == kTransparencyType);
    stack->notes().add(PlanNote::Kind::specialPagesInFax, 0, leftOut);
}
