// Which sheets come out. The job's paper says nothing of itself, so that a sheet's paper in words is what differs.

#include "driver/plan/sheet_plan.h"
#include "tests/driver/plan/plan_words.h"

#include <gtest/gtest.h>

namespace {

JobInstructions twoSided() {
    JobInstructions job;
    job.sides = Sides::longEdge;
    return job;
}

CoverInstruction cover(CoverPrint print, const char* color) {
    return {print, {.color = color}};
}

ExceptionInstruction exception(std::int64_t first, std::int64_t last, const char* color,
                               std::optional<Sides> sides = {}) {
    return {{first, last}, {.color = color}, sides, {}, {}};
}

std::string words(const JobInstructions& job, std::int64_t pages) {
    return wordsOf(planSheets(job, pages));
}

using Kind = PlanNote::Kind;

std::vector<PlanNote> notes(const JobInstructions& job, std::int64_t pages) {
    return planSheets(job, pages).notes;
}

}  // namespace

TEST(SheetPlan, PagesAreChosenFirst) {
    JobInstructions job;
    EXPECT_EQ(words(job, 3), "[1] [2] [3]");
    job.pages = {{5, 99}, {2, 3}, {3, 4}};
    EXPECT_EQ(words(job, 6), "[2] [3] [4] [5] [6]");
    job.subset = PageSubset::even;
    EXPECT_EQ(words(job, 6), "[2] [4] [6]");
    job.sides = Sides::shortEdge;
    EXPECT_EQ(words(job, 6), "[2|4]s [6|-]s");
    job.isReversed = true;
    EXPECT_EQ(words(job, 6), "[6|-]s [2|4]s");
    job.pages = {{9, 12}};
    EXPECT_EQ(notes(job, 6), (std::vector{PlanNote{Kind::noPages}}));
    EXPECT_EQ(words({}, 0), "");
}

TEST(SheetPlan, CoversTakeTheFirstAndLastPages) {
    JobInstructions job = twoSided();
    job.frontCover = cover(CoverPrint::both, "Blue");
    job.backCover = cover(CoverPrint::both, "Red");
    EXPECT_EQ(words(job, 7), "cover:Blue[1|2] [3|4] [5|-] cover:Red[6|7]");
    EXPECT_EQ(words(job, 3), "cover:Blue[1|2] cover:Red[3|-]");
    EXPECT_EQ(words(job, 2), "cover:Blue[1|2] cover:Red[-|-]");
    EXPECT_EQ(notes(job, 2), (std::vector{PlanNote{Kind::coverWithoutPages}}));

    job.frontCover->print = CoverPrint::blank;
    job.backCover->print = CoverPrint::side2;
    EXPECT_EQ(words(job, 3), "cover:Blue[-] [1|2] cover:Red[-|3]");
    job.frontCover->print = CoverPrint::side1;
    job.backCover.reset();
    EXPECT_EQ(words(job, 3), "cover:Blue[1] [2|3]");

    // A cover has its own sides, also in a one-sided job.
    job.sides = Sides::one;
    job.frontCover->print = CoverPrint::both;
    EXPECT_EQ(words(job, 3), "cover:Blue[1|2] [3]");
    job.frontCover.reset();
    job.backCover = CoverInstruction{CoverPrint::blank, {.size = "A3"}};
    EXPECT_EQ(words(job, 1), "[1] cover:A3[-]");
}

TEST(SheetPlan, InsertsEndTheSheet) {
    JobInstructions job = twoSided();
    job.inserts = {{0, 1, {.color = "Pink"}}, {1, 2, {}}, {1, 1, {.color = "Red"}}, {4, 1, {}}, {5, 1, {}}};
    EXPECT_EQ(words(job, 5),
              "insert:Pink[-] [1|-] insert[-] insert[-] insert:Red[-] [2|3] [4|-] insert[-] [5|-] insert[-]");
    EXPECT_TRUE(notes(job, 5).empty());

    // Without its page an insert is not printed, but for those before page 1.
    job.pages = {{2, 4}};
    EXPECT_EQ(words(job, 5), "insert:Pink[-] [2|3] [4|-] insert[-]");
    EXPECT_EQ(notes(job, 5), (std::vector{PlanNote{Kind::insertNotPrinted, 1, 3}}));
    EXPECT_EQ(notes(job, 4),
              (std::vector{PlanNote{Kind::insertBeyondDocument, 5, 1}, PlanNote{Kind::insertNotPrinted, 1, 2}}));
}

