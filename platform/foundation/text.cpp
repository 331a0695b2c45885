#include "platform/foundation/text.h"

#include "platform/foundation/objects.h"
#include "platform/foundation/terminal_text.h"
#include "platform/foundation/text_encoding.h"

#include <algorithm>
#include <bit>
#include <climits>

std::string utf8Text(CFStringRef string) {
    constexpr CFIndex kMostBytesPerUnit = 3;  // of UTF-16
    std::string bytes(static_cast<std::size_t>(CFStringGetLength(string) * kMostBytesPerUnit + 1), '\0');
    if (string == nullptr ||
        !CFStringGetCString(string, bytes.data(), static_cast<CFIndex>(bytes.size()), kCFStringEncodingUTF8)) {
        return {};
    }
    bytes.resize(bytes.find('\0'));
    return bytes;
}

CFRef<CFStringRef> makeString(std::string_view bytes) {
    const QByteArrayView text(bytes.substr(0, bytes.find('\0')));
    if (auto whole = decodeText(text, kCFStringEncodingUTF8)) {
        return makeString(*std::move(whole));
    }
    QString shown;
    for (qsizetype at = 0; at < text.size();) {
        const auto lead = static_cast<UInt8>(text[at]);
        const qsizetype length = std::min<qsizetype>(std::max(std::countl_one(lead), 1), text.size() - at);
        if (const auto character = decodeText(text.sliced(at, length), kCFStringEncodingUTF8)) {
            shown += *character;
            at += length;
        } else {
            // What terminals would obey is left out.
            shown += lead < 0xA0 ? QChar(QChar::ReplacementCharacter) : QChar(lead);
            ++at;
        }
    }
    return makeString(std::move(shown));
}

std::string_view bytesOf(CFDataRef data) {
    return {reinterpret_cast<const char*>(CFDataGetBytePtr(data)), static_cast<std::size_t>(CFDataGetLength(data))};
}

std::string readable(std::string_view text) {
    return utf8Text(makeString(text).get());
}

CFRef<CFURLRef> makeFileURL(const std::string& path, bool isFolder) {
    return CFRef<CFURLRef>::adopt(CFURLCreateFromFileSystemRepresentation(
        nullptr, reinterpret_cast<const UInt8*>(path.data()), static_cast<CFIndex>(path.size()), isFolder));
}

std::string filePath(CFURLRef url) {
    UInt8 path[PATH_MAX];
    if (url == nullptr || !CFURLGetFileSystemRepresentation(url, true, path, sizeof path)) {
        return {};
    }
    return reinterpret_cast<const char*>(path);
}

std::string errorLine(std::string_view subject, std::string_view reason) {
    std::string text(subject);
    text.append(": ").append(reason);
    text = terminalText(readable(text));  // a file need not be called in UTF-8
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}
