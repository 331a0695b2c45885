// The dialog that shows all of a stock at once, on real PPDs.

#include "model/stock_dialogs/advanced_stock_selection.h"
#include "model/settings/ticket_access.h"
#include "tests/model/stock_dialogs/stock_fixture.h"

namespace {

constexpr SInt32 kSummary = 22000;
constexpr SInt32 kSize = 22001;
constexpr SInt32 kColor = 22002;
constexpr SInt32 kType = 22003;
constexpr SInt32 kSizeLabel = 22008;
constexpr SInt32 kWeight = 22010;
constexpr SInt32 kIcon = 22050;

class AdvancedStockSelectionTest : public StockDialogTest {
protected:
    SInt16 run(JobContext context, std::initializer_list<Step> steps,
               NamedPaperContext paper = NamedPaperContext::office) {
        SInt16 result = 0;
        during(
            [&] {
                return RunModalAdvancedStockSelection(plugin.bundle(), DialogMode::add, context, paper, &stock,
                                                      &result);
            },
            steps);
        return result;
    }
    static SInt32 chosen(WindowRef window, SInt32 number) {
        const SInt32 item = value(window, number);
        return item > 0
                   ? static_cast<SInt32>(Items(control(window, number)).at(static_cast<std::size_t>(item - 1)).refCon)
                   : 0;
    }

