#include "driver/plan/sheet_stack.h"

#include <algorithm>
#include <utility>

namespace {

template <typename Value>
std::uint32_t numberOf(const Value& value, std::vector<Value>* values, std::map<Value, std::uint32_t>* numbers) {
    const auto [known, isNew] = numbers->try_emplace(value, static_cast<std::uint32_t>(values->size()));
    if (isNew) {
        values->push_back(value);
    }
    return known->second;
}

template <typename Value>
void complete(Value* value, const Value& fallback) {
    if (*value == Value()) {
        *value = fallback;
    }
}

}  // namespace

SheetStack::SheetStack(const JobInstructions& job) : jobPaper_(job.paper) {
    plan_.copies = job.copies;
    plan_.isCollated = job.isCollated;
    paper(job.paper);
    treatment({});
}

std::uint32_t SheetStack::paper(const Paper& paper) {
    Paper whole = paper;
    complete(&whole.size, jobPaper_.size);
    if (whole.color.empty()) {
        whole.color = jobPaper_.color;
        whole.colorName = jobPaper_.colorName;
    }
    // What else is known of the job's paper is known of its type.
    if (whole.type.empty()) {
        whole.type = jobPaper_.type;
        complete(&whole.typeName, jobPaper_.typeName);
        complete(&whole.tabsInBank, jobPaper_.tabsInBank);
        complete(&whole.weight, jobPaper_.weight);
        complete(&whole.isPunched, jobPaper_.isPunched);
        complete(&whole.sidesCoated, jobPaper_.sidesCoated);
        complete(&whole.coating, jobPaper_.coating);
        complete(&whole.finish, jobPaper_.finish);
        complete(&whole.grain, jobPaper_.grain);
        complete(&whole.name, jobPaper_.name);
    }
    return numberOf(whole, &plan_.papers, &papers_);
}

std::uint32_t SheetStack::treatment(const Treatment& treatment) {
    return numberOf(treatment, &plan_.treatments, &treatments_);
}

bool SheetStack::add(SheetKind kind, Sides sides, std::uint32_t paper, std::int64_t page) {
    if (plan_.sheets.size() >= kMostPlannedSheets) {
        notes_.add(PlanNote::Kind::tooManySheets, page);
        return false;
    }
    Sheet sheet;
    sheet.kind = kind;
    sheet.sides = sides;
    sheet.paper = paper;
    plan_.sheets.push_back(sheet);
    return true;
}

void SheetStack::addBlanks(SheetKind kind, const Paper& paper, std::int64_t count, std::int64_t page) {
    const std::uint32_t number = this->paper(paper);
    for (std::int64_t i = 0; i < count && add(kind, Sides::one, number, page); ++i) {
    }
}

void SheetStack::print(SheetSide Sheet::*side, std::span<const std::int32_t> cells) {
    SheetSide& printed = last().*side;
    if (printed.cellCount == 0) {
        printed.firstCell = static_cast<std::uint32_t>(plan_.cells.size());
    }
    plan_.cells.insert(plan_.cells.end(), cells.begin(), cells.end());
    printed.cellCount = static_cast<std::uint8_t>(printed.cellCount + cells.size());
}

SheetPlan SheetStack::take() {
    plan_.notes = notes_.take();
    return std::move(plan_);
}
