// The dialog that asks for the shift of tab stock, in inches and in millimetres.

#include "model/stock_dialogs/tab_stock_setup.h"
#include "model/settings/ticket_access.h"
#include "tests/model/stock_dialogs/stock_fixture.h"

namespace {

constexpr SInt32 kChoice = 1001;
constexpr SInt32 kField = 1002;
constexpr SInt32 kShift = 1003;
constexpr SInt32 kUnits = 1004;
constexpr SInt32 kModulus = 1005;

class TabStockSetupTest : public StockDialogTest {
protected:
    TabStockSetupTest() { ImageShiftInitialize(nullptr, nullptr, &options); }

    SInt16 run(const Step& step) {
        SInt16 result = 0;
        during([&] { return RunModalTabStockSetupDialog(plugin.bundle(), &stock, &options, &result); }, {step});
        return result;
    }
    void shift(SInt32 millimeters) {
        options.option = 1;
        options.inches = 0;
        options.x1 = options.x2 = millimeters;
    }

    Stock stock;
    _IS_Options options{};
};

TEST_F(TabStockSetupTest, ThePresetIsReadInTheCountrysUnits) {
    shift(13);
    EXPECT_EQ(run([](WindowRef window) {
                  EXPECT_EQ(value(window, kChoice), 2);
                  EXPECT_FALSE(enabled(window, kField) || enabled(window, kShift) || enabled(window, kUnits));
                  set(window, kChoice, 3);
                  clickOK(window);
              }),
              kTabStockSetupOK);
    EXPECT_EQ(options.x1, 13) << "the other name of the same shift";
    live("de_DE");
    run([](WindowRef window) {
        EXPECT_EQ(value(window, kChoice), 3);
        set(window, kChoice, 1);
        clickOK(window);
    });
    EXPECT_EQ(options.option, kTicketValueUnset);
    const _IS_Options before = options;
    EXPECT_EQ(run([](WindowRef window) {
                  EXPECT_EQ(value(window, kChoice), 1);
                  set(window, kChoice, 2);
                  clickCancel(window);
              }),
              kTabStockSetupCancel);
    EXPECT_EQ(options, before);
}

TEST_F(TabStockSetupTest, TellsTheNumberOfTabsThatIsKnown) {
    stock.setModulus(5);
    shift(13);
    EXPECT_EQ(run([](WindowRef window) {
                  EXPECT_EQ(text(window, kModulus), "A bank has 5 tabs.");
                  set(window, kChoice, 1);
                  clickOK(window);
              }),
              kTabStockSetupOK);
    EXPECT_EQ(options.option, kTicketValueUnset);
    EXPECT_EQ(stock.modulus(), 5);
}

TEST_F(TabStockSetupTest, AShiftOfOnesOwnIsWrittenInMillimeters) {
    shift(40);
    EXPECT_EQ(
        run([](WindowRef window) {
            EXPECT_EQ(value(window, kChoice), 4);
            EXPECT_TRUE(enabled(window, kField) && enabled(window, kShift) && enabled(window, kUnits));
            EXPECT_EQ(text(window, kField), "1.6");
            AutomationChooseMenuItem(control(window, kUnits), GetControlPopupMenuHandle(control(window, kUnits)), 2);
            EXPECT_EQ(text(window, kField), "40") << "converted from what was shown";
            EXPECT_EQ(GetControl32BitMaximum(control(window, kShift)), 51);
            type(window, kField, "33");
            AutomationChooseMenuItem(control(window, kUnits), GetControlPopupMenuHandle(control(window, kUnits)), 1);
            EXPECT_EQ(text(window, kField), "1.3");
            EXPECT_EQ(GetControl32BitMaximum(control(window, kShift)), 20);
            type(window, kField, "0.9");
            clickOK(window);
        }),
        kTabStockSetupOK);
    EXPECT_EQ(options.option, 1);
    EXPECT_EQ(options.inches, 0);
    EXPECT_EQ(options.x1, 23);
    EXPECT_EQ(options.x2, 23);
}

TEST_F(TabStockSetupTest, WhatIsNoShiftIsRefused) {
    live("en_GB");
    shift(500);
    EXPECT_EQ(
        run([&](WindowRef window) {
            EXPECT_EQ(text(window, kField), "500");
            EXPECT_EQ(value(window, kUnits), 2);
            AutomationChooseMenuItem(control(window, kUnits), GetControlPopupMenuHandle(control(window, kUnits)), 1);
            EXPECT_EQ(text(window, kField), "20.0") << "other units make no difference";
            AutomationChooseMenuItem(control(window, kUnits), GetControlPopupMenuHandle(control(window, kUnits)), 2);
            const auto isRefused = [&] {
                ControlRef okButton = nullptr;
                GetWindowDefaultButton(window, &okButton);
                return !IsControlEnabled(okButton);
            };
            EXPECT_TRUE(isRefused());
            type(window, kField, "51");
            EXPECT_FALSE(isRefused());
            type(window, kField, "52");
            EXPECT_TRUE(isRefused());
            set(window, kChoice, 3);
            clickOK(window);
        }),
        kTabStockSetupOK)
        << "a preset needs no shift to be typed";
    EXPECT_TRUE(notices.empty());
    EXPECT_EQ(options.x1, 13);
}

}  // namespace
