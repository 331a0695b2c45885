#include "driver/plan/plan_stack.h"

#include "driver/plan/covers.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace {

class StackPlanner {
public:
    StackPlanner(const JobInstructions& job, std::int64_t pageCount, SheetStack* stack)
        : job_(job),
          pageCount_(pageCount),
          pagesOnSide_(static_cast<std::size_t>(std::max(job.numberUp, 1))),
          stack_(*stack),
          notes_(stack->notes()) {}

    void plan(std::span<const std::int32_t> pages) {
        const CoverInstruction* const front = job_.frontCover ? &*job_.frontCover : nullptr;
        const CoverInstruction* const back = job_.backCover ? &*job_.backCover : nullptr;
        const CoverShares shares = dealPages(pages, front, back, pagesOnSide_, &notes_);
        noteExceptionsOnCovers(shares, job_.exceptions, &notes_);
        noteExceptionsBeyondDocument();
        noteWhatCopiesLack();

        addCover(front, shares.front);
        addInsertsUpTo(0);
        if (shares.front.count() > 0) {
            noteInsertsBesideCover(0);
        }
        addInsertsBesideFrontCover(shares.front);
        pagesInSubset_ = shares.front.count();
        for (const std::int32_t page : shares.body) {
            addPage(page);
            addInsertsOf(page + 1);
        }
        closeSheet();
        addInsertsBesideBackCover(shares.back);
        addCover(back, shares.back);
        noteInsertsThatAreLeft();
        if (job_.finishing.hasSlipSheets) {
            stack_.addBlanks(SheetKind::slipSheet, {}, 1, 0);
        }
    }

private:
    /// How a page is printed.
    struct Style {
        std::uint32_t paper = 0;
        Sides sides = Sides::one;
        std::uint32_t treatment = 0;
    };

    void addCover(const CoverInstruction* cover, const CoverPages& pages) {
        if (cover == nullptr) {
            return;
        }
        const bool isPrintedOnBack = cover->print == CoverPrint::both || cover->print == CoverPrint::side2;
        const Sides twoSides = job_.sides == Sides::one ? Sides::longEdge : job_.sides;
        if (stack_.add(SheetKind::cover, isPrintedOnBack ? twoSides : Sides::one, stack_.paper(cover->paper))) {
            stack_.print(&Sheet::side1, pages.side1);
            stack_.print(&Sheet::side2, pages.side2);
        }
    }

    // ---- Inserts: each call goes on behind those that were added, as the pages ascend

    void addInsert(const InsertInstruction& insert) {
        closeSheet();
        stack_.addBlanks(SheetKind::insert, insert.paper, insert.sheets, insert.page);
    }
    void addInsertsUpTo(std::int64_t page) {
        for (; nextInsert_ < job_.inserts.size() && job_.inserts[nextInsert_].page <= page; ++nextInsert_) {
            addInsert(job_.inserts[nextInsert_]);
        }
    }
    void addInsertsOf(std::int64_t page) {
        for (; nextInsert_ < job_.inserts.size() && job_.inserts[nextInsert_].page < page; ++nextInsert_) {
            notes_.add(PlanNote::Kind::insertNotPrinted, job_.inserts[nextInsert_].page);
        }
        addInsertsUpTo(page);
    }
    void addInsertsBesideFrontCover(const CoverPages& cover) {
        const std::int32_t last = cover.count() == 0 ? -1 : (cover.side2.empty() ? cover.side1 : cover.side2).back();
        for (const auto& side : {cover.side1, cover.side2}) {
            for (const std::int32_t page : side) {
                const std::size_t before = nextInsert_;
                addInsertsOf(page + 1);
                if (page != last) {
                    noteInsertsBesideCover(before);
                }
            }
        }
    }
    void addInsertsBesideBackCover(const CoverPages& cover) {
        for (const auto& side : {cover.side1, cover.side2}) {
            for (const std::int32_t page : side) {
                const std::size_t before = nextInsert_;
                addInsertsOf(page + 1);
                noteInsertsBesideCover(before);
            }
        }
    }
    void noteInsertsBesideCover(std::size_t from) {
        for (; from < nextInsert_; ++from) {
            notes_.add(PlanNote::Kind::insertBesideCover, job_.inserts[from].page);
        }
    }
    void noteInsertsThatAreLeft() {
        for (; nextInsert_ < job_.inserts.size(); ++nextInsert_) {
            const std::int64_t page = job_.inserts[nextInsert_].page;
            notes_.add(page > pageCount_ ? PlanNote::Kind::insertBeyondDocument : PlanNote::Kind::insertNotPrinted,
                       page);
        }
    }

    // ---- Pages

