#include "host/job/stored_mark.h"

#include "host/settings/dictionary_values.h"
#include "platform/files/folders.h"
#include "platform/files/plain_file.h"
#include "platform/files/url_access.h"
#include "platform/foundation/CFPropertyList.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

CFRef<CFTypeRef> readStore(CFStringRef store, std::string* reason) {
    FSRef folder{};
    if (FSFindFolder(kUserDomain, kApplicationSupportFolderType, false, &folder) != noErr) {
        *reason = "is not stored";
        return {};
    }
    CFDataRef bytes = nullptr;
    SInt32 error = 0;
    const auto file = fileURL(folder.path + ("/Tavro/" + utf8(store)));
    if (!CFURLCreateDataAndPropertiesFromResource(nullptr, file.get(), &bytes, nullptr, nullptr, &error)) {
        *reason = error == ENOENT ? "is not stored" : utf8(store) + ": " + readFault(error, kMaximumFileBytes);
        return {};
    }
    const auto data = CFRef<CFDataRef>::adopt(bytes);
    CFStringRef fault = nullptr;
    auto root =
        CFRef<CFTypeRef>::adopt(CFPropertyListCreateFromXMLData(nullptr, data.get(), kCFPropertyListImmutable, &fault));
    const auto faultOwner = CFRef<CFStringRef>::adopt(fault);
    if (!root) {
        *reason = utf8(store) + ": " + utf8(fault);
    }
    return root;
}

CFDictionaryRef asDictionary(CFTypeRef object) {
    return CFGetTypeID(object) == CFDictionaryGetTypeID() ? static_cast<CFDictionaryRef>(object) : nullptr;
}

/// The font's colour, laid on white by its alpha. The editor has taken the density into account: it lightens the colour
/// that the user chose, which the record keeps too, and stores the result as the font's.
MarkColor colorIn(CFDictionaryRef record) {
    const auto number = [record](CFStringRef key, double fallback) {
        return std::clamp(numberIn(record, key).value_or(fallback), 0.0, 1.0);
    };
    const double alpha = number(CFSTR("fontColorAlpha"), 1);
    const auto onWhite = [&](CFStringRef key) { return 1 - alpha * (1 - number(key, 0.75)); };
    return {onWhite(CFSTR("fontColorRed")), onWhite(CFSTR("fontColorGreen")), onWhite(CFSTR("fontColorBlue"))};
}

}  // namespace

std::optional<StoredMark> readStoredMark(CFStringRef store, const std::string& name, std::string* reason) {
    const auto root = readStore(store, reason);
    if (!root) {
        return std::nullopt;
    }
    const auto record = asDictionary(CFDictionaryGetValue(asDictionary(root.get()), cfString(name).get()));
    if (record == nullptr) {
        *reason = "is not stored";
        return std::nullopt;
    }
    const auto number = [record](CFStringRef key, double least, double most, double fallback) {
        return std::clamp(numberIn(record, key).value_or(fallback), least, most);
    };
    constexpr double kFarthest = 5000;
    // A picture is stored by its file's name, and may hold a text that is not to be seen.
    std::string text = stringIn(record, CFSTR("textString"));
    if (name != text && name == stringIn(record, CFSTR("filename"))) {
        text.clear();
    }
    return StoredMark{std::move(text),
                      stringIn(record, CFSTR("filePath")),
                      stringIn(record, CFSTR("fontName")),
                      colorIn(record),
                      number(CFSTR("fontSize"), 1, 1000, 72),
                      number(CFSTR("angle"), -360, 360, 0),
                      number(CFSTR("density"), 0, 100, 100),
                      number(CFSTR("scale"), 1, 1000, 100),
                      number(CFSTR("xOffset"), -kFarthest, kFarthest, 0),
                      number(CFSTR("yOffset"), -kFarthest, kFarthest, 0)};
}

std::optional<std::string> readStoredFont(CFStringRef store, const std::string& name, std::string* reason) {
    const auto root = readStore(store, reason);
    if (!root) {
        return std::nullopt;
    }
    const void* const stored = CFDictionaryGetValue(asDictionary(root.get()), cfString(name).get());
    if (CFGetTypeID(stored) != CFDataGetTypeID()) {
        *reason = "its font " + name + " is not stored";
        return std::nullopt;
    }
    const auto* const data = static_cast<CFDataRef>(stored);
    return std::string(reinterpret_cast<const char*>(CFDataGetBytePtr(data)),
                       static_cast<std::size_t>(CFDataGetLength(data)));
}
