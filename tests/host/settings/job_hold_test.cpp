// When a delayed job is printed, and how its queue is told.
#include "host/settings/job_hold.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

constexpr LongDateTime kHour = 3600;
constexpr LongDateTime kDay = 86400;

class JobHolds : public testing::Test {
protected:
    ~JobHolds() override {
        unsetenv("TZ");
        tzset();
    }

    static LongDateTime civil(SInt16 year, SInt16 month, SInt16 day, SInt16 hour, SInt16 minute, SInt16 second = 0) {
        const LongDateRec date{{year, month, day, hour, minute, second}};
        LongDateTime moment = 0;
        LongDateToSeconds(&date, &moment);
        return moment;
    }

    /// The queue's time of a moment, told at another one, both on a clock in the zone.
    static std::string held(const char* zone, LongDateTime moment, LongDateTime now) {
        setenv("TZ", zone, 1);
        tzset();
        LongDateRec date{};
        LongSecondsToDate(&now, &date);
        std::tm fields{};
        fields.tm_year = date.ld.year - 1900;
        fields.tm_mon = date.ld.month - 1;
        fields.tm_mday = date.ld.day;
        fields.tm_hour = date.ld.hour;
        fields.tm_min = date.ld.minute;
        fields.tm_sec = date.ld.second;
        fields.tm_isdst = -1;
        return holdUntil(moment, std::mktime(&fields));
    }
};

}  // namespace

TEST_F(JobHolds, ATimeThatIsNotWithinADayBecomesTheNextSuchTimeOfDay) {
    const LongDateTime now = civil(2026, 11, 21, 17, 30);
    const struct {
        LongDateTime asked;
        LongDateTime moment;
        bool isAsAsked;
    } rows[] = {
        {now + 1, now + 1, true},
        {now + kDay, now + kDay, true},
        {now, now + kDay, false},
        {now - 1, now + kDay - 1, false},
        {now - 400 * kDay + kHour, now + kHour, false},
        {now + 3 * kDay - kHour, now + kDay - kHour, false},
        {0, civil(2026, 11, 22, 0, 0), false},
        {-kHour, civil(2026, 11, 21, 23, 0), false},
        {INT64_MAX, civil(2026, 11, 22, 0, 0), false},
        {INT64_MIN, civil(2026, 11, 22, 0, 0), false},
    };
    for (const auto& row : rows) {
        const PrintTime time = findPrintTime(row.asked, now);
        EXPECT_EQ(time.moment, row.moment) << row.asked;
        EXPECT_EQ(time.isAsAsked, row.isAsAsked) << row.asked;
    }
    EXPECT_EQ(timeOfDay(civil(2026, 11, 21, 7, 5, 59)), "07:05");
}

TEST_F(JobHolds, AQueueIsToldInUTC) {
    const LongDateTime noon = civil(2026, 7, 1, 12, 0);
    EXPECT_EQ(held("UTC0", noon + 2 * kHour, noon), "14:00");
    EXPECT_EQ(held("Europe/Berlin", noon + 2 * kHour, noon), "12:00");
    EXPECT_EQ(held("Asia/Kolkata", noon + 2 * kHour, noon), "08:30");
    EXPECT_EQ(held("Pacific/Auckland", noon + 2 * kHour, noon), "02:00");
    // What begins at once, or already has, is the next minute, not tomorrow's; seconds are rounded up.
    EXPECT_EQ(held("UTC0", noon, noon), "12:01");
    EXPECT_EQ(held("UTC0", noon + 30, noon + 29), "12:02");
    EXPECT_EQ(held("UTC0", noon + kHour + 1, noon), "13:01");
    EXPECT_EQ(held("UTC0", noon + kDay - 2 * 60, noon), "11:58");
    EXPECT_EQ(held("UTC0", noon + kDay, noon), "36:00");  // 12:00 would be now
}

TEST_F(JobHolds, AQueueIsToldTheTimeOfTheOtherSideOfAClockChange) {
    const char* const zone = "Europe/Berlin";
    const LongDateTime spring = civil(2026, 3, 28, 20, 0);  // at 2:00 it is 3:00
    EXPECT_EQ(held(zone, civil(2026, 3, 29, 1, 59), spring), "00:59");
    EXPECT_EQ(held(zone, civil(2026, 3, 29, 3, 0), spring), "01:00");
    EXPECT_EQ(held(zone, civil(2026, 3, 29, 8, 0), spring), "06:00");
    const LongDateTime autumn = civil(2026, 10, 24, 20, 0);  // at 3:00 it is 2:00
    EXPECT_EQ(held(zone, civil(2026, 10, 25, 1, 0), autumn), "23:00");
    EXPECT_EQ(held(zone, civil(2026, 10, 25, 8, 0), autumn), "07:00");
    // 24 hours and a half ahead: a queue would take 18:30 for half an hour from now.
    EXPECT_EQ(held(zone, civil(2026, 10, 25, 19, 30), autumn), "42:30");
}
