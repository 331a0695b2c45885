#include "host/settings/job_hold.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

constexpr LongDateTime kMinute = 60;
constexpr LongDateTime kHour = 3600;
constexpr LongDateTime kDay = 86400;
constexpr LongDateTime kNoTimeBeyond = 1'000'000'000'000;  // the year 33,000

std::string twoFields(int hours, int minutes) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%02d:%02d", hours, minutes);
    return text.data();
}

}  // namespace

PrintTime findPrintTime(LongDateTime asked, LongDateTime now) {
    if (asked > kNoTimeBeyond || asked < -kNoTimeBeyond) {
        asked = 0;
    }
    if (asked > now && asked <= now + kDay) {
        return PrintTime{asked, true};
    }
    LongDateTime wait = (asked - now) % kDay;
    if (wait <= 0) {
        wait += kDay;
    }
    return PrintTime{now + wait, false};
}

std::string holdUntil(LongDateTime moment, std::time_t now) {
    LongDateRec date{};
    LongSecondsToDate(&moment, &date);
    std::tm fields{};
    fields.tm_year = date.ld.year - 1900;
    fields.tm_mon = date.ld.month - 1;
    fields.tm_mday = date.ld.day;
    fields.tm_hour = date.ld.hour;
    fields.tm_min = date.ld.minute;
    fields.tm_sec = date.ld.second;
    fields.tm_isdst = -1;  // as it is on that day
    const std::time_t time = std::max<std::time_t>(std::mktime(&fields), now + kMinute);
    const std::time_t wholeMinute = (time + kMinute - 1) / kMinute * kMinute;
    const std::time_t sinceMidnight = wholeMinute - now / kDay * kDay;
    const bool isWithinADay = wholeMinute - now < kDay - kMinute;
    const std::time_t told = isWithinADay ? sinceMidnight % kDay : sinceMidnight;
    return twoFields(static_cast<int>(told / kHour), static_cast<int>(told % kHour / kMinute));
}

std::string timeOfDay(LongDateTime moment) {
    LongDateRec date{};
    LongSecondsToDate(&moment, &date);
    return twoFields(date.ld.hour, date.ld.minute);
}
