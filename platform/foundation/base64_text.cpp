#include "platform/foundation/base64_text.h"

namespace {

// Without a branch, and so is the loop that calls it: the compiler then looks at many characters at once.
unsigned char isBetween(unsigned char c, unsigned char first, unsigned char last) {
    return static_cast<unsigned char>(c - first) <= last - first;
}

/// 1 or 0.
unsigned char isDigit(unsigned char c) {
    const unsigned char isSign = c == '+';
    const unsigned char isSlash = c == '/';
    return isBetween(c | 0x20, 'a', 'z') | isBetween(c, '0', '9') | isSign | isSlash;
}

}  // namespace

std::optional<Base64Text> Base64Text::of(const QByteArray& text, qsizetype start, qsizetype length) {
    QByteArrayView digits = QByteArrayView(text).sliced(start, length);
    for (int padding = 0; padding < 2 && digits.endsWith('='); ++padding) {
        digits.chop(1);
    }
    unsigned char onlyDigits = 1;
    for (const char c : digits) {
        onlyDigits &= isDigit(c);
    }
    return onlyDigits && length % 4 == 0 ? std::optional(Base64Text(text, start, length)) : std::nullopt;
}