    Stock stock;
};

TEST_F(AdvancedStockSelectionTest, TheStockChangesOnOKOnly) {
    const StockPrinter printer;
    DefaultStock(&stock, JobContext::insert);
    for (const bool accepts : {false, true}) {
        const SInt16 result = run(JobContext::insert, {[&](WindowRef window) {
                                      EXPECT_EQ(text(window, kSummary), "Same as Job");
                                      EXPECT_EQ(chosen(window, kSize), kTicketValueUnset);
                                      EXPECT_EQ(chosen(window, kType), kTicketValueUnset);
                                      choose(window, kSize, 4);
                                      choose(window, kColor, 2);
                                      EXPECT_EQ(text(window, kSummary), "Size: A4 (210 x 297 mm)\nColor: Blue");
                                      accepts ? clickOK(window) : clickCancel(window);
                                  }});
        EXPECT_EQ(result, accepts ? kAdvancedStockSelectionOK : kAdvancedStockSelectionCancel);
        EXPECT_EQ(stock.size(), accepts ? 4 : kTicketValueUnset);
        EXPECT_EQ(stock.color(), accepts ? 2 : kTicketValueUnset);
        EXPECT_EQ(stock.type(), kTicketValueUnset);
    }
}

TEST_F(AdvancedStockSelectionTest, ATransparencyIsClearAtOnce) {
    const StockPrinter printer;
    DefaultStock(&stock, JobContext::job);
    run(JobContext::job, {[](WindowRef window) {
            EXPECT_EQ(value(window, kSize), 0);
            EXPECT_FALSE(enabled(window, kSize)) << "the page setup's matter";
            EXPECT_FALSE(enabled(window, kSizeLabel));
            choose(window, kColor, 5);
            choose(window, kType, kStockTypeTransparency);
            EXPECT_EQ(chosen(window, kColor), kStockColorClear);
            EXPECT_EQ(text(window, kSummary), "Color: Clear\nType: Transparency");
            clickOK(window);
        }});
    EXPECT_EQ(stock.color(), kStockColorClear);
    EXPECT_EQ(stock.size(), 1);
}

TEST_F(AdvancedStockSelectionTest, AGivenUpCustomSizeIsNotShown) {
    const StockPrinter printer;
    DefaultStock(&stock, JobContext::cover);
    run(JobContext::cover, {[](WindowRef window) {
                                choose(window, kSize, kStockSizeCustom);
                                EXPECT_EQ(chosen(window, kSize), 1);
                                choose(window, kSize, kStockSizeCustom);
                                EXPECT_EQ(chosen(window, kSize), kStockSizeCustom);
                                EXPECT_EQ(text(window, kSummary),
                                          "Size: Custom (6 × 11 in)\nColor: White\nType: Plain Paper");
                                clickOK(window);
                            },
                            [](WindowRef custom) { clickCancel(custom); },
                            [](WindowRef custom) {
                                type(custom, 1006, "6");
                                clickOK(custom);
                            }});
    EXPECT_EQ(stock.size(), kStockSizeCustom);
    EXPECT_EQ(stock.width(), 15240);
    EXPECT_EQ(stock.length(), 27940);
}

TEST_F(AdvancedStockSelectionTest, DefaultsAreConcrete) {
    const StockPrinter printer;
    stock.setSize(4);
    stock.setColor(3);
    stock.setType(kStockTypeRecycled);
    stock.setPunched(kStockPunched);
    stock.setDescription(CFSTR("old"));
    run(JobContext::exception, {[](WindowRef window) {
            clickCommand(window, FourCharCode("rvrt"));
            EXPECT_EQ(chosen(window, kSize), 1);
            EXPECT_EQ(chosen(window, kColor), 1);
            EXPECT_EQ(chosen(window, kType), 1);
            clickOK(window);
        }});
    EXPECT_EQ(stock.size(), 1);
    EXPECT_EQ(stock.color(), 1);
    EXPECT_EQ(stock.type(), 1);
    EXPECT_EQ(stock.punched(), kTicketValueUnset);
    EXPECT_EQ(Text(stock.description()), "");
}

TEST_F(AdvancedStockSelectionTest, WhatThePrinterLacksIsEmptyAndLeftAlone) {
    const StockPrinter printer(ppdWithout({"*MediaColor", "*OpenUI *MediaColor", "*CloseUI: *MediaColor",
                                           "*DefaultMediaColor", "*OrderDependency: 20.0 AnySetup *MediaColor"}));
    ASSERT_EQ(PPDGetGlobalOptions(CFSTR("MediaColor")), nullptr);
    stock.setColor(3);
    stock.setSize(4242);
    run(JobContext::cover, {[](WindowRef window) {
            EXPECT_TRUE(Items(control(window, kColor)).empty());
            EXPECT_FALSE(enabled(window, kColor));
            EXPECT_EQ(value(window, kSize), 0) << "a size that the printer does not know";
            choose(window, kType, kStockTypeRecycled);
            clickOK(window);
        }});
    EXPECT_EQ(stock.color(), 3);
    EXPECT_EQ(stock.size(), 4242);
    EXPECT_EQ(stock.type(), kStockTypeRecycled);
}

TEST_F(AdvancedStockSelectionTest, ThePictureFollowsTheStock) {
    const StockPrinter printer;
    DefaultStock(&stock, JobContext::job);
    run(JobContext::job, {[&](WindowRef window) {
            const auto middle = [&] {
                Rect icon{};
                GetControlBounds(control(window, kIcon), &icon);
                return snapshot(window).pixelColor((icon.left + icon.right) / 2, (icon.top + icon.bottom) / 2);
            };
            const QColor white = middle();
            EXPECT_EQ(white, QColor(Qt::white));
            choose(window, kColor, 2);
            const QColor blue = middle();
            EXPECT_GT(blue.blue(), blue.red() + 40);
            clickCommand(window, FourCharCode("rvrt"));
            EXPECT_EQ(middle(), white);
            clickCancel(window);
        }});
}

TEST_F(AdvancedStockSelectionTest, TheLibraryAsksForAWeightInDigits) {
    const StockPrinter printer;
    stock.setWeight(80);
    EXPECT_EQ(run(JobContext::job, {[](WindowRef window) {
                      EXPECT_EQ(text(window, kWeight), "80");
                      type(window, kWeight, "1-2.0x0000");
                      EXPECT_EQ(text(window, kWeight), "12000");
                      clickOK(window);
                  }},
                  NamedPaperContext::stockLibrary),
              kAdvancedStockSelectionOK);
    EXPECT_EQ(stock.weight(), 12000);
    run(JobContext::job, {[](WindowRef window) {
            type(window, kWeight, "");
            clickOK(window);
        }},
        NamedPaperContext::stockLibrary);
    EXPECT_EQ(stock.weight(), kTicketValueUnset);
}

}  // namespace
