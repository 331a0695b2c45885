// A plan in a line, for people who read tests.
#pragma once

#include "driver/plan/sheet_plan.h"

#include <string>

/// "Blue[1|2] [3|-]": a sheet is the pages on its sides between brackets, "-" where there is none; a sheet that is
/// printed on one side only has no bar. In front stands its paper where that is not the job's, and what it is unless it
/// is of the document; "+" in front of all begins a subset.
inline std::string wordsOf(const SheetPlan& plan) {
    const auto side = [&plan](const SheetSide& printed) {
        std::string words;
        for (const std::int32_t cell : plan.cellsOf(printed)) {
            words += (words.empty() ? "" : " ") + (cell == kBlankCell ? "-" : std::to_string(cell + 1));
        }
        return words.empty() ? "-" : words;
    };
    static constexpr const char* kKinds[] = {"", "cover", "insert", "separator", "slip", "fax"};
    std::string words;
    for (const Sheet& sheet : plan.sheets) {
        const Paper& paper = plan.papers[sheet.paper];
        words += words.empty() ? "" : " ";
        words += sheet.beginsSubset ? "+" : "";
        words += kKinds[static_cast<int>(sheet.kind)];
        if (sheet.paper != 0) {
            words += ":" + paper.size + paper.color + paper.type;
        }
        words += "[" + side(sheet.side1);
        words +=
            sheet.sides == Sides::one ? "]" : "|" + side(sheet.side2) + (sheet.sides == Sides::shortEdge ? "]s" : "]");
    }
    return words;
}
