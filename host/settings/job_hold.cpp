#include "host/settings/job_hold.h"

#include "host/settings/dictionary_values.h"
#include "host/settings/panel_choices.h"
#include "host/settings/panel_items.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace {

constexpr LongDateTime kMinute = 60;
constexpr LongDateTime kHour = 3600;
constexpr LongDateTime kDay = 86400;
constexpr double kNoTimeBeyond = 1e12;  // the year 33,000

/// Null unless the job is of the type.
CFDictionaryRef jobOfType(PanelChoices::JobType type, PMTicketRef printSettings) {
    CFDictionaryRef item = nullptr;
    PMTicketGetCFDictionary(printSettings, kPMTopLevel, kPMTopLevel, kJobTypeItem, &item);
    return numberIn(item, kJobTypeEntry) == type ? item : nullptr;
}

std::string twoFields(int hours, int minutes) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%02d:%02d", hours, minutes);
    return text.data();
}

}  // namespace

std::optional<std::string> readPasscode(PMTicketRef printSettings) {
    const CFDictionaryRef job = jobOfType(PanelChoices::secureJob, printSettings);
    return job == nullptr ? std::nullopt : std::optional(stringIn(job, CFSTR("SecurePrintPassword")));
}

std::optional<PrintTime> readPrintTime(PMTicketRef printSettings, LongDateTime now) {
    const CFDictionaryRef job = jobOfType(PanelChoices::delayedJob, printSettings);
    if (job == nullptr) {
        return std::nullopt;
    }
    const double stored = numberIn(job, CFSTR("DelayedPrintTime")).value_or(0);
    const LongDateTime asked = std::abs(stored) < kNoTimeBeyond ? static_cast<LongDateTime>(stored) : 0;
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
