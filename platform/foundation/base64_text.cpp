#include "platform/foundation/base64_text.h"

namespace {

// Written without a branch, so that the compiler can look at many characters at once.
bool isBlank(char c) {
    return (c == ' ') | (c == '\t') | (c == '\n') | (c == '\r');
}

bool isDigit(char c) {
    const auto isBetween = [](unsigned char character, unsigned char first, unsigned char last) {
        return static_cast<unsigned char>(character - first) <= last - first;
    };
    const auto byte = static_cast<unsigned char>(c);
    return isBetween(byte | 0x20, 'a', 'z') | isBetween(byte, '0', '9') | (c == '+') | (c == '/');
}

}  // namespace

std::optional<Base64Text> Base64Text::of(const QByteArray& text, qsizetype start, qsizetype length) {
    QByteArrayView digits = QByteArrayView(text).sliced(start, length);
    while (!digits.isEmpty() && isBlank(digits.back())) {
        digits.chop(1);
    }
    qsizetype padding = 0;
    while (padding < 2 && digits.endsWith('=')) {
        digits.chop(1);
        ++padding;
    }
    qsizetype known = 0;
    qsizetype blanks = 0;
    for (const char c : digits) {
        known += isDigit(c);
        blanks += isBlank(c);
    }
    if (known + blanks != digits.size() || (known + padding) % 4 != 0) {
        return std::nullopt;
    }
    return Base64Text(text, start, length);
}

QByteArray Base64Text::decoded() const {
    return decodeBase64(view().toByteArray()).value_or(QByteArray());
}

std::optional<QByteArray> decodeBase64(QByteArray text) {
    text.removeIf(isBlank);
    auto decoded = QByteArray::fromBase64Encoding(std::move(text), QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? std::optional(std::move(*decoded)) : std::nullopt;
}
