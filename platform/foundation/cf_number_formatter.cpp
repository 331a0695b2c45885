#include "platform/foundation/CFNumberFormatter.h"

#include "platform/foundation/objects.h"

#include <QLocale>

#include <algorithm>

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
    int fractionDigits = 0;
};

CFLocaleRef CFLocaleCopyCurrent() {
    return new CFLocaleObject(QLocale());
}

CFNumberFormatterRef CFNumberFormatterCreate(CFAllocatorRef, CFLocaleRef locale, CFNumberFormatterStyle) {
    const CFLocaleObject* object = checked(locale);
    return object ? new CFNumberFormatterObject(object->locale) : nullptr;
}

void CFNumberFormatterSetFractionDigits(CFNumberFormatterRef formatter, CFIndex digits) {
    if (CFNumberFormatterObject* object = checked(formatter)) {
        object->fractionDigits = static_cast<int>(std::clamp(digits, CFIndex{0}, CFIndex{15}));
    }
}

CFStringRef CFNumberFormatterCreateStringWithValue(CFAllocatorRef, CFNumberFormatterRef formatter, CFNumberType type,
                                                   const void* value) {
    const CFNumberFormatterObject* object = checked(formatter);
    const auto number = CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, type, value));
    double real = 0;
    if (!object || !CFNumberGetValue(number.get(), kCFNumberDoubleType, &real)) {
        return nullptr;
    }
    return makeString(object->locale.toString(real, 'f', object->fractionDigits)).leak();
}
