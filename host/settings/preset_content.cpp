#include "host/settings/preset_content.h"

#include "driver/instructions/item_use.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"

#include <algorithm>
#include <vector>

namespace {

/// What a user types into an option of a printer may be a passcode, whatever the option is called.
bool isTypedByUser(const std::string& key, CFTypeRef value) {
    if (key == "PageSize" || key == "PageRegion" || CFGetTypeID(value) != CFStringGetTypeID()) {
        return false;
    }
    const std::string text = utf8Text(static_cast<CFStringRef>(value));
    return text.starts_with("Custom.") || text.starts_with('{');
}

/// Hands over each item: its key as text, the key, the value.
template <typename Take>
void eachItem(CFDictionaryRef items, Take take) {
    const auto count = static_cast<std::size_t>(CFDictionaryGetCount(items));
    std::vector<const void*> keys(count);
    std::vector<const void*> values(count);
    CFDictionaryGetKeysAndValues(items, keys.data(), values.data());
    for (std::size_t i = 0; i < count; ++i) {
        take(utf8Text(static_cast<CFStringRef>(keys[i])), keys[i], values[i]);
    }
}

bool isKept(const std::string& key, CFTypeRef value, ItemUse least) {
    // A secret is one by its name, in settings of other editions too.
    return useOfItem(key) >= least && !PMSettingIsSecret(nullptr, makeString(key).get()) && !isTypedByUser(key, value);
}

/// Whether everything below the value is kept.
bool isKeptWhole(CFTypeRef value, ItemUse least) {
    bool isWhole = true;
    if (CFGetTypeID(value) == CFDictionaryGetTypeID()) {
        eachItem(static_cast<CFDictionaryRef>(value), [&](const std::string& key, CFTypeRef, CFTypeRef item) {
            isWhole = isWhole && isKept(key, item, least) && isKeptWhole(item, least);
        });
    } else if (CFGetTypeID(value) == CFArrayGetTypeID()) {
        const auto* list = static_cast<CFArrayRef>(value);
        for (CFIndex i = 0; isWhole && i < CFArrayGetCount(list); ++i) {
            isWhole = isKeptWhole(CFArrayGetValueAtIndex(list, i), least);
        }
    }
    return isWhole;
}

CFRef<CFTypeRef> copyKept(CFTypeRef value, ItemUse least);

CFRef<CFDictionaryRef> copyKeptItems(CFDictionaryRef items, ItemUse least) {
    if (items == nullptr) {
        return {};
    }
    const auto kept = CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    eachItem(items, [&](const std::string& name, CFTypeRef key, CFTypeRef value) {
        if (isKept(name, value, least)) {
            CFDictionarySetValue(kept.get(), key, copyKept(value, least).get());
        }
    });
    return CFRef<CFDictionaryRef>::retain(kept.get());
}

/// What is kept whole is not copied: lists may be long, and the dialog compares settings at each pause of the user.
CFRef<CFTypeRef> copyKept(CFTypeRef value, ItemUse least) {
    if (isKeptWhole(value, least)) {
        return CFRef<CFTypeRef>::retain(value);
    }
    if (CFGetTypeID(value) == CFDictionaryGetTypeID()) {
        return CFRef<CFTypeRef>::retain(copyKeptItems(static_cast<CFDictionaryRef>(value), least).get());
    }
    const auto* list = static_cast<CFArrayRef>(value);
    const auto kept = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
    for (CFIndex i = 0; i < CFArrayGetCount(list); ++i) {
        CFArrayAppendValue(kept.get(), copyKept(CFArrayGetValueAtIndex(list, i), least).get());
    }
    return CFRef<CFTypeRef>::retain(kept.get());
}

JobSettings copyKept(const JobSettings& settings, ItemUse least) {
    return {copyKeptItems(settings.printSettings.get(), least), copyKeptItems(settings.pageFormat.get(), least), {}};
}

/// A panel writes some of its items only once it has been shown, at first as what they are when they are missing.
bool isNothing(CFTypeRef value) {
    const CFTypeID type = CFGetTypeID(value);
    if (type == CFNumberGetTypeID()) {
        double number = 0;
        return CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberDoubleType, &number) && number == 0;
    }
    if (type == CFDictionaryGetTypeID() || type == CFArrayGetTypeID()) {
        return (type == CFArrayGetTypeID() ? CFArrayGetCount(static_cast<CFArrayRef>(value))
                                           : CFDictionaryGetCount(static_cast<CFDictionaryRef>(value))) == 0;
    }
    return value == nullptr || value == kCFBooleanFalse ||
           (type == CFStringGetTypeID() && CFStringGetLength(static_cast<CFStringRef>(value)) == 0);
}

bool isSame(CFDictionaryRef one, CFDictionaryRef other);

bool isSame(CFTypeRef one, CFTypeRef other) {
    if (CFGetTypeID(one) == CFDictionaryGetTypeID() && CFGetTypeID(other) == CFDictionaryGetTypeID()) {
        return isSame(static_cast<CFDictionaryRef>(one), static_cast<CFDictionaryRef>(other));
    }
    return CFEqual(one, other) || (isNothing(one) && isNothing(other));
}

/// Whether all items of the one are the same in the other.
bool hasAll(CFDictionaryRef one, CFDictionaryRef other) {
    std::vector<const void*> keys(static_cast<std::size_t>(CFDictionaryGetCount(one)));
    CFDictionaryGetKeysAndValues(one, keys.data(), nullptr);
    return std::ranges::all_of(keys, [&](const void* key) {
        return isSame(CFDictionaryGetValue(one, key), CFDictionaryGetValue(other, key));
    });
}

bool isSame(CFDictionaryRef one, CFDictionaryRef other) {
    return one == other || (hasAll(one, other) && hasAll(other, one));
}

}  // namespace

JobSettings presetContent(const JobSettings& settings) {
    return copyKept(settings, ItemUse::job);
}

JobSettings lastUsedContent(const JobSettings& settings) {
    return copyKept(settings, ItemUse::printing);
}

bool isSamePreset(const JobSettings& one, const JobSettings& other) {
    const JobSettings left = presetContent(one);
    const JobSettings right = presetContent(other);
    return isSame(left.printSettings.get(), right.printSettings.get()) &&
           isSame(left.pageFormat.get(), right.pageFormat.get());
}
