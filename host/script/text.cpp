#include "host/script/text.h"

#include <array>

std::string utf8(CFStringRef string) {
    const CFIndex length = CFStringGetLength(string);
    if (length == 0) {
        return {};
    }
    // A UTF-16 unit takes at most three bytes.
    std::string text(static_cast<std::size_t>(length) * 3 + 1, '\0');
    CFStringGetCString(string, text.data(), static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8);
    text.resize(text.find('\0'));
    return text;
}

CFRef<CFStringRef> cfString(const std::string& text) {
    return CFRef<CFStringRef>::adopt(CFStringCreateWithFileSystemRepresentation(nullptr, text.c_str()));
}

std::string readable(const std::string& text) {
    return utf8(cfString(text).get());
}

CFRef<CFURLRef> fileURL(const std::string& path, bool isFolder) {
    return CFRef<CFURLRef>::adopt(CFURLCreateFromFileSystemRepresentation(
        nullptr, reinterpret_cast<const UInt8*>(path.data()), static_cast<CFIndex>(path.size()), isFolder));
}

std::string pathOf(CFURLRef url) {
    std::array<UInt8, 4096> path{};
    CFURLGetFileSystemRepresentation(url, true, path.data(), static_cast<CFIndex>(path.size()));
    return reinterpret_cast<const char*>(path.data());
}

std::string quoted(const std::string& text) {
    // character, its letter after the backslash
    static constexpr std::array<std::pair<char, char>, 5> kEscapes{
        {{'"', '"'}, {'\\', '\\'}, {'\n', 'n'}, {'\t', 't'}, {'\b', 'b'}}};
    std::string result = "\"";
    for (const char c : text) {
        char letter = '\0';
        for (const auto& [character, escape] : kEscapes) {
            letter = c == character ? escape : letter;
        }
        if (letter != '\0') {
            result += '\\';
            result += letter;
        } else {
            result += c;
        }
    }
    return result + '"';
}
