// Dates in words.

#include "platform/foundation/DateTimeUtils.h"
#include "platform/foundation/objects.h"

#include <QDate>
#include <QLocale>

CFStringRef LongDateCopyString(const LongDateTime* moment) {
    LongDateRec date{};
    LongSecondsToDate(moment, &date);
    const QDate day(date.ld.year, date.ld.month, date.ld.day);
    return makeString(QLocale::system().toString(day, QLocale::LongFormat)).leak();
}
