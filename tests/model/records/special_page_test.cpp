#include "model/records/special_page_list.h"

#include "model/records/sync_covers.h"
#include "tests/platform/printing/printing_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

namespace {

constexpr SInt32 kMaximum = std::numeric_limits<SInt32>::max();

/// Pages from first to last, known by their plex.
struct Range {
    SInt32 first;
    SInt32 last;
    SInt32 plex;

    bool operator==(const Range&) const = default;
};
void PrintTo(const Range& range, std::ostream* out) {
    *out << range.first << '-' << range.last << " #" << range.plex;
}

SpecialPages exceptions(const std::vector<Range>& ranges) {
    SpecialPages pages;
    for (const Range& range : ranges) {
        auto page = std::make_unique<ExceptionPage>();
        page->setStartPage(range.first);
        page->setEndPage(range.last);
        page->setPlex(range.plex);
        page->setLightenDarken(-range.plex);
        pages.push_back(std::move(page));
    }
    return pages;
}

std::vector<Range> contents(const ExceptionPageList& list) {
    std::vector<Range> ranges;
    for (CFIndex i = 0; i < list.count(); ++i) {
        const ExceptionPage& page = *list.pageAtIndex(i);
        EXPECT_EQ(page.lightenDarken(), -page.plex());
        ranges.push_back({page.startPage(), page.endPage(), page.plex()});
    }
    return ranges;
}

SpecialPages inserts(const std::vector<std::pair<SInt32, SInt32>>& pagesAndQuantities) {
    SpecialPages pages;
    for (const auto& [start, quantity] : pagesAndQuantities) {
        auto page = std::make_unique<Insert>();
        page->setStartPage(start);
        page->setQuantity(quantity);
        pages.push_back(std::move(page));
    }
    return pages;
}

std::vector<std::pair<SInt32, SInt32>> contents(const InsertList& list) {
    std::vector<std::pair<SInt32, SInt32>> pages;
    for (CFIndex i = 0; i < list.count(); ++i) {
        pages.emplace_back(list.pageAtIndex(i)->startPage(), list.pageAtIndex(i)->quantity());
    }
    return pages;
}

/// Puts one range into a list by walking along it, the way the rule is told.
void addByWalking(std::vector<Range>& list, const Range& added) {
    for (std::size_t i = 0; i < list.size();) {
        Range& present = list[i];
        if (added.first > present.last) {
            ++i;
        } else if (added.first < present.first && added.last < present.first) {
            list.insert(list.begin() + static_cast<std::ptrdiff_t>(i), added);
            return;
        } else if (added.first <= present.first) {
            if (added.last < present.last) {
                present.first = added.last + 1;
            } else {
                list.erase(list.begin() + static_cast<std::ptrdiff_t>(i));
            }
        } else {
            const Range whole = present;
            present.last = added.first - 1;
            if (added.last < whole.last) {
                list.insert(list.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                            {added.last + 1, whole.last, whole.plex});
            }
            ++i;
        }
    }
    list.push_back(added);
}

TEST(SpecialPage, KeepsItsSettingsInATicket) {
    Cover cover;
    cover.setSidesImaged(kCoverBothSides);
    cover.stock().setColor(3);
    EXPECT_TRUE(Cover(cover.asTicket().get()) == cover);
    EXPECT_EQ(Cover(cover.asTicket().get()).sidesImaged(), kCoverBothSides);
    EXPECT_EQ(Cover(cover.asTicket().get()).stock().color(), 3);
    Cover moved(cover);
    moved.setStartPage(9);
    EXPECT_TRUE(moved == cover) << "a cover has no place";
    moved.stock().setWeight(9);
    EXPECT_FALSE(moved == cover);

    Insert insert;
    insert.setStartPage(4);
    insert.setQuantity(3);
    const Insert readInsert(insert.asTicket().get());
    EXPECT_EQ(readInsert.startPage(), 4);
    EXPECT_EQ(readInsert.quantity(), 3);

    ExceptionPage page;
    EXPECT_EQ(CFDictionaryGetCount(page.asTicket().get()), 3) << "StartPage, Stock, EndPage";
    page.setStartPage(2);
    page.setEndPage(kMaximum);
    page.setPlex(3);
    page.setLightenDarken(0);
    page.imageShift() = {1, 1, kTicketValueUnset, 1, 0, 0, 13, -13, 4, kMaximum};
    for (const ExceptionPage& read : {ExceptionPage(page.asTicket().get()), page}) {
        EXPECT_EQ(read.startPage(), 2);
        EXPECT_EQ(read.endPage(), kMaximum);
        EXPECT_EQ(read.plex(), 3);
        EXPECT_EQ(read.lightenDarken(), 0);
        EXPECT_EQ(read.imageShift(), page.imageShift());
    }
}

TEST(SpecialPage, HasDefaultsForWhatATicketLacks) {
    const auto broken = makeDictionary();
    for (const char* key : {"StartPage", "Stock", "SidesImaged", "Quantity", "EndPage", "LightenDarken",
                            "com.tavro.print.ImageShiftOptionsPage"}) {
        set(broken.get(), key, "text");
    }
    for (const CFDictionaryRef ticket : {CFDictionaryRef{broken.get()}, CFDictionaryRef{nullptr}}) {
        EXPECT_EQ(Cover(ticket).sidesImaged(), kCoverBlank);
        EXPECT_TRUE(Cover(ticket).stock() == Stock(nullptr)) << "not set, unlike a new cover's";
        EXPECT_EQ(Insert(ticket).quantity(), 1);
        const ExceptionPage page(ticket);
        EXPECT_EQ(page.startPage(), 0);
        EXPECT_EQ(page.endPage(), 0);
        EXPECT_EQ(page.plex(), kTicketValueUnset);
        EXPECT_EQ(page.lightenDarken(), kTicketValueUnset);
        EXPECT_EQ(page.imageShift(), ExceptionPage().imageShift());
    }
}

TEST(ImageShift, IsWrittenOnlyWhenThereIsOne) {
    EXPECT_FALSE(ImageShiftCreateTicketFromOptions(nullptr, JobContext::job));
    _IS_Options options{};
    EXPECT_FALSE(ImageShiftCreateTicketFromOptions(&options, JobContext::job)) << "not valid";
    _ImageShiftContext context{nullptr, nullptr, {7, 7, 7}};
    options.x1 = 5;
    ImageShiftInitialize(nullptr, &context, &options);
    EXPECT_EQ(context.options, &options);
    EXPECT_EQ(context.words[2], 0);
    EXPECT_EQ(options, (_IS_Options{1, 1, kTicketValueUnset, kTicketValueUnset, 0, 1, 5, 0, 0, 0}));
    EXPECT_FALSE(ImageShiftCreateTicketFromOptions(&options, JobContext::job)) << "no shift";
    const auto ticket = makeDictionary();
    WriteTicketValue(ticket.get(), CFSTR("Inches"), -4);
    ImageShiftSetOptionsFromTicket(&options, ticket.get());
    EXPECT_EQ(options, (_IS_Options{1, 1, kTicketValueUnset, kTicketValueUnset, 0, 1, 0, 0, 0, 0}));
}

TEST(InsertList, AddsLikeOneWhoWalksAlongIt) {
    std::mt19937 random(1);
    for (int round = 0; round < 50; ++round) {
        InsertList list;
        std::vector<std::pair<SInt32, SInt32>> expected;
        SInt32 quantity = 0;
        for (int batch = 0; batch < 3; ++batch) {
            std::vector<std::pair<SInt32, SInt32>> added(random() % 40);
            for (auto& page : added) {
                page = {static_cast<SInt32>(random() % 10) - 2, ++quantity};
                const auto place = std::find_if(expected.begin(), expected.end(),
                                                [&](const auto& other) { return other.first > page.first; });
                expected.insert(place, page);
            }
            list.add(inserts(added));
        }
        ASSERT_EQ(contents(list), expected) << round;
        ASSERT_EQ(list.pageAtIndex(-1), nullptr);
        ASSERT_EQ(list.pageAtIndex(list.count()), nullptr);
    }
}

TEST(ExceptionPageList, TakesPagesAwayFromThoseThatHadThem) {
    ExceptionPageList list;
    list.add(exceptions({{1, 10, 1}}));
    const ExceptionPage* const first = list.pageAtIndex(0);
    list.add(exceptions({{4, 6, 2}}));
    EXPECT_EQ(contents(list), (std::vector<Range>{{1, 3, 1}, {4, 6, 2}, {7, 10, 1}}));
    EXPECT_EQ(list.pageAtIndex(0), first) << "the first part is the page itself";

    list.clear();
    list.add(exceptions({{3, 4, 1}, {8, 12, 2}}));
    list.add(exceptions({{1, 10, 3}}));
    EXPECT_EQ(contents(list), (std::vector<Range>{{1, 10, 3}, {11, 12, 2}}));

    // A range that ends before it starts, or a page of another kind, has no pages to take.
    SpecialPages nothing = exceptions({{5, 4, 4}, {kMaximum, 0, 5}});
    nothing.push_back(std::make_unique<Insert>());
    list.add(nothing);
    EXPECT_EQ(list.count(), 2);

    list.clear();
    list.add(exceptions({{1, kMaximum, 1}, {kMaximum, kMaximum, 2}, {-kMaximum - 1, 0, 3}}));
    EXPECT_EQ(contents(list),
              (std::vector<Range>{{-kMaximum - 1, 0, 3}, {1, kMaximum - 1, 1}, {kMaximum, kMaximum, 2}}));
}

TEST(ExceptionPageList, AddsLikeOneWhoWalksAlongIt) {
    std::mt19937 random(1);
    for (int round = 0; round < 500; ++round) {
        ExceptionPageList list;
        std::vector<Range> expected;
        SInt32 plex = 0;
        for (int batch = 0; batch < 4; ++batch) {
            std::vector<Range> added(random() % 6);
            for (Range& range : added) {
                range.first = static_cast<SInt32>(random() % 30) - 3;
                range.last = range.first + static_cast<SInt32>(random() % (batch == 0 ? 30 : 8));
                range.plex = ++plex;
                addByWalking(expected, range);
            }
            list.add(exceptions(added));
        }
        ASSERT_EQ(contents(list), expected) << round;
    }
}

TEST(SpecialPageList, UpdatesAndRemovesByIdentity) {
    ExceptionPageList list;
    list.add(exceptions({{1, 3, 1}, {4, 6, 2}, {7, 9, 3}}));
    list.update(list.pageAtIndex(1), exceptions({{9, 9, 4}, {2, 2, 5}}));
    const std::vector<Range> updated{{1, 1, 1}, {2, 2, 5}, {3, 3, 1}, {7, 8, 3}, {9, 9, 4}};
    EXPECT_EQ(contents(list), updated);

    const ExceptionPage stranger;
    EXPECT_EQ(list.update(&stranger, exceptions({{1, 9, 6}})), noErr);
    list.remove(&stranger);
    EXPECT_EQ(contents(list), updated);
    list.remove(list.pageAtIndex(2));
    EXPECT_EQ(list.count(), 4);
    EXPECT_EQ(list.pageAtIndex(2)->startPage(), 7);

    class FullList final : public SpecialPageList {
    public:
        explicit FullList(SpecialPages pages) { pages_ = std::move(pages); }
        OSStatus add(const SpecialPages&) override { return memFullErr; }
    };
    FullList full(inserts({{1, 1}, {2, 1}, {3, 1}}));
    const SpecialPage* const second = full.pageAtIndex(1);
    EXPECT_EQ(full.update(second, {}), memFullErr);
    EXPECT_EQ(full.count(), 3);
    EXPECT_EQ(full.pageAtIndex(1), second);
}

TEST(SpecialPageList, GoesThroughATicket) {
    InsertList insertList;
    EXPECT_FALSE(insertList.asTicket());
    insertList.add(inserts({{1, 2}, {3, 4}}));
    ExceptionPageList exceptionList;
    exceptionList.add(exceptions({{1, 2, 3}, {5, 9, 1}}));

    InsertList readInserts;
    readInserts.add(inserts({{9, 9}}));
    readInserts.setFromTicket(insertList.asTicket().get());
    EXPECT_EQ(contents(readInserts), contents(insertList));
    readInserts.setFromTicket(nullptr);
    EXPECT_EQ(readInserts.count(), 0);

    const auto ticket = exceptionList.asTicket();
    const auto noEnd = makeDictionary();
    WriteTicketValue(noEnd.get(), CFSTR("StartPage"), 1);
    CFArrayAppendValue(ticket.get(), noEnd.get());
    CFArrayAppendValue(ticket.get(), CFSTR("no dictionary"));
    ExceptionPageList readExceptions;
    readExceptions.setFromTicket(ticket.get());
    EXPECT_EQ(contents(readExceptions), contents(exceptionList));
}

class Covers : public testing::Test {
protected:
    static std::unique_ptr<Cover> cover(SInt32 sides, SInt32 type, SInt32 color) {
        auto made = std::make_unique<Cover>();
        made->setSidesImaged(sides);
        made->stock().setType(type);
        made->stock().setColor(color);
        return made;
    }
    std::string write() {
        EXPECT_EQ(SyncCovers(ticket.get(), kCoversToTicket, &front, &back), noErr);
        return get(ticket.ppd(), "JCLCovers");
    }

