#include "host/dialog/window_place.h"

#include "platform/files/folders.h"
#include "platform/files/url_access.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/text.h"

#include <optional>

namespace {

#define kLeftKey CFSTR("PrintDialogLeft")
#define kTopKey CFSTR("PrintDialogTop")
#define kWidthKey CFSTR("PrintDialogWidth")
#define kHeightKey CFSTR("PrintDialogHeight")
#define kPreviewKey CFSTR("PrintDialogPreview")

CFRef<CFURLRef> preferencesFile(bool makeFolder) {
    FSRef folder{};
    if (FSFindFolder(kUserDomain, kPreferencesFolderType, makeFolder, &folder) != noErr) {
        return nullptr;
    }
    return makeFileURL(std::string(folder.path) + "/com.tavro.print.dialog.plist");
}

std::optional<SInt16> number(CFDictionaryRef dictionary, CFStringRef key) {
    const CFTypeRef item = CFDictionaryGetValue(dictionary, key);
    SInt16 value = 0;
    if (CFGetTypeID(item) != CFNumberGetTypeID() ||
        !CFNumberGetValue(static_cast<CFNumberRef>(item), kCFNumberSInt16Type, &value)) {
        return std::nullopt;
    }
    return value;
}

void setNumber(CFMutableDictionaryRef dictionary, CFStringRef key, SInt16 value) {
    CFDictionarySetValue(dictionary, key,
                         CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberSInt16Type, &value)).get());
}

}  // namespace

WindowPlace rememberedPlace(WindowRef window) {
    WindowPlace remembered;
    const auto file = preferencesFile(false);
    CFDataRef bytes = nullptr;
    SInt32 error = 0;
    if (!file || !CFURLCreateDataAndPropertiesFromResource(nullptr, file.get(), &bytes, nullptr, nullptr, &error)) {
        return remembered;
    }
    const auto data = CFRef<CFDataRef>::adopt(bytes);
    const auto root = CFRef<CFTypeRef>::adopt(
        CFPropertyListCreateFromXMLData(nullptr, data.get(), kCFPropertyListImmutable, nullptr));
    Rect bounds{};
    if (CFGetTypeID(root.get()) != CFDictionaryGetTypeID() || GetWindowContentBounds(window, &bounds) != noErr) {
        return remembered;
    }
    const auto* const place = static_cast<CFDictionaryRef>(root.get());
    const auto left = number(place, kLeftKey);
    const auto top = number(place, kTopKey);
    if (left && top) {
        const int width = number(place, kWidthKey).value_or(bounds.right - bounds.left);
        const int height = number(place, kHeightKey).value_or(bounds.bottom - bounds.top);
        remembered.bounds = {*top, *left, static_cast<SInt16>(*top + height), static_cast<SInt16>(*left + width)};
    }
    remembered.hasPreview = number(place, kPreviewKey) != 0;
    return remembered;
}

void rememberPlace(WindowRef window, bool hasPreview) {
    const auto file = preferencesFile(true);
    Rect bounds{};
    if (!file || GetWindowContentBounds(window, &bounds) != noErr) {
        return;
    }
    const auto root = CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    setNumber(root.get(), kLeftKey, bounds.left);
    setNumber(root.get(), kTopKey, bounds.top);
    setNumber(root.get(), kWidthKey, static_cast<SInt16>(bounds.right - bounds.left));
    setNumber(root.get(), kHeightKey, static_cast<SInt16>(bounds.bottom - bounds.top));
    setNumber(root.get(), kPreviewKey, hasPreview ? 1 : 0);
    const auto data = CFRef<CFDataRef>::adopt(CFPropertyListCreateXMLData(nullptr, root.get()));
    SInt32 error = 0;
    CFURLWriteDataAndPropertiesToResource(file.get(), data.get(), nullptr, &error);
}
