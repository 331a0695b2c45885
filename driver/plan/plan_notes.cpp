#include "driver/plan/plan_notes.h"

#include <algorithm>
#include <utility>

void PlanNotes::add(PlanNote::Kind kind, std::int64_t page, std::int64_t count) {
    if (count == 0) {
        return;
    }
    const auto known = std::ranges::find(notes_, kind, &PlanNote::kind);
    if (known == notes_.end()) {
        notes_.push_back({kind, page, count});
    } else {
        known->count += count;
    }
}

std::vector<PlanNote> PlanNotes::take() {
    std::ranges::sort(notes_, {}, &PlanNote::kind);
    return std::move(notes_);
}