TEST(SheetPlan, InsertsLieBesideCovers) {
    JobInstructions job = twoSided();
    job.frontCover = job.backCover = cover(CoverPrint::both, "Blue");
    job.inserts = {{0, 1, {}}, {1, 1, {.color = "Red"}}, {2, 1, {.color = "Pink"}}, {5, 1, {.color = "Gray"}}};
    EXPECT_EQ(words(job, 6),
              "cover:Blue[1|2] insert[-] insert:Red[-] insert:Pink[-] [3|4] insert:Gray[-] "
              "cover:Blue[5|6]");
    EXPECT_EQ(notes(job, 6), (std::vector{PlanNote{Kind::insertBesideCover, 0, 3}}));

    job.frontCover->print = CoverPrint::blank;
    job.backCover->print = CoverPrint::blank;
    EXPECT_EQ(words(job, 2), "cover:Blue[-] insert[-] [1|-] insert:Red[-] [2|-] insert:Pink[-] cover:Blue[-]");
    EXPECT_EQ(notes(job, 2), (std::vector{PlanNote{Kind::insertBeyondDocument, 5, 1}}));
}

TEST(SheetPlan, ExceptionsHaveTheirOwnPaperAndSides) {
    JobInstructions job = twoSided();
    job.exceptions = {exception(2, 3, "Yellow"), exception(4, 5, "", Sides::one), exception(6, 6, "", Sides::shortEdge),
                      exception(20, 30, "Red")};
    EXPECT_EQ(words(job, 8), "[1|-] :Yellow[2|3] [4] [5] [6|-]s [7|8]");
    EXPECT_EQ(notes(job, 8), (std::vector{PlanNote{Kind::exceptionBeyondDocument, 20}}));

    // Ranges of the same paper share a sheet; a shift is the side's own.
    job.exceptions = {exception(1, 1, "Yellow"), exception(2, 4, "Yellow")};
    job.exceptions[1].shift = {36, 36};
    job.exceptions[1].lightenDarken = -2;
    const SheetPlan plan = planSheets(job, 5);
    EXPECT_EQ(wordsOf(plan), ":Yellow[1|2] :Yellow[3|4] [5|-]");
    EXPECT_EQ(plan.sheets[0].side1.treatment, 0U);
    EXPECT_EQ(plan.treatments.at(plan.sheets[0].side2.treatment).shift, (ImageShift{36, 36}));
    EXPECT_EQ(plan.treatments.at(plan.sheets[1].side1.treatment).lightenDarken, -2);
    EXPECT_EQ(plan.sheets[2].side1.treatment, 0U);

    // A cover's paper is its own.
    job.frontCover = cover(CoverPrint::both, "Blue");
    EXPECT_EQ(words(job, 5), "cover:Blue[1|2] :Yellow[3|4] [5|-]");
    EXPECT_EQ(notes(job, 5), (std::vector{PlanNote{Kind::exceptionOnCover, 1, 2}}));
}

TEST(SheetPlan, PaperIsAsTheJobsWhereItSaysNothing) {
    JobInstructions job;
    job.paper = {.size = "A4", .color = "Blue", .type = "CardStock", .weight = 200, .name = "Ours"};
    job.inserts = {{1, 1, {.color = "Red"}}, {1, 1, {.type = "Labels"}}};
    const SheetPlan plan = planSheets(job, 1);
    EXPECT_EQ(plan.papers.at(plan.sheets[0].paper), job.paper);
    EXPECT_EQ(plan.papers.at(plan.sheets[1].paper),
              (Paper{.size = "A4", .color = "Red", .type = "CardStock", .weight = 200, .name = "Ours"}));
    EXPECT_EQ(plan.papers.at(plan.sheets[2].paper), (Paper{.size = "A4", .color = "Blue", .type = "Labels"}));
}

TEST(SheetPlan, TransparenciesHaveSeparators) {
    JobInstructions job;
    job.separators = Separators::blank;
    job.separatorColor = "Yellow";
    EXPECT_EQ(words(job, 1), "[1]");
    job.paper.type = kTransparencyType;
    job.inserts = {{1, 1, {.type = "Labels"}}};
    EXPECT_EQ(words(job, 2), "[1] separator:YellowStandard[-] insert:Labels[-] [2] separator:YellowStandard[-]");
    job.separators = Separators::printed;
    EXPECT_EQ(words(job, 2), "[1] separator:YellowStandard[1] insert:Labels[-] [2] separator:YellowStandard[2]");
    job.copies = 2;
    job.isCollated = false;
    EXPECT_EQ(notes(job, 2), (std::vector{PlanNote{Kind::separatorsUncollated}}));
}

