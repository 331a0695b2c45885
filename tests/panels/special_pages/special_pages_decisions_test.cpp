// What the Special Pages panel decides from values alone: covers, the order of rows, buttons, descriptions.

#include "model/settings/setting_map.h"
#include "panels/special_pages/cover_choice.h"
#include "panels/special_pages/special_pages_descriptions.h"
#include "panels/special_pages/special_pages_list.h"
#include "tests/panels/plugin_fixture.h"

namespace {

std::unique_ptr<Cover> coverOf(SInt32 color, SInt32 sides = kCoverBlank) {
    auto cover = std::make_unique<Cover>();
    DefaultStock(&cover->stock(), JobContext::cover);
    cover->stock().setColor(color);
    cover->setSidesImaged(sides);
    return cover;
}

std::string description(const CFRef<CFStringRef>& text) {
    return Text(text.get());
}

TEST(CoverChoice, IsDerivedFromTheCovers) {
    const auto white = coverOf(1);
    const auto alsoWhite = coverOf(1);
    const auto blue = coverOf(2);
    const auto printed = coverOf(1, kCoverBothSides);
    EXPECT_EQ(CoverOptionOf(nullptr, nullptr), kCoversNone);
    EXPECT_EQ(CoverOptionOf(white.get(), nullptr), kCoversFrontOnly);
    EXPECT_EQ(CoverOptionOf(nullptr, white.get()), kCoversBackOnly);
    EXPECT_EQ(CoverOptionOf(white.get(), alsoWhite.get()), kCoversSame);
    EXPECT_EQ(CoverOptionOf(white.get(), blue.get()), kCoversDifferent);
    EXPECT_EQ(CoverOptionOf(white.get(), printed.get()), kCoversDifferent);
}

TEST(CoverChoice, MakesAndDeletesCovers) {
    // Every way from one option to another ends with the covers of that option.
    for (SInt32 from = kCoversNone; from <= kCoversDifferent; ++from) {
        for (SInt32 to = kCoversNone; to <= kCoversDifferent; ++to) {
            std::unique_ptr<Cover> front;
            std::unique_ptr<Cover> back;
            ApplyCoverOption(static_cast<CoverOption>(from), &front, &back);
            if (from == kCoversDifferent) {
                front->stock().setColor(2);
                back->stock().setColor(3);
            }
            ApplyCoverOption(static_cast<CoverOption>(to), &front, &back);
            const CoverOption now = CoverOptionOf(front.get(), back.get());
            const bool isPair = to == kCoversSame || to == kCoversDifferent;
            EXPECT_TRUE(now == to || (isPair && (now == kCoversSame || now == kCoversDifferent))) << from << to;
            if (from == kCoversDifferent && to == kCoversSame) {
                EXPECT_EQ(back->stock().color(), 2) << "the front cover's";
            }
            if (from == kCoversDifferent && to == kCoversBackOnly) {
                EXPECT_EQ(back->stock().color(), 3) << "what is there stays as it is";
            }
            if (from == kCoversNone && front) {
                EXPECT_EQ(front->sidesImaged(), kCoverBlank);
                EXPECT_EQ(front->stock().type(), kStockTypeStandard);
            }
        }
    }
}

TEST(CoverChoice, APrintedCoverTakesTheJobsSize) {
    const auto cover = coverOf(2);
    Stock job;
    job.setSize(kStockSizeCustom);
    job.setWidth(21000);
    job.setLength(30000);
    TakeJobSize(cover.get(), &job);
    EXPECT_EQ(cover->stock().size(), kStockSizeCustom);
    EXPECT_EQ(cover->stock().width(), 21000);
    EXPECT_EQ(cover->stock().length(), 30000);
    EXPECT_EQ(cover->stock().color(), 2);
    TakeJobSize(cover.get(), nullptr);
    EXPECT_EQ(cover->stock().size(), 1);
    EXPECT_EQ(cover->stock().width(), kTicketValueUnset);
}

TEST(CoverChoice, PicturesShowWhereTheCoverIsPrinted) {
    const auto pictures = [](SInt32 sides) {
        const auto [paper, print] = PicturesOfCoverSides(sides);
        return Text(paper) + (print != nullptr ? " " + Text(print) : "");
    };
    EXPECT_EQ(pictures(1), "Standard-White.gif");
    EXPECT_EQ(pictures(2), "Standard-White.gif PrintOnSide1.gif");
    EXPECT_EQ(pictures(3), "Side2-White.gif PrintOnSide2.gif");
    EXPECT_EQ(pictures(4), "Side2-White.gif PrintOnBoth.gif");
    EXPECT_EQ(pictures(99), "Standard-White.gif");
    EXPECT_EQ(Text(CoverOptionPicture(kCoversNone)), "None.gif");
    EXPECT_EQ(Text(CoverOptionPicture(kCoversDifferent)), "Different.gif");
}

TEST(SpecialPagesList, ExceptionsComeBeforeInsertsAfterTheSamePage) {
    SpecialPageRecords records;
    const auto exception = [](SInt32 first, SInt32 last) {
        auto page = std::make_unique<ExceptionPage>();
        page->setStartPage(first);
        page->setEndPage(last);
        return page;
    };
    const auto insert = [](SInt32 after) {
        auto page = std::make_unique<Insert>();
        page->setStartPage(after);
        return page;
    };
    SpecialPages pages;
    pages.push_back(exception(5, 7));
    pages.push_back(exception(9, 9));
    records.exceptions.add(pages);
    pages.clear();
    for (const SInt32 after : {5, 0, 9, 4}) {
        pages.push_back(insert(after));
    }
    records.inserts.add(pages);
    records.frontCover = coverOf(1);
    records.backCover = coverOf(1);
    std::string order;
    for (const SpecialPage* page : SpecialPagesInOrder(records)) {
        order += dynamic_cast<const Cover*>(page) != nullptr    ? " C"
                 : dynamic_cast<const Insert*>(page) != nullptr ? " I"
                                                                : " E";
        order += std::to_string(page->startPage());
    }
    EXPECT_EQ(order, " C0 I0 I4 E5 I5 E9 I9 C0");
}

TEST(SpecialPagesList, EditIsForOneRow) {
    EXPECT_EQ(ButtonsForRows(0, 0), (SpecialPagesButtons{false, false, false}));
    EXPECT_EQ(ButtonsForRows(3, 0), (SpecialPagesButtons{false, false, true}));
    EXPECT_EQ(ButtonsForRows(3, 1), (SpecialPagesButtons{true, true, true}));
    EXPECT_EQ(ButtonsForRows(3, 2), (SpecialPagesButtons{false, true, true}));
}

TEST(SpecialPagesDescriptions, LeaveOutWhatIsNotSetOrHasNoName) {
    PluginBundle plugin;
    const PluginSession printer;
    const CFBundleRef bundle = plugin.bundle();
    const auto cover = coverOf(2, kCoverBothSides);
    EXPECT_EQ(description(CreateCoverAttributesDescription(bundle, *cover)),
              "Printed;  Size: Letter (8.5 x 11 in), Color: Blue, Type: Plain Paper");
    cover->setSidesImaged(kCoverSide1);
    EXPECT_EQ(description(CreateCoverAttributesDescription(bundle, *cover)),
              "Size: Letter (8.5 x 11 in), Color: Blue, Type: Plain Paper");

    Insert insert;
    DefaultStock(&insert.stock(), JobContext::insert);
    insert.setQuantity(12);
    EXPECT_EQ(description(CreateInsertAttributesDescription(bundle, insert)), "Sheets: 12");
    EXPECT_EQ(description(CreateInsertPagesDescription(bundle, insert)), "Before 1");
    insert.setStartPage(-3);
    EXPECT_EQ(description(CreateInsertPagesDescription(bundle, insert)), "-3");

    ExceptionPage page;
    DefaultStock(&page.stock(), JobContext::exception);
    page.setStartPage(5);
    page.setEndPage(5);
    EXPECT_EQ(description(CreateExceptionAttributesDescription(bundle, page)), "");
    EXPECT_EQ(description(CreateExceptionPagesDescription(page)), "5");
    page.setEndPage(7);
    EXPECT_EQ(description(CreateExceptionPagesDescription(page)), "5-7");
    page.setPlex(77);
    EXPECT_EQ(description(CreateExceptionAttributesDescription(bundle, page)), "");
    page.setPlex(3);
    page.stock().setColor(3);
    EXPECT_EQ(description(CreateExceptionAttributesDescription(bundle, page)),
              "2-Sided, Flip on Short Edge;  Color: Yellow");
    EXPECT_EQ(description(CreateImageShiftDescription(bundle, page.imageShift())), "Image shift: None");
}

}  // namespace
