// Moments of civil time: what a calendar and a clock on the wall show, without any time zone.
//
// A moment is a number of seconds since midnight of 1 January 1904. Every day has 86400 of them, also the days on which
// clocks are changed: 86400 seconds later is the same time on the next day, always.
#pragma once

#include "platform/foundation/CFBase.h"

/// Seconds since 1 January 1904, 00:00; negative before it.
using LongDateTime = std::int64_t;

/// A moment by the Gregorian calendar, also for the years before it was introduced.
struct LongDateRec {
    struct {
        SInt16 year;
        SInt16 month;  // 1 to 12
        SInt16 day;    // 1 to 31
        SInt16 hour;   // 0 to 23
        SInt16 minute;
        SInt16 second;
    } ld;
};

/// What the clock shows now in the user's time zone.
void GetDateTime(LongDateTime* seconds);

/// Fields outside of their ranges carry over: day 0 is the last of the month before, minute 90 an hour and a half.
void LongDateToSeconds(const LongDateRec* date, LongDateTime* seconds);

/// A moment that no 16-bit year can name becomes the first or the last one that a year can.
void LongSecondsToDate(const LongDateTime* seconds, LongDateRec* date);

/// A new string: the day as the user's locale writes it out, such as "Saturday, 21 November 2026".
CFStringRef LongDateCopyString(const LongDateTime* moment);
