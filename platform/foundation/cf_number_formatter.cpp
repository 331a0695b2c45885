#include "platform/foundation/CFNumberFormatter.h"

#include "platform/foundation/CFString.h"
#include "platform/foundation/number_value.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

struct CFLocaleObject final : CFObject {
    static constexpr ObjectKind kKind = ObjectKind::Locale;

    explicit CFLocaleObject(const QLocale& value)
        : CFObject(kKind), locale(value), decimalSeparator(makeString(value.decimalPoint())) {}

    const QLocale locale;
    const CFRef<CFStringRef> decimalSeparator;
};

struct CFNumberFormatterObject final : CFObject {
    static constexpr ObjectKind kKind = ObjectKind::NumberFormatter;

    explicit CFNumberFormatterObject(const QLocale& value) : CFObject(kKind), locale(value) {
        locale.setNumberOptions(QLocale::OmitGroupSeparator);
    }

    QLocale locale;
    int digits = 0;
};

namespace {

CFStringRef measurementSystem(const QLocale& locale) {
    switch (locale.measurementSystem()) {
        case QLocale::ImperialUSSystem:
            return CFSTR("U.S.");
        case QLocale::ImperialUKSystem:
            return CFSTR("U.K.");
        default:
            return CFSTR("Metric");
    }
}

QString format(const CFNumberFormatterObject& formatter, std::int64_t number) {
    // Not by way of a real, which has too few digits for the largest integers.
    QString text = formatter.locale.toString(qlonglong(number));
    if (formatter.digits > 0) {
        text += formatter.locale.decimalPoint() + formatter.locale.zeroDigit().repeated(formatter.digits);
    }
    return text;
}

QString format(const CFNumberFormatterObject& formatter, double number) {
    const auto text = [&](double value) { return formatter.locale.toString(value, 'f', formatter.digits); };
    // What rounds to zero has no sign: nobody wants to read "-0".
    return text(std::fabs(number)) == text(0.0) ? text(0.0) : text(number);
}

QString withoutDirectionMarks(QString text) {
    return text.removeIf([](QChar c) { return c.category() == QChar::Other_Format; });
}

/// The same number in ASCII; nothing for a text with a character that no number has.
std::optional<QByteArray> plainNumber(const QLocale& locale, const QString& localized) {
    QString text = withoutDirectionMarks(localized);
    QByteArray plain;
    for (const QString& minus : {withoutDirectionMarks(locale.negativeSign()), QStringLiteral("-")}) {
        if (plain.isEmpty() && text.startsWith(minus)) {
            text.remove(0, minus.size());
            plain += '-';
        }
    }
    for (const char32_t character : text.toUcs4()) {
        if (const int digit = QChar::digitValue(character);
            digit >= 0 && QChar::category(character) == QChar::Number_DecimalDigit) {
            plain += static_cast<char>('0' + digit);
        } else if (QString::fromUcs4(&character, 1) == locale.decimalPoint()) {
            plain += '.';
        } else {
            return std::nullopt;
        }
    }
    return plain;
}

std::optional<NumberValue> parse(const QByteArray& plain) {
    bool valid = false;
    if (const qlonglong integer = plain.toLongLong(&valid); valid) {
        return std::int64_t{integer};
    }
    const double real = plain.toDouble(&valid);
    return valid ? std::optional<NumberValue>(real) : std::nullopt;
}

}  // namespace

CFLocaleRef CFLocaleCopyCurrent() {
    return new CFLocaleObject(QLocale());
}

CFTypeRef CFLocaleGetValue(CFLocaleRef locale, CFLocaleKey key) {
    const CFLocaleObject* object = checked(locale);
    if (object == nullptr) {
        return nullptr;
    }
    switch (key) {
        case kCFLocaleDecimalSeparator:
            return object->decimalSeparator.get();
        case kCFLocaleMeasurementSystem:
            return measurementSystem(object->locale);
    }
    return nullptr;
}

CFNumberFormatterRef CFNumberFormatterCreate(CFAllocatorRef, CFLocaleRef locale, CFNumberFormatterStyle style) {
    const CFLocaleObject* object = checked(locale);
    return object && style == kCFNumberFormatterDecimalStyle ? new CFNumberFormatterObject(object->locale) : nullptr;
}

void CFNumberFormatterSetFractionDigits(CFNumberFormatterRef formatter, CFIndex digits) {
    if (CFNumberFormatterObject* object = checked(formatter)) {
        object->digits = static_cast<int>(std::clamp<CFIndex>(digits, 0, 15));
    }
}

CFStringRef CFNumberFormatterCreateStringWithValue(CFAllocatorRef, CFNumberFormatterRef formatter, CFNumberType type,
                                                   const void* value) {
    const CFNumberFormatterObject* object = checked(formatter);
    const std::optional<NumberValue> number = numberFromVariable(type, value);
    if (!object || !number) {
        return nullptr;
    }
    return makeString(std::visit([object](auto plain) { return format(*object, plain); }, *number)).leak();
}

Boolean CFNumberFormatterGetValueFromString(CFNumberFormatterRef formatter, CFStringRef string, const CFRange* range,
                                            CFNumberType type, void* value) {
    const CFNumberFormatterObject* object = checked(formatter);
    if (!object || !string) {
        return false;
    }
    const QString text = range ? textOf(string).mid(range->location, range->length) : textOf(string);
    const std::optional<QByteArray> plain = plainNumber(object->locale, text);
    const std::optional<NumberValue> number = plain ? parse(*plain) : std::nullopt;
    if (!number) {
        return false;
    }
    const auto counted = CFRef<CFNumberRef>::adopt(new CFNumberObject(*number));
    return CFNumberGetValue(counted.get(), type, value);
}
