#include "model/stock/stock.h"

#include "model/settings/ppd_ui_dictionary.h"
#include "model/stock/stock_icon.h"
#include "model/stock/stock_summary.h"
#include "tests/model/settings/session.h"
#include "tests/support/test_bundle.h"

#include <gtest/gtest.h>

namespace {

constexpr SInt32 kUnset = kTicketValueUnset;

/// The keys of a dictionary in their order, separated by blanks.
std::string keys(CFDictionaryRef dictionary) {
    std::vector<const void*> found(static_cast<std::size_t>(CFDictionaryGetCount(dictionary)));
    CFDictionaryGetKeysAndValues(dictionary, found.data(), nullptr);
    std::string joined;
    for (const void* key : found) {
        joined += (joined.empty() ? "" : " ") + text(key);
    }
    return joined;
}

/// A stock with every field set.
Stock fullStock() {
    Stock stock;
    stock.setWidth(21000);
    stock.setLength(40000);
    stock.setType(kStockTypeTabStock);
    stock.setColor(kStockColorCustom);
    stock.setCustomColor(CFSTR("Mauve"));
    stock.setCustomType(CFSTR("Rag"));
    stock.setModulus(5);
    stock.setPunched(kStockPunched);
    stock.setWeight(120);
    stock.setDescription(CFSTR("For menus"));
    stock.setSidesCoated(2);
    stock.setCoatingType(3);
    stock.setFinish(4);
    stock.setGrain(5);
    stock.setCustomName(CFSTR("Menu"));
    stock.setCustomNameOnly(true);
    stock.setComment(CFSTR("no rush"));
    return stock;
}

TEST(Stock, SizeAndItsMeasuresAgree) {
    Stock stock;
    EXPECT_EQ(stock.size(), 1);
    stock.setWidth(21000);
    EXPECT_EQ(stock.size(), kStockSizeCustom);
    stock.setLength(kUnset);
    EXPECT_EQ(stock.size(), kStockSizeCustom);
    stock.setSize(kStockSizeCustom);
    EXPECT_EQ(stock.width(), 21000);
    stock.setSize(1);
    EXPECT_EQ(stock.width(), kUnset);
    stock.setLength(1);
    EXPECT_EQ(stock.size(), kStockSizeCustom);
}

TEST(Stock, ATransparencyIsClear) {
    Stock stock;
    stock.setColor(2);
    stock.setType(kStockTypeTransparency);
    EXPECT_EQ(stock.color(), kStockColorClear);

    // One that was made blue afterwards is blue, its copy is too, and what is assigned from it is clear.
    stock.setColor(2);
    EXPECT_EQ(Stock(stock).color(), 2);
    Stock assigned;
    assigned = stock;
    EXPECT_EQ(assigned.color(), kStockColorClear);
}

TEST(Stock, IsCopiedWithItsTexts) {
    const auto name = cf("shared");
    Stock stock = fullStock();
    stock.setCustomName(name.get());
    {
        const Stock copy(stock);
        EXPECT_TRUE(copy == stock);
        Stock assigned;
        assigned = copy;
        EXPECT_TRUE(assigned == stock);
        EXPECT_EQ(CFGetRetainCount(name.get()), 4) << "no text is copied";
    }
    const Stock& self = stock;
    stock = self;
    EXPECT_EQ(CFGetRetainCount(name.get()), 2);
}

TEST(Stock, EveryFieldCountsInEquality) {
    const Stock stock = fullStock();
    void (*const changes[])(Stock&) = {
        [](Stock& s) { s.setSize(2); },
        [](Stock& s) { s.setWidth(1); },
        [](Stock& s) { s.setLength(1); },
        [](Stock& s) { s.setType(1); },
        [](Stock& s) { s.setColor(1); },
        [](Stock& s) { s.setModulus(1); },
        [](Stock& s) { s.setPunched(1); },
        [](Stock& s) { s.setWeight(1); },
        [](Stock& s) { s.setSidesCoated(1); },
        [](Stock& s) { s.setCoatingType(1); },
        [](Stock& s) { s.setFinish(1); },
        [](Stock& s) { s.setGrain(1); },
        [](Stock& s) { s.setCustomNameOnly(false); },
        [](Stock& s) { s.setCustomType(CFSTR("x")); },
        [](Stock& s) { s.setCustomColor(CFSTR("x")); },
        [](Stock& s) { s.setDescription(CFSTR("x")); },
        [](Stock& s) { s.setCustomName(CFSTR("x")); },
        [](Stock& s) { s.setComment(CFSTR("x")); },
    };
    for (std::size_t i = 0; i < std::size(changes); ++i) {
        Stock changed(stock);
        changes[i](changed);
        EXPECT_FALSE(changed == stock) << i;
    }
    Stock same(stock);
    same.setCustomColor(CFSTR("mAUVE"));
    EXPECT_TRUE(same == stock);
    same.setDescription(nullptr);
    EXPECT_FALSE(same == same);
}

TEST(Stock, WritesWhatIsSetAndReadsALittleOfIt) {
    EXPECT_EQ(keys(Stock().asTicket().get()), "Size Color");
    EXPECT_EQ(keys(Stock(nullptr).asTicket().get()), "");
    const auto ticket = fullStock().asTicket();
    EXPECT_EQ(keys(ticket.get()),
              "Size Width Length Type CustomType Modulus Color CustomColor Weight Punched Description SidesCoated "
              "kCoatingType Finish kGrain CustomName CustomNameOnly CustomComment");
    const Stock read(ticket.get());
    Stock expected(nullptr);
    expected.setWidth(21000);
    expected.setLength(40000);
    expected.setType(kStockTypeTabStock);
    expected.setColor(kStockColorCustom);
    EXPECT_TRUE(read == expected) << "a modulus is read for two types only, texts are not";

    Stock ordered = fullStock();
    for (const SInt32 type : {kStockTypePrecutTab, kStockTypeOrdered}) {
        ordered.setType(type);
        EXPECT_EQ(Stock(ordered.asTicket().get()).modulus(), 5);
    }
    // The driver wants to know all of it.
    EXPECT_EQ(StockWithDetails(fullStock().asTicket().get()), fullStock());
    EXPECT_EQ(StockWithDetails(nullptr), Stock(nullptr));
}

TEST(Stock, ReadsFieldsAsTheyStand) {
    const auto ticket = makeDictionary();
    WriteTicketValue(ticket.get(), CFSTR("Type"), kStockTypeTransparency);
    WriteTicketValue(ticket.get(), CFSTR("Color"), 2);
    WriteTicketValue(ticket.get(), CFSTR("Size"), 4);
    WriteTicketValue(ticket.get(), CFSTR("Width"), 21000);
    Stock stock(ticket.get());
    EXPECT_EQ(stock.color(), 2);
    EXPECT_EQ(stock.size(), 4);
    EXPECT_EQ(stock.width(), kUnset);

    WriteTicketValue(ticket.get(), CFSTR("Size"), CFIndex{1} << 32 | kStockSizeCustom);
    set(ticket.get(), "Color", "2");
    const double type = 2.5;
    CFDictionarySetNumber(ticket.get(), CFSTR("Type"), &type, kCFNumberDoubleType);
    EXPECT_TRUE(Stock(ticket.get()) == Stock(nullptr));
}

TEST(Stock, HasADefaultForEachPartOfAJob) {
    for (const JobContext context : {JobContext::job, JobContext::cover, JobContext::insert, JobContext::exception}) {
        Stock stock = fullStock();
        DefaultStock(&stock, context);
        const bool concrete = context == JobContext::job || context == JobContext::cover;
        Stock expected(nullptr);
        if (concrete) {
            expected.setSize(1);
            expected.setColor(1);
            expected.setType(1);
        }
        expected.setSidesCoated(2);
        expected.setCoatingType(3);
        expected.setFinish(4);
        expected.setGrain(5);
        expected.setComment(CFSTR("no rush"));
        EXPECT_TRUE(stock == expected) << static_cast<int>(context);
    }
}

class StockSummary : public testing::Test {
protected:
    void SetUp() override {
        bundle.add(
            "Resources/en.lproj/Localizable.strings",
            R"("StockSize" = "Size"; "StockColor" = "Color"; "StockType" = "Type"; ":" = ": ";)"
            R"("StockTypePrecutTab" = "Precut Tab"; "Unknown Option Set" = "As set"; "StockSizeCustom" = "Custom";)");
        ASSERT_EQ(PPDCreateGlobalUIDictionary(ppd.get()), noErr);
    }
    void TearDown() override { PPDReleaseGlobalUIDictionary(); }

