#include "platform/printing/text.h"

#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "platform/foundation/terminal_text.h"

#include <climits>

std::string utf8Text(CFStringRef string) {
    constexpr CFIndex kMostBytesPerUnit = 3;
    std::string bytes(static_cast<std::size_t>(CFStringGetLength(string) * kMostBytesPerUnit + 1), '\0');
    if (string == nullptr ||
        !CFStringGetCString(string, bytes.data(), static_cast<CFIndex>(bytes.size()), kCFStringEncodingUTF8)) {
        return {};
    }
    bytes.resize(bytes.find('\0'));
    return bytes;
}

CFRef<CFStringRef> makeString(std::string_view bytes) {
    return CFRef<CFStringRef>::adopt(CFStringCreateWithFileSystemRepresentation(nullptr, std::string(bytes).c_str()));
}

CFRef<CFURLRef> makeFileURL(const std::string& path) {
    return CFRef<CFURLRef>::adopt(CFURLCreateFromFileSystemRepresentation(
        nullptr, reinterpret_cast<const UInt8*>(path.data()), static_cast<CFIndex>(path.size()), false));
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
    text = terminalText(utf8Text(makeString(text).get()));  // a file need not be called in UTF-8
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}
