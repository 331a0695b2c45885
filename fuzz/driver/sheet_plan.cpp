// Any instructions for a document of any length as a plan of sheets.
//
// Contract: each page that is printed stands on the sheets once, and once more on a printed separator; no other page
// does. In a stack the pages ascend, in a booklet they do as it is read. One-sided sheets have a blank second side, and
// a sheet that is not full is the last one before a new beginning. All numbers lie in their tables.

#include "driver/plan/sheet_plan.h"
#include "fuzz/bytes.h"
#include "fuzz/fuzz_target.h"

#include <algorithm>
#include <array>

namespace {

/// Mostly small, with the ends of what a ticket can hold.
std::int64_t pageFrom(Bytes& bytes) {
    static constexpr std::array<std::int64_t, 6> kOdd{0, -1, INT32_MIN, INT32_MAX, kMostPlannedPages, 256};
    const std::size_t value = bytes.next();
    return value < 250 ? static_cast<std::int64_t>(value) : kOdd[value - 250];
}

const char* colorFrom(Bytes& bytes) {
    static constexpr std::array kColors{"", "Blue", "Red", "Yellow"};
    return kColors[bytes.below(kColors.size())];
}

std::optional<CoverInstruction> coverFrom(Bytes& bytes) {
    return bytes.flag()
               ? std::optional(CoverInstruction{static_cast<CoverPrint>(bytes.below(4)), {.color = colorFrom(bytes)}})
               : std::nullopt;
}

JobInstructions jobFrom(Bytes& bytes) {
    JobInstructions job;
    job.sides = static_cast<Sides>(bytes.below(3));
    job.kind = bytes.below(8) == 0 ? JobKind::fax : JobKind::print;
    job.fax = FaxInstruction{};
    job.numberUp = static_cast<int>(std::array{1, 2, 4, 6, 9, 16, 0, -3}[bytes.below(std::size_t{8})]);
    job.copies = static_cast<int>(bytes.below(3));
    job.isCollated = bytes.flag();
    job.isReversed = bytes.flag();
    job.subset = static_cast<PageSubset>(bytes.below(3));
    if (bytes.flag()) {
        job.paper.type = kTransparencyType;
        job.separators = static_cast<Separators>(bytes.below(3));
        job.separatorColor = colorFrom(bytes);
    }
    if (bytes.below(3) == 0) {
        job.booklet = BookletInstruction{.isRightToLeft = bytes.flag()};
    }
    job.frontCover = coverFrom(bytes);
    job.backCover = coverFrom(bytes);
    job.finishing.hasSlipSheets = bytes.flag();
    job.finishing.offset = static_cast<Offset>(bytes.below(3));
    job.finishing.pagesPerSubset = static_cast<int>(bytes.below(9)) - 1;
    for (std::int64_t i = bytes.below(4); i-- > 0;) {
        job.pages.push_back({pageFrom(bytes), pageFrom(bytes)});
    }
    for (std::int64_t i = bytes.below(8); i-- > 0;) {
        job.inserts.push_back({pageFrom(bytes), static_cast<int>(bytes.below(4)), {.color = colorFrom(bytes)}});
    }
    std::ranges::stable_sort(job.inserts, {}, &InsertInstruction::page);
    std::int64_t page = 0;
    for (std::int64_t i = bytes.below(8); i-- > 0;) {
        ExceptionInstruction exception{
            {page + 1 + bytes.below(std::int64_t{5}), 0}, {.color = colorFrom(bytes)}, {}, {}, {}};
        page = exception.pages.last = exception.pages.first + bytes.below(std::int64_t{9});
        if (bytes.flag()) {
            exception.sides = static_cast<Sides>(bytes.below(3));
        }
        exception.shift = {double(bytes.below(2)), double(bytes.below(2))};
        job.exceptions.push_back(std::move(exception));
    }
    if (bytes.flag()) {
        job.fax->coverSheet = FaxCoverInstruction{};
    }
    return job;
}

/// The pages of the sheets as they are read, without those of separators.
std::vector<std::int32_t> pagesRead(const SheetPlan& plan, const JobInstructions& job) {
    std::vector<std::int32_t> pages;
    std::vector<std::int32_t> fromBehind;
    const bool isBooklet = job.booklet && job.kind != JobKind::fax;
    for (const Sheet& sheet : plan.sheets) {
        bool isFront = true;
        for (const SheetSide& side : {sheet.side1, sheet.side2}) {
            FUZZ_EXPECT(std::size_t(side.firstCell) + side.cellCount <= plan.cells.size());
            FUZZ_EXPECT(side.treatment < plan.treatments.size());
            const auto cells = plan.cellsOf(side);
            if (sheet.kind == SheetKind::separator || cells.empty()) {
            } else if (isBooklet) {
                FUZZ_EXPECT(cells.size() == 2);
                const bool isFirstLeft = isFront == job.booklet->isRightToLeft;
                pages.push_back(cells[isFirstLeft ? 0 : 1]);
                fromBehind.push_back(cells[isFirstLeft ? 1 : 0]);
            } else {
                FUZZ_EXPECT(cells.size() <= std::size_t(std::max(job.numberUp, 1)));
                pages.insert(pages.end(), cells.begin(), cells.end());
            }
            isFront = false;
        }
    }
    pages.insert(pages.end(), fromBehind.rbegin(), fromBehind.rend());
    std::erase(pages, kBlankCell);
    return pages;
}

void checkSheets(const SheetPlan& plan, const JobInstructions& job) {
    for (const Sheet& sheet : plan.sheets) {
        FUZZ_EXPECT(sheet.paper < plan.papers.size());
        FUZZ_EXPECT(sheet.sides != Sides::one || sheet.side2.cellCount == 0);
        FUZZ_EXPECT(sheet.kind != SheetKind::insert || (plan.isBlank(sheet.side1) && sheet.sides == Sides::one));
        // Only a cover that is printed inside alone begins with a blank side.
        FUZZ_EXPECT(sheet.kind == SheetKind::cover || job.booklet || sheet.side2.cellCount == 0 ||
                    sheet.side1.cellCount > 0);
        FUZZ_EXPECT(sheet.kind != SheetKind::document || sheet.side1.cellCount > 0);
    }
    const auto is = [&plan](SheetKind kind) { return std::ranges::count(plan.sheets, kind, &Sheet::kind); };
    if (job.kind != JobKind::fax && !plan.sheets.empty()) {
        const bool hasCovers = job.frontCover || job.backCover;
        FUZZ_EXPECT(is(SheetKind::cover) ==
                    (job.booklet ? int(hasCovers) : int(job.frontCover.has_value()) + int(job.backCover.has_value())));
        FUZZ_EXPECT(is(SheetKind::slipSheet) == int(job.finishing.hasSlipSheets && !job.booklet));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes(data, size);
    const std::int64_t pageCount = bytes.next();
    const JobInstructions job = jobFrom(bytes);
    const SheetPlan plan = planSheets(job, pageCount);
    checkSheets(plan, job);

    std::vector<std::int32_t> pages = pagesRead(plan, job);
    if (!job.isReversed || job.kind == JobKind::fax) {
        FUZZ_EXPECT(pages == chosenPages(job, pageCount));
    } else {
        std::ranges::sort(pages);
        FUZZ_EXPECT(pages == chosenPages(job, pageCount));
    }
    FUZZ_EXPECT(std::ranges::adjacent_find(pages, std::ranges::greater_equal()) == pages.end());
    return 0;
}
