// Lists of numbers between the user's notation and plain ASCII.

#include "platform/foundation/CFNumberFormatter.h"

#include "platform/foundation/objects.h"

#include <QLocale>

namespace {

bool isComma(char32_t c) {
    switch (c) {
        case U',':
        case U'\u060C':  // Arabic
        case U'\u3001':  // ideographic
        case U'\uFE50':  // small
        case U'\uFE51':  // small ideographic
        case U'\uFF0C':  // full width
        case U'\uFF64':  // half width ideographic
            return true;
        default:
            return false;
    }
}

bool isDash(char32_t c) {
    switch (c) {
        case U'\u2212':  // minus
        case U'\uFF5E':  // full width tilde, which stands between numbers where Chinese and Japanese are written
        case U'\u30FC':  // long vowel, which Japanese keyboards type for a dash
            return true;
        default:
            return QChar::category(c) == QChar::Punctuation_Dash;
    }
}

/// Controls part numbers, direction marks and their like do not.
bool isBlank(char32_t c) {
    return QChar::isSpace(c) || QChar::category(c) == QChar::Other_Control;
}

/// Puts the list together again, without the blanks and commas that part nothing.
class PlainList {
public:
    void add(char32_t c) {
        if (isBlank(c)) {
            blank_ = true;
        } else if (isComma(c)) {
            comma_ = true;
        } else if (QChar::category(c) != QChar::Other_Format) {
            addSign(c);
        }
    }
    const QString& text() const { return text_; }

private:
    static bool isPlainDigit(QChar c) { return c >= u'0' && c <= u'9'; }

    void addSign(char32_t c) {
        const bool isDigit = QChar::category(c) == QChar::Number_DecimalDigit;
        const bool partsNumbers = blank_ && isDigit && !text_.isEmpty() && isPlainDigit(text_.back());
        if ((comma_ || partsNumbers) && !text_.isEmpty()) {
            text_ += u',';
        }
        blank_ = comma_ = false;
        if (isDigit) {
            text_ += QChar(static_cast<char16_t>(u'0' + QChar::digitValue(c)));
        } else if (isDash(c)) {
            text_ += u'-';
        } else {
            text_ += QString::fromUcs4(&c, 1);
        }
    }

    QString text_;
    bool blank_ = false;  // since the last sign
    bool comma_ = false;
};

}  // namespace

CFStringRef CFNumberListCreatePlain(CFAllocatorRef, CFStringRef list) {
    if (list == nullptr) {
        return nullptr;
    }
    PlainList plain;
    for (const uint c : textOf(list).toUcs4()) {
        plain.add(c);
    }
    return makeString(plain.text()).leak();
}

CFStringRef CFNumberListCreateLocalized(CFAllocatorRef, CFStringRef plain) {
    if (plain == nullptr) {
        return nullptr;
    }
    const QLocale locale;
    QString localized;
    for (const QChar c : textOf(plain)) {
        const bool isDigit = c >= u'0' && c <= u'9';
        localized += isDigit ? locale.toString(c.unicode() - u'0') : QString(c);
    }
    return makeString(localized).leak();
}