    Ticket ticket;
    std::unique_ptr<Cover> front;
    std::unique_ptr<Cover> back;
};

TEST_F(Covers, TellTheDriverOfTheFrontCover) {
    EXPECT_EQ(write(), "None");
    front = cover(kCoverBothSides, kStockTypeCardStock, 2);
    EXPECT_EQ(write(), "Front");
    EXPECT_EQ(get(ticket.ppd(), "JCLMediaType"), "CardStock");
    EXPECT_EQ(get(ticket.ppd(), "JCLMediaColor"), "Blue");
    EXPECT_EQ(get(ticket.ppd(), "JCLFrontBackMediaType"), "(null)");
    back = cover(kCoverSide1, kStockTypeLabels, 3);
    EXPECT_EQ(write(), "FrontBack");
    EXPECT_EQ(get(ticket.ppd(), "JCLFrontBackMediaType"), "CardStock");
    EXPECT_EQ(get(ticket.ppd(), "JCLFrontBackMediaColor"), "Blue");
    front->setSidesImaged(kCoverBlank);
    EXPECT_EQ(write(), "BlankFrontBack");
    back = nullptr;
    EXPECT_EQ(write(), "BlankFront");
    front->setSidesImaged(kCoverSide1);
    front->stock().setType(kTicketValueUnset);
    front->stock().setColor(9);
    EXPECT_EQ(write(), "None");
    EXPECT_EQ(get(ticket.ppd(), "JCLMediaType"), "CardStock") << "no keyword stands for no type";
    EXPECT_EQ(get(ticket.ppd(), "JCLMediaColor"), "Red");
    back = std::move(front);
    EXPECT_EQ(write(), "None");
}

TEST_F(Covers, ComeBackFromTheTicket) {
    front = cover(kCoverSide1, 12, 2);
    back = cover(kCoverBothSides, 9, 3);
    write();
    std::unique_ptr<Cover> readFront;
    std::unique_ptr<Cover> readBack;
    EXPECT_EQ(SyncCovers(ticket.get(), kCoversFromTicket, &readFront, &readBack), noErr);
    EXPECT_TRUE(*readFront == *front);
    EXPECT_TRUE(*readBack == *back);

    back = nullptr;
    write();
    EXPECT_EQ(SyncCovers(ticket.get(), 2, &readFront, &readBack), noErr);
    EXPECT_NE(readBack, nullptr);
    EXPECT_EQ(SyncCovers(ticket.get(), kCoversFromTicket, &readFront, &readBack), kPMKeyNotFound);
    EXPECT_NE(readFront, nullptr);
    EXPECT_EQ(readBack, nullptr);
    EXPECT_NE(SyncCovers(0, kCoversToTicket, &front, &back), noErr);
}

}  // namespace
