// When a delayed job is printed, for the queue that it waits in and for people.
#pragma once

#include "platform/foundation/DateTimeUtils.h"

#include <ctime>
#include <string>

struct PrintTime {
    LongDateTime moment;  // after now, at most a day: a queue waits for a time of day
    bool isAsAsked;       // else the next such time of day, midnight when the ticket has no time
};

/// When a job is printed that asks for that moment.
PrintTime findPrintTime(LongDateTime asked, LongDateTime now);

/// "HH:MM" in UTC of a moment in the user's time zone, with the zone's offset on that day, seconds rounded up. A queue
/// waits for the next such time, so a moment that has begun, or begins while the job is on its way, becomes the next
/// minute. The hours of one that is 24 hours ahead or more (a day on which clocks are set back has 25) are counted on
/// from the UTC day of now: 42:30.
std::string holdUntil(LongDateTime moment, std::time_t now);

/// "HH:MM" of the moment.
std::string timeOfDay(LongDateTime moment);
