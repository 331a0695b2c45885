// Civil arithmetic: days of the calendar times 86400, plus the seconds of the day.

#include "platform/foundation/DateTimeUtils.h"

#include "platform/foundation/wall_clock.h"

#include <algorithm>
#include <chrono>

namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::local_days;
using std::chrono::local_seconds;
using std::chrono::minutes;
using std::chrono::months;
using std::chrono::seconds;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr local_seconds kEpoch = local_days(year(1904) / 1 / 1);
constexpr LongDateTime kFirst = (local_seconds(local_days(year::min() / 1 / 1)) - kEpoch).count();
constexpr LongDateTime kLast = (local_seconds(local_days(year::max() / 12 / 31) + days(1)) - kEpoch).count() - 1;

std::time_t systemClock() {
    return std::time(nullptr);
}

WallClock wallClock = systemClock;

}  // namespace

void setWallClock(WallClock clock) {
    wallClock = clock != nullptr ? clock : systemClock;
}

void GetDateTime(LongDateTime* result) {
    const std::time_t now = wallClock();
    std::tm shown{};
    localtime_r(&now, &shown);
    const LongDateRec date{{static_cast<SInt16>(shown.tm_year + 1900), static_cast<SInt16>(shown.tm_mon + 1),
                            static_cast<SInt16>(shown.tm_mday), static_cast<SInt16>(shown.tm_hour),
                            static_cast<SInt16>(shown.tm_min), static_cast<SInt16>(shown.tm_sec)}};
    LongDateToSeconds(&date, result);
}

void LongDateToSeconds(const LongDateRec* date, LongDateTime* result) {
    if (date == nullptr || result == nullptr) {
        return;
    }
    const auto& field = date->ld;
    const auto month = year(field.year) / 1 + months(field.month - 1);
    const local_seconds moment =
        local_days(month / 1) + days(field.day - 1) + hours(field.hour) + minutes(field.minute) + seconds(field.second);
    *result = (moment - kEpoch).count();
}

void LongSecondsToDate(const LongDateTime* moment, LongDateRec* date) {
    if (moment == nullptr || date == nullptr) {
        return;
    }
    const local_seconds time = kEpoch + seconds(std::clamp(*moment, kFirst, kLast));
    const local_days day = std::chrono::floor<days>(time);
    const year_month_day calendar(day);
    const std::chrono::hh_mm_ss clock(time - day);
    date->ld = {static_cast<SInt16>(static_cast<int>(calendar.year())),
                static_cast<SInt16>(static_cast<unsigned>(calendar.month())),
                static_cast<SInt16>(static_cast<unsigned>(calendar.day())),
                static_cast<SInt16>(clock.hours().count()),
                static_cast<SInt16>(clock.minutes().count()),
                static_cast<SInt16>(clock.seconds().count())};
}
