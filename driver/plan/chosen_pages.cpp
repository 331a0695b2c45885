#include "driver/plan/sheet_plan.h"

#include <algorithm>

namespace {

bool isIn(PageSubset subset, std::int64_t number) {
    return subset == PageSubset::all || (number % 2 != 0) == (subset == PageSubset::odd);
}

}  // namespace

std::vector<std::int32_t> chosenPages(const JobInstructions& instructions, std::int64_t pageCount) {
    std::vector<PageSpan> spans = instructions.pages;
    if (spans.empty()) {
        spans.push_back({1, pageCount});
    }
    std::ranges::sort(spans, {}, &PageSpan::first);
    std::vector<std::int32_t> pages;
    const std::int64_t end = std::min(pageCount, kMostPlannedPages);
    std::int64_t next = 1;
    for (const PageSpan& span : spans) {
        for (next = std::max(next, span.first); next <= std::min(span.last, end); ++next) {
            if (isIn(instructions.subset, next)) {
                pages.push_back(static_cast<std::int32_t>(next - 1));
            }
        }
    }
    return pages;
}
