#include "platform/printing/settings_option.h"

#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/message.h"

#include <QByteArray>

#include <algorithm>

#include <zlib.h>

namespace {

constexpr std::string_view kVersion = "1.";
constexpr auto kAlphabet = QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals;

/// Ends what zlib has begun.
struct Inflater {
    Inflater() { isReady = inflateInit(&stream) == Z_OK; }
    ~Inflater() { inflateEnd(&stream); }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    z_stream stream{};
    bool isReady = false;
};

/// Null for what is damaged, cut off, followed by something else, or larger than settings are.
CFRef<CFDataRef> inflated(const QByteArray& packed) {
    Inflater inflater;
    z_stream& stream = inflater.stream;
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    const auto data = CFRef<CFMutableDataRef>::adopt(CFDataCreateMutable(nullptr, 0));
    Bytef bytes[16384];
    int status = Z_OK;
    while (inflater.isReady && status == Z_OK && stream.total_out <= kMostSettingsBytes) {
        stream.next_out = bytes;
        stream.avail_out = sizeof bytes;
        status = inflate(&stream, Z_NO_FLUSH);
        CFDataAppendBytes(data.get(), bytes, static_cast<CFIndex>(sizeof bytes - stream.avail_out));
    }
    const bool isWhole = status == Z_STREAM_END && stream.avail_in == 0 && stream.total_out <= kMostSettingsBytes;
    return isWhole ? CFRef<CFDataRef>::retain(data.get()) : CFRef<CFDataRef>();
}

bool isVersion(std::string_view text) {
    const std::string_view digits = text.substr(0, text.find('.'));
    return !digits.empty() && digits.size() < text.size() &&
           std::ranges::all_of(digits, [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

std::optional<std::string> packSettings(CFDictionaryRef settings, std::string* reason) {
    const auto data = CFRef<CFDataRef>::adopt(CFPropertyListCreateXMLData(nullptr, settings));
    if (!data) {
        *reason = messageText("have something that cannot be written");
        return std::nullopt;
    }
    uLongf size = compressBound(static_cast<uLong>(CFDataGetLength(data.get())));
    QByteArray packed(static_cast<qsizetype>(size), '\0');
    if (compress2(reinterpret_cast<Bytef*>(packed.data()), &size, CFDataGetBytePtr(data.get()),
                  static_cast<uLong>(CFDataGetLength(data.get())), Z_BEST_COMPRESSION) != Z_OK) {
        *reason = messageText("cannot be compressed");
        return std::nullopt;
    }
    packed.truncate(static_cast<qsizetype>(size));
    std::string text = std::string(kVersion) + packed.toBase64(kAlphabet).toStdString();
    if (text.size() > kMostSettingsText || CFDataGetLength(data.get()) > static_cast<CFIndex>(kMostSettingsBytes)) {
        *reason = messageText("take %1 characters, and the print server takes no more than %2",
                              {text.size(), kMostSettingsText});
        return std::nullopt;
    }
    return text;
}

CFRef<CFDictionaryRef> unpackSettings(std::string_view text, std::string* reason) {
    if (text.size() > kMostSettingsText) {
        *reason = messageText("are too long");
        return {};
    }
    if (!text.starts_with(kVersion)) {
        *reason =
            isVersion(text) ? messageText("were made by a newer version of this program") : messageText("are damaged");
        return {};
    }
    text.remove_prefix(kVersion.size());
    const auto packed = QByteArray::fromBase64Encoding(QByteArray(text.data(), static_cast<qsizetype>(text.size())),
                                                       kAlphabet | QByteArray::AbortOnBase64DecodingErrors);
    const auto data = packed ? inflated(packed.decoded) : CFRef<CFDataRef>();
    const auto root = data ? CFRef<CFTypeRef>::adopt(CFPropertyListCreateFromXMLData(nullptr, data.get(),
                                                                                     kCFPropertyListImmutable, nullptr))
                           : CFRef<CFTypeRef>();
    if (!root || CFGetTypeID(root.get()) != CFDictionaryGetTypeID()) {
        *reason = messageText("are damaged");
        return {};
    }
    return CFRef<CFDictionaryRef>::retain(static_cast<CFDictionaryRef>(root.get()));
}
