// The dialog that asks for a custom size, in the units and notations of several countries.

#include "model/stock_dialogs/custom_stock_size.h"
#include "model/settings/ticket_access.h"
#include "tests/model/stock_dialogs/stock_fixture.h"

#include <QImage>

namespace {

constexpr SInt32 kPreview = 1000;
constexpr SInt32 kLengthField = 1002;
constexpr SInt32 kLength = 1003;
constexpr SInt32 kLengthUnits = 1004;
constexpr SInt32 kWidthField = 1006;
constexpr SInt32 kWidth = 1007;
constexpr SInt32 kUnits = 1010;
constexpr SInt32 kDefaults = 1014;

class CustomStockSizeTest : public StockDialogTest {
protected:
    CustomStockSizeTest() { gCurrentUnits = StockUnits::unset; }

    SInt16 run(const Step& step) {
        SInt16 result = 0;
        during([&] { return RunModalCustomStockSizeDialog(plugin.bundle(), &result, &width, &length); }, {step});
        return result;
    }
    static std::string shown(WindowRef window) {
        return text(window, kWidthField) + " x " + text(window, kLengthField);
    }

    SInt32 width = kTicketValueUnset;
    SInt32 length = kTicketValueUnset;
};

TEST_F(CustomStockSizeTest, AmericansStartWithLetterAndMaySwitch) {
    const StockPrinter printer;
    const SInt16 result = run([](WindowRef window) {
        EXPECT_EQ(shown(window), "8.50 x 11.00");
        EXPECT_EQ(value(window, kUnits), 1);
        set(window, kUnits, 2);
        EXPECT_EQ(shown(window), "215.9 x 279.4");
        // The ZR420 takes 4 by 6 to 13 by 19 inches; each side has limits of its own.
        EXPECT_EQ(GetControl32BitMinimum(control(window, kWidth)), 1016);
        EXPECT_EQ(GetControl32BitMaximum(control(window, kWidth)), 3302);
        EXPECT_EQ(GetControl32BitMinimum(control(window, kLength)), 1524);
        EXPECT_EQ(GetControl32BitMaximum(control(window, kLength)), 4826);
        clickCancel(window);
    });
    EXPECT_EQ(result, kCustomStockSizeCancel);
    EXPECT_EQ(width, kTicketValueUnset);
    EXPECT_EQ(length, kTicketValueUnset);
    EXPECT_EQ(gCurrentUnits, StockUnits::millimeters) << "the last choice of units stays, even after Cancel";
}

struct Country {
    const char* locale;
    const char* shown;
    const char* typed;
    SInt32 width;
};
void PrintTo(const Country& country, std::ostream* out) {
    *out << country.locale;
}

class CustomStockSizeInTest : public CustomStockSizeTest, public testing::WithParamInterface<Country> {};
INSTANTIATE_TEST_SUITE_P(Countries, CustomStockSizeInTest,
                         testing::Values(Country{"en_US", "8.50 x 11.00", "7.25", 18415},
                                         Country{"en_GB", "210.0 x 297.0", "184.2", 18420},
                                         Country{"de_DE", "210,0 x 297,0", "184,2", 18420},
                                         Country{"fr_FR", "210,0 x 297,0", "184,2", 18420},
                                         Country{"ar_EG", "٢١٠٫٠ x ٢٩٧٫٠", "١٨٤٫٢", 18420}),
                         [](const auto& country) { return std::string(country.param.locale); });

TEST_P(CustomStockSizeInTest, UnitsAndDigitsAreTheCountrys) {
    if (testing::UnitTest::GetInstance()->test_to_run_count() > 1) {
        GTEST_SKIP() << "a process reads numbers in one locale; CTest runs each test in one of its own";
    }
    const StockPrinter printer;
    live(GetParam().locale);
    EXPECT_EQ(run([&](WindowRef window) {
                  EXPECT_EQ(shown(window), GetParam().shown);
                  type(window, kWidthField, GetParam().typed);
                  clickOK(window);
              }),
              kCustomStockSizeOK);
    EXPECT_EQ(width, GetParam().width);
}

TEST_F(CustomStockSizeTest, InputBeyondThePrinterIsRefusedAndTheDialogStays) {
    const StockPrinter printer;
    width = 20000;
    length = 30000;
    gCurrentUnits = StockUnits::millimeters;
    EXPECT_EQ(run([&](WindowRef window) {
                  type(window, kLengthField, "900");
                  clickOK(window);
                  EXPECT_EQ(notices, std::vector<std::string>{"The printer cannot use paper of this size."});
                  EXPECT_TRUE(IsWindowVisible(window));
                  EXPECT_EQ(shown(window), "200.0 x 300.0") << "the last that was right";
                  ControlRef focused = nullptr;
                  GetKeyboardFocus(window, &focused);
                  EXPECT_EQ(focused, control(window, kLengthField));

                  type(window, kWidthField, "");
                  clickOK(window);
                  EXPECT_EQ(notices.size(), 2u) << "no width is a width of 0";
                  type(window, kLengthField, "482.6");
                  clickOK(window);
              }),
              kCustomStockSizeOK);
    EXPECT_EQ(notices.size(), 2u);
    EXPECT_EQ(width, 20000);
    EXPECT_EQ(length, 48260);
}

TEST_F(CustomStockSizeTest, AStoredSizeBeyondThePrinterIsShownAndRefused) {
    const StockPrinter printer;
    width = 100;
    length = 500000;
    EXPECT_EQ(run([&](WindowRef window) {
                  EXPECT_EQ(shown(window), "0.03 x 196.85");
                  clickOK(window);
                  EXPECT_EQ(notices.size(), 1u);
                  EXPECT_EQ(shown(window), "4.00 x 19.00") << "the nearest one";
                  clickOK(window);
              }),
              kCustomStockSizeOK);
    EXPECT_EQ(notices.size(), 1u);
    EXPECT_EQ(width, 10160);
    EXPECT_EQ(length, 48260);
}

TEST_F(CustomStockSizeTest, DefaultsAreTheCountrys) {
    const StockPrinter printer;
    live("de_DE");
    gCurrentUnits = StockUnits::inches;
    width = 15240;
    length = 20320;
    EXPECT_EQ(run([](WindowRef window) {
                  EXPECT_EQ(shown(window), "6,00 x 8,00") << "the units that were chosen before";
                  type(window, kWidthField, "99");
                  click(control(window, kDefaults));
                  EXPECT_EQ(value(window, kUnits), 2);
                  EXPECT_EQ(shown(window), "210,0 x 297,0");
                  EXPECT_EQ(title(window, kLengthUnits), "mm");
                  clickOK(window);
              }),
              kCustomStockSizeOK);
    EXPECT_EQ(width, 21000);
    EXPECT_EQ(length, 29700);
}

/// The ends of what is painted white on a line of pixels, outline included.
std::pair<int, int> extent(const QImage& image, QPoint from, QPoint step, int count) {
    std::pair<int, int> ends{count, -1};
    for (int i = 0; i < count; ++i) {
        const QColor color = image.pixelColor(from + step * i);
        if (color == Qt::white || color == Qt::black) {
            ends = {std::min(ends.first, i), std::max(ends.second, i)};
        }
    }
    return ends;
}

TEST_F(CustomStockSizeTest, ThePreviewIsThePapersShape) {
    const StockPrinter printer;
    width = 24130;   // half of the longest paper
    length = 48260;  // that one itself
    run([&](WindowRef window) {
        const QImage image = snapshot(window);
        Rect pane{};
        GetControlBounds(control(window, kPreview), &pane);
        const int side = pane.right - pane.left;
        EXPECT_EQ(side, pane.bottom - pane.top) << "one scale for both sides";
        const QPoint middle(pane.left + side / 2, pane.top + side / 2);
        EXPECT_EQ(extent(image, {pane.left, middle.y()}, {1, 0}, side), std::pair(side / 4, side * 3 / 4 - 1));
        EXPECT_EQ(extent(image, {middle.x(), pane.top}, {0, 1}, side), std::pair(0, side - 1));
        // A new value is a new shape at once.
        type(window, kLengthField, "9.5");
        const QImage shorter = snapshot(window);
        EXPECT_EQ(extent(shorter, {middle.x(), pane.top}, {0, 1}, side), std::pair(side / 4, side * 3 / 4 - 1));
        clickCancel(window);
    });
}

TEST_F(CustomStockSizeTest, APrinterWithoutCustomSizesHasLimitsAllTheSame) {
    const StockPrinter printer(
        ppdWithout({"*VariablePaperSize", "*MaxMedia", "*CustomPageSize", "*ParamCustomPageSize", "*NonUIOrder"}));
    EXPECT_EQ(run([](WindowRef window) {
                  EXPECT_EQ(GetControl32BitMinimum(control(window, kWidth)), 600);
                  EXPECT_EQ(GetControl32BitMaximum(control(window, kLength)), 1200);
                  EXPECT_EQ(shown(window), "8.50 x 11.00");
                  clickOK(window);
              }),
              kCustomStockSizeOK);
}

TEST_F(CustomStockSizeTest, WithoutAPlaceForTheAnswerNothingIsShown) {
    SInt16 result = 0;
    EXPECT_EQ(RunModalCustomStockSizeDialog(nullptr, &result, &width, &length), paramErr);
    EXPECT_EQ(RunModalCustomStockSizeDialog(plugin.bundle(), nullptr, &width, &length), paramErr);
    EXPECT_EQ(RunModalCustomStockSizeDialog(plugin.bundle(), &result, nullptr, &length), paramErr);
    EXPECT_EQ(RunModalCustomStockSizeDialog(plugin.bundle(), &result, &width, nullptr), paramErr);
    TestBundle empty("com.example.empty");
    EXPECT_EQ(RunModalCustomStockSizeDialog(empty.bundle(), &result, &width, &length), kNibNotFoundErr);
    EXPECT_EQ(result, kCustomStockSizeCancel);
}

}  // namespace
