#include "platform/foundation/text_encoding.h"

#include <QStringConverter>

#include <algorithm>

namespace {

// A byte order mark at the start is a character like any other here.
constexpr auto kFlags = QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom;

std::optional<QString> decodeWith(QStringDecoder decoder, QByteArrayView bytes) {
    QString text = decoder.decode(bytes);
    if (!decoder.isValid() || decoder.hasError()) {
        return std::nullopt;
    }
    return text;
}

bool isAscii(QByteArrayView bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool isBelow(const QString& text, char16_t limit) {
    return std::all_of(text.begin(), text.end(), [limit](QChar c) { return c.unicode() < limit; });
}

}  // namespace

std::optional<QString> decodeText(QByteArrayView bytes, CFStringEncoding encoding) {
    switch (encoding) {
        case kCFStringEncodingASCII:
            return isAscii(bytes) ? std::optional(QString::fromLatin1(bytes)) : std::nullopt;
        case kCFStringEncodingISOLatin1:
            return QString::fromLatin1(bytes);
        case kCFStringEncodingMacRoman:
            // Every byte is a character there; the converter need not be asked for the plain ones.
            return isAscii(bytes) ? QString::fromLatin1(bytes) : decodeWith(QStringDecoder("macintosh", kFlags), bytes);
        case kCFStringEncodingUTF8:
            return decodeWith(QStringDecoder(QStringConverter::Utf8, kFlags), bytes);
        default:
            return std::nullopt;
    }
}

std::optional<QByteArray> encodeText(const QString& text, CFStringEncoding encoding) {
    switch (encoding) {
        case kCFStringEncodingASCII:
            return isBelow(text, 0x80) ? std::optional(text.toLatin1()) : std::nullopt;
        case kCFStringEncodingISOLatin1:
            return isBelow(text, 0x100) ? std::optional(text.toLatin1()) : std::nullopt;
        case kCFStringEncodingMacRoman: {
            if (isBelow(text, 0x80)) {
                return text.toLatin1();
            }
            // The encoder writes '?' for what it lacks and does not always report it, so the way back must agree.
            QStringEncoder encoder("macintosh", kFlags);
            const QByteArray bytes = encoder.encode(text);
            return decodeText(bytes, encoding) == text ? std::optional(bytes) : std::nullopt;
        }
        case kCFStringEncodingUTF8:
            return text.isValidUtf16() ? std::optional(text.toUtf8()) : std::nullopt;
        default:
            return std::nullopt;
    }
}