    Style styleOf(std::int64_t page) {
        while (nextException_ < job_.exceptions.size() && job_.exceptions[nextException_].pages.last < page) {
            ++nextException_;
        }
        if (nextException_ == job_.exceptions.size() || job_.exceptions[nextException_].pages.first > page) {
            return {0, job_.sides, 0};
        }
        if (styledException_ != nextException_) {
            const ExceptionInstruction& exception = job_.exceptions[nextException_];
            styledException_ = nextException_;
            style_ = {stack_.paper(exception.paper), exception.sides.value_or(job_.sides),
                      stack_.treatment({exception.shift, exception.lightenDarken})};
        }
        return style_;
    }

    void addPage(std::int32_t page) {
        if (hasSubsets() && pagesInSubset_ >= static_cast<std::size_t>(std::max(job_.finishing.pagesPerSubset, 1))) {
            closeSheet();
            beginsSubset_ = true;
            pagesInSubset_ = 0;
        }
        const Style style = styleOf(page + 1);
        if (!hasRoomFor(style) && !openSheet(style, page + 1)) {
            return;
        }
        (stack_.last().*side_).treatment = style.treatment;
        stack_.print(side_, {&page, 1});
        ++pagesInSubset_;
    }

    /// Whether the sheet that is open takes one more page of the style; on its other side if need be.
    bool hasRoomFor(const Style& style) {
        if (!isOpen_ || stack_.last().paper != style.paper || stack_.last().sides != style.sides) {
            return false;
        }
        const SheetSide& side = stack_.last().*side_;
        if (side.cellCount < pagesOnSide_ && side.treatment == style.treatment) {
            return true;
        }
        if (side_ == &Sheet::side2 || style.sides == Sides::one) {
            return false;
        }
        side_ = &Sheet::side2;
        return true;
    }

    bool openSheet(const Style& style, std::int64_t page) {
        closeSheet();
        isOpen_ = stack_.add(SheetKind::document, style.sides, style.paper, page);
        if (isOpen_) {
            side_ = &Sheet::side1;
            stack_.last().beginsSubset = std::exchange(beginsSubset_, false);
        }
        return isOpen_;
    }

    /// A transparency is followed by its separator.
    void closeSheet() {
        if (!std::exchange(isOpen_, false) || job_.separators == Separators::none) {
            return;
        }
        const Paper paper = stack_.paperOf(stack_.last());
        const SheetSide printed = stack_.last().side1;
        if (paper.type != kTransparencyType) {
            return;
        }
        const Paper separator{.size = paper.size, .color = job_.separatorColor, .type = kPlainType};
        if (stack_.add(SheetKind::separator, Sides::one, stack_.paper(separator)) &&
            job_.separators == Separators::printed) {
            stack_.last().side1 = printed;
        }
    }

    // ---- What cannot be

    [[nodiscard]] bool hasSubsets() const { return job_.finishing.offset == Offset::subsets && !isUncollated(); }
    [[nodiscard]] bool isUncollated() const { return job_.copies > 1 && !job_.isCollated; }

    void noteExceptionsBeyondDocument() {
        for (const ExceptionInstruction& exception : job_.exceptions) {
            if (exception.pages.first > pageCount_) {
                notes_.add(PlanNote::Kind::exceptionBeyondDocument, exception.pages.first);
            }
        }
    }
    void noteWhatCopiesLack() {
        if (!isUncollated()) {
            return;
        }
        if (job_.separators != Separators::none && job_.paper.type == kTransparencyType) {
            notes_.add(PlanNote::Kind::separatorsUncollated);
        }
        if (job_.finishing.hasSlipSheets) {
            notes_.add(PlanNote::Kind::slipSheetsUncollated);
        }
        if (job_.finishing.offset == Offset::subsets) {
            notes_.add(PlanNote::Kind::subsetsUncollated);
        }
    }

    const JobInstructions& job_;
    std::int64_t pageCount_;
    std::size_t pagesOnSide_;
    SheetStack& stack_;
    PlanNotes& notes_;

    std::size_t nextInsert_ = 0;
    std::size_t nextException_ = 0;
    std::size_t styledException_ = SIZE_MAX;  // whose style_ is known
    Style style_;
    bool isOpen_ = false;  // the last sheet, for further pages
    SheetSide Sheet::*side_ = &Sheet::side1;
    std::size_t pagesInSubset_ = 0;
    bool beginsSubset_ = false;
};

}  // namespace

void planStack(const JobInstructions& job, std::span<const std::int32_t> pages, std::int64_t pageCount,
               SheetStack* stack) {
    StackPlanner(job, pageCount, stack).plan(pages);
}
