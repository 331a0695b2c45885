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

bool hasDigitsOfLocale(const QString& text) {
    return std::ranges::any_of(text, isMeant);
}

QString withDigitsOfLocale(QString text) {
    const QLocale locale;
    if (!hasDigitsOfLocale(text) || locale.zeroDigit() == QChar(kZero)) {
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
