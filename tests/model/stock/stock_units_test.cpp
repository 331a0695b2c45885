// Sizes and shifts between what is kept and what is shown, over all that a printer can take, against whole-number
// arithmetic.

#include "model/stock/stock_units.h"
#include "model/records/tab_shift.h"
#include "model/settings/ticket_access.h"

#include "platform/foundation/CFString.h"

#include <gtest/gtest.h>
#include <cstdlib>
#include <limits>

namespace {

constexpr auto kInches = StockUnits::inches;
constexpr auto kMillimeters = StockUnits::millimeters;

/// value × 0.3937007874, rounded.
SInt32 TimesInchesPerTenth(std::int64_t value) {
    return static_cast<SInt32>((value * 3937007874 + 5'000'000'000) / 10'000'000'000);
}

TEST(StockUnits, EveryHundredthOfAnInchIsKeptAndShownAgain) {
    for (SInt32 shown = 0; shown <= 2000; ++shown) {
        const SInt32 stored = StoredFromDisplayed(kInches, shown);
        ASSERT_EQ(stored, (shown * 254 + 5) / 10) << shown;
        ASSERT_EQ(DisplayedFromStored(kInches, stored), shown);
        ASSERT_EQ(DisplayedFromOtherUnits(kMillimeters, shown), (shown * 254 + 50) / 100) << shown;
    }
}

TEST(StockUnits, EveryTenthOfAMillimeterIsKeptAndShownAgain) {
    for (SInt32 shown = 0; shown <= 5080; ++shown) {
        const SInt32 stored = StoredFromDisplayed(kMillimeters, shown);
        ASSERT_EQ(stored, shown * 10);
        ASSERT_EQ(DisplayedFromStored(kMillimeters, stored), shown);
        ASSERT_EQ(DisplayedFromOtherUnits(kInches, shown), TimesInchesPerTenth(shown)) << shown;
    }
}

TEST(StockUnits, WhatLiesBetweenTwoShownValuesIsCut) {
    for (SInt32 stored = 0; stored <= 50800; ++stored) {
        ASSERT_EQ(DisplayedFromStored(kInches, stored), TimesInchesPerTenth(stored) / 10) << stored;
        ASSERT_EQ(DisplayedFromStored(kMillimeters, stored), stored / 10) << stored;
    }
    EXPECT_EQ(DisplayedFromStored(kInches, 21000), 826);
    // A ticket may hold anything.
    EXPECT_LT(DisplayedFromStored(kInches, std::numeric_limits<SInt32>::min()), 0);
    EXPECT_GT(StoredFromDisplayed(kInches, std::numeric_limits<SInt32>::max()), 0);
    EXPECT_GT(StoredFromDisplayed(kMillimeters, std::numeric_limits<SInt32>::max()), 0);
}

TEST(StockUnits, LimitsInPointsAreRounded) {
    for (int points = 0; points <= 1440; ++points) {
        ASSERT_EQ(DisplayedFromPoints(kInches, static_cast<float>(points)), (points * 200 + 72) / 144) << points;
        ASSERT_EQ(DisplayedFromPoints(kMillimeters, static_cast<float>(points)), (points * 508 + 72) / 144) << points;
    }
    EXPECT_EQ(DisplayedFromPoints(kInches, 1e30F), std::numeric_limits<SInt32>::max());
}

TEST(StockUnits, OnlyTheUnitedStatesStartWithInches) {
    const StockSizeDefaults us = StockSizeDefaultsOf(CFSTR("U.S."));
    EXPECT_EQ(us.units, kInches);
    EXPECT_EQ(DisplayedFromStored(kInches, us.width), 850);
    EXPECT_EQ(DisplayedFromStored(kInches, us.length), 1100);
    for (const CFStringRef other : {CFSTR("U.K."), CFSTR("Metric"), CFSTR("")}) {
        const StockSizeDefaults defaults = StockSizeDefaultsOf(other);
        EXPECT_EQ(defaults.units, kMillimeters);
        EXPECT_EQ(DisplayedFromStored(kMillimeters, defaults.width), 2100);
        EXPECT_EQ(DisplayedFromStored(kMillimeters, defaults.length), 2970);
    }
}

TEST(TabShift, EveryShiftStaysItself) {
    for (SInt32 tenths = 0; tenths <= MaximumTabShift(kInches); ++tenths) {
        ASSERT_EQ(TabShiftFromMillimeters(kInches, MillimetersFromTabShift(kInches, tenths)), tenths);
    }
    for (SInt32 millimeters = 0; millimeters <= MaximumTabShift(kMillimeters); ++millimeters) {
        const SInt32 tenths = TabShiftFromMillimeters(kInches, millimeters);
        ASSERT_GE(tenths, 0);
        ASSERT_LE(tenths, MaximumTabShift(kInches));
        // The nearest tenth, where an inch counts as 25 millimetres.
        ASSERT_LE(std::abs(tenths * 25 - millimeters * 10), 13) << millimeters;
        ASSERT_EQ(TabShiftFromMillimeters(kInches, -millimeters), -tenths) << "the same on both sides";
        ASSERT_EQ(MillimetersFromTabShift(kMillimeters, TabShiftFromMillimeters(kMillimeters, millimeters)),
                  millimeters);
    }
    EXPECT_EQ(TabShiftFromMillimeters(kInches, 13), 5);
    EXPECT_EQ(MillimetersFromTabShift(kInches, 5), 13);
}

TEST(TabShift, BothPresetsAreThirteenMillimeters) {
    _IS_Options options{};
    ImageShiftInitialize(nullptr, nullptr, &options);
    EXPECT_EQ(TabShiftChoiceOf(options, kInches), TabShiftChoice::none);
    for (const TabShiftChoice preset : {TabShiftChoice::halfInch, TabShiftChoice::thirteenMillimeters}) {
        SetTabShift(&options, preset, 40);
        EXPECT_EQ(options.option, 1);
        EXPECT_EQ(options.inches, 0);
        EXPECT_EQ(options.x1, 13);
        EXPECT_EQ(options.x2, 13);
        EXPECT_EQ(TabShiftChoiceOf(options, kInches), TabShiftChoice::halfInch);
        EXPECT_EQ(TabShiftChoiceOf(options, kMillimeters), TabShiftChoice::thirteenMillimeters);
    }
    SetTabShift(&options, TabShiftChoice::custom, 40);
    EXPECT_EQ(options.x1, 40);
    EXPECT_EQ(options.x2, 40);
    EXPECT_EQ(TabShiftChoiceOf(options, kInches), TabShiftChoice::custom);
    SetTabShift(&options, TabShiftChoice::none, 40);
    EXPECT_EQ(options.option, kTicketValueUnset);
    EXPECT_FALSE(ImageShiftCreateTicketFromOptions(&options, JobContext::exception)) << "no shift leaves no trace";
}

}  // namespace
