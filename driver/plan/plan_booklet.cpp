#include "driver/plan/plan_booklet.h"

#include "driver/plan/covers.h"

#include <array>
#include <utility>

namespace {

constexpr std::size_t kPagesOnSheet = 4;

void noteWhatBookletsLack(const JobInstructions& job, PlanNotes* notes) {
    using Kind = PlanNote::Kind;
    if (!job.inserts.empty()) {
        notes->add(Kind::insertInBooklet, job.inserts.front().page, std::ssize(job.inserts));
    }
    if (!job.exceptions.empty()) {
        notes->add(Kind::exceptionInBooklet, job.exceptions.front().pages.first, std::ssize(job.exceptions));
    }
    if (job.separators != Separators::none && job.paper.type == kTransparencyType) {
        notes->add(Kind::separatorsInBooklet);
    }
    if (job.finishing.hasSlipSheets) {
        notes->add(Kind::slipSheetsInBooklet);
    }
    if (job.finishing.offset == Offset::subsets) {
        notes->add(Kind::subsetsInBooklet);
    }
    if (job.numberUp > 1) {
        notes->add(Kind::numberUpInBooklet);
    }
}

/// The pages in the order in which the booklet is read, blank ones included, as many as whole sheets have.
std::vector<std::int32_t> pagesToRead(const CoverShares& shares, bool hasCover) {
    std::vector<std::int32_t> pages;
    const auto add = [&pages](std::span<const std::int32_t> some, std::size_t atLeast) {
        pages.insert(pages.end(), some.begin(), some.end());
        pages.insert(pages.end(), atLeast - some.size(), kBlankCell);
    };
    if (hasCover) {
        add(shares.front.side1, 1);
        add(shares.front.side2, 1);
    }
    const std::size_t missing = (kPagesOnSheet - shares.body.size() % kPagesOnSheet) % kPagesOnSheet;
    add(shares.body, shares.body.size() + missing);
    if (hasCover) {
        add(shares.back.side1, 1);
        add(shares.back.side2, 1);
    }
    return pages;
}

}  // namespace

void planBooklet(const JobInstructions& job, std::span<const std::int32_t> pages, SheetStack* stack) {
    noteWhatBookletsLack(job, &stack->notes());
    const CoverInstruction* const front = job.frontCover ? &*job.frontCover : job.backCover ? &*job.backCover : nullptr;
    const CoverInstruction* const back = job.backCover ? &*job.backCover : front;
    if (front != nullptr && back->paper != front->paper) {
        stack->notes().add(PlanNote::Kind::coversDifferInBooklet);
    }
    const std::vector<std::int32_t> order =
        pagesToRead(dealPages(pages, front, back, 1, &stack->notes()), front != nullptr);

    const std::string& size = job.booklet->paperSize;
    const std::uint32_t bodyPaper = stack->paper({.size = size});
    for (std::size_t first = 0; first < order.size() / 2; first += 2) {
        const bool isCover = first == 0 && front != nullptr;
        std::uint32_t paper = bodyPaper;
        if (isCover) {
            Paper cover = front->paper;
            cover.size = size;
            paper = stack->paper(cover);
        }
        if (!stack->add(isCover ? SheetKind::cover : SheetKind::document, Sides::shortEdge, paper)) {
            break;
        }
        const std::size_t last = order.size() - 1 - first;
        std::array side1{order[last], order[first]};
        std::array side2{order[first + 1], order[last - 1]};
        if (job.booklet->isRightToLeft) {
            std::swap(side1[0], side1[1]);
            std::swap(side2[0], side2[1]);
        }
        stack->print(&Sheet::side1, side1);
        stack->print(&Sheet::side2, side2);
    }
}
