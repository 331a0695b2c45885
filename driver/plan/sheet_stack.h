// A stack of sheets that grows from the front to the back, for whoever makes a plan.
#pragma once

#include "driver/plan/plan_notes.h"

#include <map>

class SheetStack {
public:
    explicit SheetStack(const JobInstructions& job);

    /// The number of a paper in the plan. What the paper does not say is as the job's.
    std::uint32_t paper(const Paper& paper);
    std::uint32_t treatment(const Treatment& treatment);

    /// Adds a blank sheet, which becomes the last one. False, with a note of the page, when there are too many.
    bool add(SheetKind kind, Sides sides, std::uint32_t paper, std::int64_t page = 0);
    void addBlanks(SheetKind kind, const Paper& paper, std::int64_t count, std::int64_t page);
    /// Prints cells on a side of the last sheet, behind those that it has.
    void print(SheetSide Sheet::*side, std::span<const std::int32_t> cells);

    [[nodiscard]] Sheet& last() { return plan_.sheets.back(); }
    [[nodiscard]] const Paper& paperOf(const Sheet& sheet) const { return plan_.papers[sheet.paper]; }
    [[nodiscard]] PlanNotes& notes() { return notes_; }

    /// The plan, once.
    [[nodiscard]] SheetPlan take();

private:
    const Paper& jobPaper_;
    SheetPlan plan_;
    PlanNotes notes_;
    std::map<Paper, std::uint32_t> papers_;
    std::map<Treatment, std::uint32_t> treatments_;
};
