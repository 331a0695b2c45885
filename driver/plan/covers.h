// Which pages the covers of a job take.
#pragma once

#include "driver/plan/sheet_stack.h"

/// A cover's share of the pages.
struct CoverPages {
    std::span<const std::int32_t> side1;
    std::span<const std::int32_t> side2;

    [[nodiscard]] std::size_t count() const { return side1.size() + side2.size(); }
};

struct CoverShares {
    CoverPages front;
    std::span<const std::int32_t> body;
    CoverPages back;
};

/// Deals the pages out, so many to a side: to the front cover from the first on, to the back cover the last ones, in
/// their order. Where they do not suffice, the front cover has them first, and a cover's side 1. A printed cover that
/// gets none is noted. Either cover may be null.
CoverShares dealPages(std::span<const std::int32_t> pages, const CoverInstruction* front, const CoverInstruction* back,
                      std::size_t pagesOnSide, PlanNotes* notes);

/// Notes the exceptions of pages on covers.
void noteExceptionsOnCovers(const CoverShares& shares, const std::vector<ExceptionInstruction>& exceptions,
                            PlanNotes* notes);
