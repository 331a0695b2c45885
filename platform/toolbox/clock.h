// Clock controls: a field of a time of day (QTimeEdit) or of a date and time (QDateTimeEdit), written as the user's
// locale writes them.
#pragma once

#include "platform/toolbox/Controls.h"

class QDateTimeEdit;

/// Makes the clock show civil time, which has every hour of every day.
void prepareClock(QDateTimeEdit* clock);
/// The moment that it shows; a time of day keeps the date that it was given.
LongDateRec clockDate(const QDateTimeEdit& clock);
/// False, and no change, for a date that is none or lies outside of what the clock can show.
bool setClockDate(QDateTimeEdit* clock, const LongDateRec& date);
