// What a job waits for at the printer or in its queue, as the print settings ticket says it.
#pragma once

#include "platform/foundation/DateTimeUtils.h"
#include "platform/printing/PMTicket.h"

#include <ctime>
#include <optional>
#include <string>

/// The passcode of a secure print job, as it stands there, not checked, empty when it is missing; nothing for other
/// jobs.
std::optional<std::string> readPasscode(PMTicketRef printSettings);

struct PrintTime {
    LongDateTime moment;  // after now, at most a day: a queue waits for a time of day
    bool isAsAsked;       // else the next such time of day, midnight when the ticket has no time
};

/// When a delayed job is printed; nothing for other jobs.
std::optional<PrintTime> readPrintTime(PMTicketRef printSettings, LongDateTime now);

/// "HH:MM" in UTC of a moment in the user's time zone, with the zone's offset on that day, seconds rounded up. A queue
/// waits for the next such time, so a moment that has begun, or begins while the job is on its way, becomes the next
/// minute. The hours of one that is 24 hours ahead or more (a day on which clocks are set back has 25) are counted on
/// from the UTC day of now: 42:30.
std::string holdUntil(LongDateTime moment, std::time_t now);

/// "HH:MM" of the moment.
std::string timeOfDay(LongDateTime moment);
