#include "platform/foundation/CFNumberFormatter.h"

#include "platform/foundation/number_value.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

struct CFLocaleObject final : CFObject {
    static constexpr ObjectKind kKind = ObjectKind::Locale;

    explicit CFLocaleObject(const QLocale& value) : CFObject(kKind), locale(value) {}

    const QLocale locale;
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

}  // namespace

CFLocaleRef CFLocaleCopyCurrent() {
    return new CFLocaleObject(QLocale());
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
