#include "driver/plan/covers.h"

#include <algorithm>

namespace {

std::size_t printedSides(const CoverInstruction* cover) {
    if (cover == nullptr || cover->print == CoverPrint::blank) {
        return 0;
    }
    return cover->print == CoverPrint::both ? 2 : 1;
}

CoverPages onSides(const CoverInstruction* cover, std::span<const std::int32_t> pages, std::size_t pagesOnSide) {
    if (cover == nullptr || cover->print == CoverPrint::blank) {
        return {};
    }
    if (cover->print == CoverPrint::side2) {
        return {{}, pages};
    }
    const std::size_t first = std::min(pagesOnSide, pages.size());
    return {pages.first(first), pages.subspan(first)};
}

bool isOn(const CoverPages& cover, std::int64_t first, std::int64_t last) {
    for (const auto& side : {cover.side1, cover.side2}) {
        if (!side.empty() && first <= side.back() + 1 && side.front() + 1 <= last) {
            return true;
        }
    }
    return false;
}

}  // namespace

CoverShares dealPages(std::span<const std::int32_t> pages, const CoverInstruction* front, const CoverInstruction* back,
                      std::size_t pagesOnSide, PlanNotes* notes) {
    const std::size_t first = std::min(printedSides(front) * pagesOnSide, pages.size());
    const std::size_t last = std::min(printedSides(back) * pagesOnSide, pages.size() - first);
    for (const auto& [cover, count] : {std::pair(front, first), std::pair(back, last)}) {
        if (printedSides(cover) > 0 && count == 0) {
            notes->add(PlanNote::Kind::coverWithoutPages);
        }
    }
    return {onSides(front, pages.first(first), pagesOnSide), pages.subspan(first, pages.size() - first - last),
            onSides(back, pages.last(last), pagesOnSide)};
}

void noteExceptionsOnCovers(const CoverShares& shares, const std::vector<ExceptionInstruction>& exceptions,
                            PlanNotes* notes) {
    for (const ExceptionInstruction& exception : exceptions) {
        const auto [first, last] = exception.pages;
        if (isOn(shares.front, first, last) || isOn(shares.back, first, last)) {
            notes->add(PlanNote::Kind::exceptionOnCover, first);
        }
    }
}
