#include "model/settings/setting_map.h"

#include "tests/platform/printing/printing_fixture.h"

#include <gtest/gtest.h>

namespace {

TEST(SettingMap, ItemsCountFromOneInTheOrderOfTheRows) {
    EXPECT_EQ(CountMaps(JobTypeMap), 7);
    EXPECT_EQ(UIToTicket(JobTypeMap, 1), 1);
    EXPECT_EQ(UIToTicket(JobTypeMap, 4), 8) << "the sample set stands before the delayed print";
    EXPECT_EQ(UIToTicket(JobTypeMap, 5), 7);
    for (SInt32 item = 1; item <= CountMaps(JobTypeMap); ++item) {
        EXPECT_EQ(TicketToUI(JobTypeMap, UIToTicket(JobTypeMap, item)), item);
    }
    EXPECT_EQ(TicketToUI(JobTypeMap, 2), -1);
    EXPECT_EQ(text(LocalizedKeyForTicketValue(JobTypeMap, 8)), "SampleSet");
    EXPECT_EQ(LocalizedKeyForTicketValue(JobTypeMap, 2), nullptr);
}

TEST(SettingMap, ARowOfValueZeroStandsForEveryValueNotFoundBeforeIt) {
    constexpr SettingMap map[] = {{"One", 1, 0}, {"Zero", 0, 0}, {"Two", 2, 0}, {}};
    EXPECT_EQ(TicketToUI(map, 1), 1);
    EXPECT_EQ(TicketToUI(map, 2), 2);
    EXPECT_EQ(TicketToUI(map, 99), 2);
    EXPECT_EQ(text(LocalizedKeyForTicketValue(map, 2)), "Zero");
}

TEST(SettingMap, AnEmptyMapHasNoRows) {
    constexpr SettingMap map[] = {{}};
    EXPECT_EQ(CountMaps(map), 0);
    EXPECT_EQ(TicketToUI(map, 0), -1);
    EXPECT_EQ(LocalizedKeyForTicketValue(map, 1), nullptr);
}

}  // namespace
