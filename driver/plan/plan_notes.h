// The notes of a plan while it is made: one a kind, with the first page that it is about.
#pragma once

#include "driver/plan/sheet_plan.h"

class PlanNotes {
public:
    void add(PlanNote::Kind kind, std::int64_t page = 0, std::int64_t count = 1);
    /// In the order of their kinds.
    [[nodiscard]] std::vector<PlanNote> take();

private:
    std::vector<PlanNote> notes_;
};
