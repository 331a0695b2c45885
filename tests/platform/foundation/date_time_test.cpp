// Civil seconds: the calendar, days of changing clocks, and numbers from files.

#include "platform/foundation/DateTimeUtils.h"
#include "platform/foundation/wall_clock.h"

#include <gtest/gtest.h>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <optional>
#include <string>

namespace {

constexpr LongDateTime kDay = 86400;

LongDateTime secondsOf(const LongDateRec& date) {
    LongDateTime seconds = 0;
    LongDateToSeconds(&date, &seconds);
    return seconds;
}

std::string textOf(LongDateTime seconds) {
    LongDateRec date{};
    LongSecondsToDate(&seconds, &date);
    const auto& [year, month, day, hour, minute, second] = date.ld;
    char text[64];
    std::snprintf(text, sizeof text, "%d-%02d-%02d %02d:%02d:%02d", year, month, day, hour, minute, second);
    return text;
}

TEST(DateTimeTest, CountsFrom1904) {
    EXPECT_EQ(secondsOf({{1904, 1, 1, 0, 0, 0}}), 0);
    EXPECT_EQ(secondsOf({{1903, 12, 31, 23, 59, 59}}), -1);
    EXPECT_EQ(secondsOf({{1970, 1, 1, 0, 0, 0}}), 2082844800);
    EXPECT_EQ(textOf(0), "1904-01-01 00:00:00");
    EXPECT_EQ(textOf(-1), "1903-12-31 23:59:59");
}

TEST(DateTimeTest, GoesThereAndBack) {
    EXPECT_EQ(textOf(secondsOf({{2040, 2, 6, 6, 28, 16}})), "2040-02-06 06:28:16") << "where 32 bits end";
    EXPECT_EQ(textOf(secondsOf({{2000, 2, 29, 23, 59, 59}}) + 1), "2000-03-01 00:00:00");
    EXPECT_EQ(textOf(secondsOf({{2100, 2, 28, 0, 0, 0}}) + kDay), "2100-03-01 00:00:00") << "no leap year";
    for (LongDateTime moment = -200 * 365 * kDay; moment < 400 * 365 * kDay; moment += 12345678) {
        LongDateRec date{};
        LongSecondsToDate(&moment, &date);
        ASSERT_EQ(secondsOf(date), moment);
    }
}

TEST(DateTimeTest, CarriesOverAndKeepsToItsYears) {
    EXPECT_EQ(textOf(secondsOf({{2026, 14, 0, 25, 90, -1}})), "2027-02-01 02:29:59");
    EXPECT_EQ(textOf(secondsOf({{2026, 0, 1, 0, 0, 0}})), "2025-12-01 00:00:00");
    EXPECT_EQ(textOf(std::numeric_limits<LongDateTime>::max()), "32767-12-31 23:59:59");
    EXPECT_EQ(textOf(std::numeric_limits<LongDateTime>::min()), "-32767-01-01 00:00:00");
    LongDateToSeconds(nullptr, nullptr);
    LongSecondsToDate(nullptr, nullptr);
}

/// The clock of a place where clocks are changed: from 02:00 to 03:00 in spring, from 03:00 to 02:00 in autumn.
class NowTest : public testing::Test {
protected:
    void SetUp() override {
        setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
        tzset();
        setWallClock([] { return now; });
    }
    void TearDown() override {
        setWallClock(nullptr);
        before ? setenv("TZ", before->c_str(), 1) : unsetenv("TZ");
        tzset();
    }

    static LongDateTime at(std::time_t moment) {
        now = moment;
        LongDateTime seconds = 0;
        GetDateTime(&seconds);
        return seconds;
    }

    static inline std::time_t now = 0;
    const std::optional<std::string> before =
        std::getenv("TZ") != nullptr ? std::optional<std::string>(std::getenv("TZ")) : std::nullopt;
};

TEST_F(NowTest, ShowsTheTimeOnTheWall) {
    constexpr std::time_t kSpring = 1774746000;  // 2026-03-29 01:00:00 UTC
    EXPECT_EQ(textOf(at(kSpring - 1)), "2026-03-29 01:59:59");
    EXPECT_EQ(textOf(at(kSpring)), "2026-03-29 03:00:00");
    EXPECT_EQ(at(kSpring + 23 * 3600) - at(kSpring - 3600), kDay + 3600) << "01:00 to 02:00 of the next day";

    constexpr std::time_t kAutumn = 1792890000;  // 2026-10-25 01:00:00 UTC
    EXPECT_EQ(textOf(at(kAutumn - 1)), "2026-10-25 02:59:59");
    EXPECT_EQ(textOf(at(kAutumn)), "2026-10-25 02:00:00");

    EXPECT_EQ(textOf(at(2556144000)), "2051-01-01 01:00:00");
}

/// What a dialog does with a time that is past: the same time tomorrow, whatever happens to the clocks tonight.
TEST_F(NowTest, TheSameTimeTomorrowIsADayLater) {
    const LongDateTime saturdayNoon = at(1774695600);  // 2026-03-28 11:00:00 UTC, the day before the change
    EXPECT_EQ(textOf(saturdayNoon), "2026-03-28 12:00:00");
    const LongDateTime earlier = secondsOf({{2026, 3, 28, 2, 30, 0}});
    ASSERT_LT(earlier, saturdayNoon);
    EXPECT_EQ(textOf(earlier + kDay), "2026-03-29 02:30:00") << "a time that this day does not have is still named";
    EXPECT_EQ(textOf(saturdayNoon + kDay), "2026-03-29 12:00:00");
}

}  // namespace
