#include "platform/toolbox/clock.h"

#include <QDateTimeEdit>
#include <QSignalBlocker>
#include <QTimeZone>

namespace {

// Qt has renamed both, and Debian's releases have one each.
#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
constexpr auto kUTC = QTimeZone::UTC;
constexpr auto kSetZone = &QDateTimeEdit::setTimeZone;
#else
constexpr auto kUTC = Qt::UTC;
constexpr auto kSetZone = &QDateTimeEdit::setTimeSpec;
#endif

}  // namespace

void prepareClock(QDateTimeEdit* clock) {
    (clock->*kSetZone)(kUTC);
    clock->setWrapping(true);
    // The C locale's short time has seconds, which no other locale shows and nobody sets.
    const QString format = clock->displayFormat().remove(QStringLiteral(":ss"));
    // Where windows run from right to left, Qt turns the order of the parts round, so that 12:00 reads 00:12. Locales
    // have them as they are read.
    clock->setLayoutDirection(Qt::LeftToRight);
    clock->setDisplayFormat(format);
    clock->unsetLayoutDirection();
}

LongDateRec clockDate(const QDateTimeEdit& clock) {
    const QDate date = clock.date();
    const QTime time = clock.time();
    return {{static_cast<SInt16>(date.year()), static_cast<SInt16>(date.month()), static_cast<SInt16>(date.day()),
             static_cast<SInt16>(time.hour()), static_cast<SInt16>(time.minute()), static_cast<SInt16>(time.second())}};
}

bool setClockDate(QDateTimeEdit* clock, const LongDateRec& date) {
    constexpr int kLastYear = 9999;  // of four digits
    const auto& field = date.ld;
    const QDate day(field.year, field.month, field.day);
    const QTime time(field.hour, field.minute, field.second);
    if (!day.isValid() || !time.isValid() || field.year < 1 || field.year > kLastYear) {
        return false;
    }
    const QDateTime moment(day, time, kUTC);
    const QSignalBlocker programmatic(clock);
    clock->setDateTime(moment);
    return clock->dateTime() == moment;
}