TEST(SheetPlan, SetsHaveSlipSheetsAndSubsets) {
    JobInstructions job = twoSided();
    job.finishing.hasSlipSheets = true;
    job.finishing.offset = Offset::subsets;
    job.finishing.pagesPerSubset = 3;
    job.inserts = {{3, 1, {}}};
    EXPECT_EQ(words(job, 7), "[1|2] [3|-] insert[-] +[4|5] [6|-] +[7|-] slip[-]");
    job.isReversed = true;
    EXPECT_EQ(words(job, 7), "slip[-] [7|-] +[6|-] [4|5] +insert[-] [3|-] [1|2]");
}

TEST(SheetPlan, SeveralPagesShareASide) {
    JobInstructions job = twoSided();
    job.numberUp = 4;
    job.inserts = {{6, 1, {}}};
    EXPECT_EQ(words(job, 9), "[1 2 3 4|5 6] insert[-] [7 8 9|-]");
    job.frontCover = cover(CoverPrint::side1, "Blue");
    job.inserts.clear();
    EXPECT_EQ(words(job, 9), "cover:Blue[1 2 3 4] [5 6 7 8|9]");
}

TEST(SheetPlan, BookletsAreReadAfterTheFold) {
    JobInstructions job;
    job.booklet = BookletInstruction{};
    EXPECT_EQ(words(job, 8), "[8 1|2 7]s [6 3|4 5]s");
    EXPECT_EQ(words(job, 5), "[- 1|2 -]s [- 3|4 5]s");
    job.booklet->isRightToLeft = true;
    EXPECT_EQ(words(job, 8), "[1 8|7 2]s [3 6|5 4]s");
    job.booklet = BookletInstruction{.paperSize = "A3"};
    EXPECT_EQ(words(job, 2), ":A3[- 1|2 -]s");
}

TEST(SheetPlan, ABookletsCoversAreItsOutermostSheet) {
    JobInstructions job;
    job.booklet = BookletInstruction{.paperSize = "A3"};
    job.paper.size = "A3";
    job.frontCover = cover(CoverPrint::both, "Blue");
    job.frontCover->paper.size = "Letter";
    EXPECT_EQ(words(job, 8), "cover:A3Blue[8 1|2 7]s [6 3|4 5]s");
    EXPECT_EQ(words(job, 6), "cover:A3Blue[6 1|2 5]s [- 3|4 -]s");
    EXPECT_EQ(words(job, 3), "cover:A3Blue[- 1|2 3]s");
    job.frontCover->print = CoverPrint::blank;
    EXPECT_EQ(words(job, 4), "cover:A3Blue[- -|- -]s [4 1|2 3]s");
    job.backCover = cover(CoverPrint::side2, "Red");
    const SheetPlan plan = planSheets(job, 4);
    EXPECT_EQ(wordsOf(plan), "cover:A3Blue[4 -|- -]s [- 1|2 3]s");
    EXPECT_EQ(plan.notes, (std::vector{PlanNote{Kind::coversDifferInBooklet}}));
    EXPECT_TRUE(plan.isBlank(plan.sheets[0].side2));
    EXPECT_FALSE(plan.isBlank(plan.sheets[0].side1));
    // A back cover alone is a cover, too.
    job.frontCover.reset();
    job.backCover->print = CoverPrint::both;
    EXPECT_EQ(words(job, 8), "cover:A3Red[8 1|2 7]s [6 3|4 5]s");
}

TEST(SheetPlan, WhatCannotBeIsNoted) {
    JobInstructions job;
    job.booklet = BookletInstruction{};
    job.inserts = {{2, 1, {}}, {3, 1, {}}};
    job.exceptions = {exception(1, 1, "Red")};
    job.numberUp = 2;
    job.finishing.offset = Offset::subsets;
    EXPECT_EQ(notes(job, 4),
              (std::vector{PlanNote{Kind::insertInBooklet, 2, 2}, PlanNote{Kind::exceptionInBooklet, 1, 1},
                           PlanNote{Kind::subsetsInBooklet}, PlanNote{Kind::numberUpInBooklet}}));
    EXPECT_EQ(words(job, 4), "[4 1|2 3]s");

    job.kind = JobKind::fax;
    job.fax = FaxInstruction{.coverSheet = FaxCoverInstruction{.paperSize = "A4"}};
    job.numberUp = 1;
    EXPECT_EQ(words(job, 2), "fax:A4[-] [1] [2]");
    EXPECT_EQ(notes(job, 2), (std::vector{PlanNote{Kind::specialPagesInFax, 0, 4}}));
}

TEST(SheetPlan, HasLimits) {
    JobInstructions job;
    job.inserts = {{1, INT32_MAX, {}}};
    const SheetPlan plan = planSheets(job, 2);
    EXPECT_EQ(plan.sheets.size(), kMostPlannedSheets);
    EXPECT_EQ(plan.notes, (std::vector{PlanNote{Kind::tooManySheets, 1, 2}}));
}