    std::string summary(JobContext context, const Stock& stock) {
        return text(GenerateStockSummary(bundle.bundle(), context, stock, CFSTR("|")).get());
    }

    TestBundle bundle;
    Session session{kZR420};
    OpenPPD ppd{session};
};

TEST_F(StockSummary, ShowsWhatThePartOfTheJobSets) {
    Stock stock;
    DefaultStock(&stock, JobContext::cover);
    EXPECT_EQ(summary(JobContext::job, stock), "Color: White|Type: Plain Paper");
    EXPECT_EQ(summary(JobContext::cover, stock), "Size: Letter (8.5 x 11 in)|Color: White|Type: Plain Paper");
    DefaultStock(&stock, JobContext::insert);
    EXPECT_EQ(summary(JobContext::insert, stock), "");
    EXPECT_EQ(summary(JobContext::job, stock), "Color: As set|Type: As set") << "the job's lines are always there";
    stock.setWidth(21590);
    stock.setLength(27940);
    EXPECT_EQ(summary(JobContext::insert, stock), "Size: Custom (215.9 × 279.4 mm)");
    EXPECT_EQ(CustomSizeOption(stock), "Custom.612x792");
    stock.setWidth(10000);
    EXPECT_EQ(CustomSizeOption(stock), "Custom.283.46x792");
    stock.setType(kStockTypeTransparency);
    stock.setCustomNameOnly(true);
    EXPECT_EQ(summary(JobContext::job, stock), "");
}

TEST_F(StockSummary, NamesTypesByTextNameAndModulus) {
    Stock stock(nullptr);
    stock.setCustomType(CFSTR("Rag"));
    stock.setModulus(5);
    const auto type = [&](SInt32 value) {
        stock.setType(value);
        return summary(JobContext::insert, stock);
    };
    EXPECT_EQ(type(kStockTypeOrdered), "Type: Rag (5)");
    EXPECT_EQ(type(kStockTypePrecutTab), "Type: Precut Tab (5)");
    EXPECT_EQ(type(kStockTypeCustom), "Type: Rag");
    EXPECT_EQ(type(kStockTypeTabStock), "Type: Tab Stock (5)");
    EXPECT_EQ(type(kStockTypeLetterhead), "Type: Letterhead");
    stock.setModulus(0);
    EXPECT_EQ(type(kStockTypeTabStock), "Type: Tab Stock");
    EXPECT_EQ(type(kStockTypePrecutTab), "Type: Precut Tab (0)");
    stock.setType(kUnset);
    stock.setColor(kStockColorCustom);
    stock.setCustomColor(CFSTR("M\303\244uve"));
    EXPECT_EQ(summary(JobContext::insert, stock), "Color: M\303\244uve");
}

std::string icon(SInt32 type, SInt32 color, JobContext context, SInt32 punched = kUnset) {
    Stock stock;
    stock.setType(type);
    stock.setColor(color);
    stock.setPunched(punched);
    std::string joined;
    for (const std::string& name : StockIconFiles(stock, context)) {
        joined += (joined.empty() ? "" : " ") + name;
    }
    return joined;
}

TEST(StockIcon, IsMadeOfLayersOfOneFamily) {
    constexpr JobContext job = JobContext::job;
    constexpr JobContext cover = JobContext::cover;
    EXPECT_EQ(icon(1, 1, job), "DB-White.gif");
    EXPECT_EQ(icon(kUnset, kUnset, JobContext::insert), "Standard-White.gif");
    EXPECT_EQ(icon(1, 10, cover), "Standard-White.gif");
    EXPECT_EQ(icon(kStockTypeEnvelopes, 13, job, kStockPunched), "DB-Orange-Envelope.gif PunchedEnvelope.gif");
    EXPECT_EQ(icon(kStockTypeEnvelopes, 2, cover), "SP-Envelope-Blue.gif");
    EXPECT_EQ(icon(kStockTypePunched, 8, cover), "Standard-Goldenrod.gif DB-Punched.gif");
    EXPECT_EQ(icon(kStockTypeHeavyTabStock, 12, job), "DB-Tab-Gray.gif");
    EXPECT_EQ(icon(kStockTypeHeavyweightLabels, 3, job, kStockPunched),
              "DB-Yellow.gif Labels.gif DB-Punched.gif DB-Heavyweight-Labels.gif");
    EXPECT_EQ(icon(kStockTypeExtraHeavyLabels, 3, cover), "Standard-Yellow.gif SP-Heavyweight-Labels.gif");
    EXPECT_EQ(icon(kStockTypeHeavyGlossy2, 9, cover), "Side2-Red.gif Heavyweight-Glossy-Side2.gif");
    EXPECT_EQ(icon(kStockTypeHeavyGlossy2, 9, job), "DB-Side2-Red.gif DB-Heavyweight-Glossy-Side2.gif");
    EXPECT_EQ(icon(kStockTypeCustom7, 1, job), "DB-White.gif DB-Custom7.gif");
    // Gloss is drawn on a transparency only when it is not clear.
    EXPECT_EQ(icon(kStockTypeTransparency, kStockColorClear, job), "DB-Clear.gif");
    EXPECT_EQ(icon(kStockTypeTransparency, 2, job), "DB-Blue.gif Lightweight-Glossy.gif");
}

}  // namespace
