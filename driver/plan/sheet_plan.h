// Which sheets come out: the one answer that the dialog's preview and sheet count, the job, and what is told of it are
// made from.
#pragma once

#include "driver/instructions/job_instructions.h"

#include <cstdint>
#include <span>
#include <vector>

/// Why a sheet is there.
enum class SheetKind : std::uint8_t {
    document,
    cover,  // front or back; of a booklet its outermost sheet
    insert,
    separator,  // between transparencies
    slipSheet,  // behind a set
    faxCover,   // a page of our own in front of a fax
    banner,     // of the printer's own; no plan has it among its sheets, but who shows all that comes out has
};

/// A side has cells in the order in which their pages are read: one, as many as numberUp has, or a booklet's two, of
/// which the left one comes first. A side without cells is blank, and so is a cell without a page.
struct SheetSide {
    std::uint32_t firstCell = 0;  // in SheetPlan::cells
    std::uint32_t treatment = 0;  // in SheetPlan::treatments
    std::uint8_t cellCount = 0;

    bool operator==(const SheetSide&) const = default;
};

struct Sheet {
    SheetKind kind = SheetKind::document;
    Sides sides = Sides::one;
    bool beginsSubset = false;  // lies offset from the sheet before
    std::uint32_t paper = 0;    // in SheetPlan::papers
    SheetSide side1;
    SheetSide side2;  // blank when sides is one

    bool operator==(const Sheet&) const = default;
};

/// How the pages of a side are printed in another way than the job's.
struct Treatment {
    ImageShift shift;
    std::optional<int> lightenDarken;  // -3 lightest to 3 darkest

    auto operator<=>(const Treatment&) const = default;
};

/// What the sheets cannot be although it was asked for. Pages are the document's, from 1; 0 where there is none.
struct PlanNote {
    enum class Kind : std::uint8_t {
        noPages,                  // nothing is printed
        tooManySheets,            // page: the first that is left out, or 0
        specialPagesInFax,        // a fax is its pages
        insertBeyondDocument,     // page: the one that it should follow
        insertNotPrinted,         // its page is none of those that are printed
        insertBesideCover,        // its page is on a cover, so that it lies next to the cover
        exceptionBeyondDocument,  // page: its first
        exceptionOnCover,         // page: the first of its pages on a cover, which has paper and sides of its own
        coverWithoutPages,        // no page is left for a printed cover
        insertInBooklet,
        exceptionInBooklet,
        coversDifferInBooklet,  // both are one sheet, of the front cover's paper
        separatorsInBooklet,
        slipSheetsInBooklet,  // would be folded with it
        subsetsInBooklet,
        numberUpInBooklet,
        separatorsUncollated,  // as many lie behind the copies of a transparency as there are copies
        slipSheetsUncollated,  // the same behind the last sheet
        subsetsUncollated,
    } kind;
    std::int64_t page = 0;
    std::int64_t count = 1;  // of the notes of the kind

    bool operator==(const PlanNote&) const = default;
};

/// A cell without a page.
inline constexpr std::int32_t kBlankCell = -1;

struct SheetPlan {
    int copies = 1;
    bool isCollated = true;             // else each sheet comes out `copies` times before the next
    std::int64_t pageCount = 0;         // of the document's pages that are printed
    std::int32_t firstPage = 0;         // of them, from 0
    bool hasBanner = false;             // the printer puts a sheet of its own in front of the job
    std::vector<Sheet> sheets;          // of one set, in the order of the stack, the front first
    std::vector<std::int32_t> cells;    // pages of the document, from 0, or kBlankCell
    std::vector<Paper> papers;          // the first is the job's
    std::vector<Treatment> treatments;  // the first is none
    std::vector<PlanNote> notes;        // in the order of their kinds, one a kind, with its first page

    [[nodiscard]] std::span<const std::int32_t> cellsOf(const SheetSide& side) const {
        return std::span(cells).subspan(side.firstCell, side.cellCount);
    }
    [[nodiscard]] bool isBlank(const SheetSide& side) const;
    /// Whether the printer is given a page for a side of the sheet: for every first one, and for every second one of
    /// two-sided sheets, so that the next sheet begins with its first; a blank one at the end of the stack is not
    /// needed.
    [[nodiscard]] bool isSent(std::size_t sheet, bool isSide2) const;

    bool operator==(const SheetPlan&) const = default;
};

/// The most pages of a document that a plan is made for, and the most sheets that it has; what is beyond is left out.
inline constexpr std::int64_t kMostPlannedPages = 10'000'000;
inline constexpr std::size_t kMostPlannedSheets = 10'000'000;

/// The plan of a document of so many pages; 0 gives a plan without sheets. A function of its arguments alone, in time
/// that grows with the pages that are printed and with the inserts and exceptions, not with their product.
///
/// Rules, where wishes meet:
///   - The range of pages is taken first. All other page numbers are the document's own.
///   - Covers are the first and the last sheet of a set. A printed cover takes the first or last of the pages, and
///     keeps them: an insert behind one of them lies next to the cover. Paper and sides of a cover are its own.
///   - An insert, and a change of paper or sides, begins a new sheet. So does each subset that is offset.
///   - An insert belongs to its page and is not printed without it. One before page 1 is always printed.
///   - A booklet's sheets have two sides of two pages, and paper of one kind. Its covers are one sheet around it: the
///     front cover's two pages and the back cover's; a cover that is not asked for is as the other.
///   - A fax is its pages, one to a sheet.
SheetPlan planSheets(const JobInstructions& instructions, std::int64_t pageCount);

/// The pages of the document that are printed, from 0, in their order.
std::vector<std::int32_t> chosenPages(const JobInstructions& instructions, std::int64_t pageCount);
