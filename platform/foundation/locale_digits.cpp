#include "platform/foundation/locale_digits.h"

#include <QLocale>

#include <algorithm>

namespace {

constexpr char16_t kZero = u'\u0660';
constexpr char16_t kDecimalSign = u'\u066B';

bool isMeant(QChar c) {
    return (c.unicode() >= kZero && c.unicode() <= kZero + 9) || c == kDecimalSign;
}

}  // namespace

QString withDigitsOfLocale(QString text) {
    if (std::ranges::none_of(text, isMeant)) {
        return text;
    }
    const QLocale locale;
    if (locale.zeroDigit() == QChar(kZero)) {
        return text;
    }
    QString localized;
    for (const QChar c : text) {
        localized += !isMeant(c)         ? QString(c)
                     : c == kDecimalSign ? locale.decimalPoint()
                                         : locale.toString(c.unicode() - kZero);
    }
    return localized;
}
