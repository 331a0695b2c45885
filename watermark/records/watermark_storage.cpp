#include "watermark/records/watermark_storage.h"

#include "model/settings/preference_files.h"
#include "model/settings/record_ticket.h"

namespace {

using Root = CFRef<CFMutableDictionaryRef>;

void SetInStore(CFStringRef fileName, StoreUse use, CFStringRef key, CFTypeRef value) {
    if (fileName == nullptr || key == nullptr || value == nullptr) {
        return;
    }
    ChangeStore(fileName, use, [key, value](CFMutableDictionaryRef root) {
        CFDictionarySetValue(root, key, value);
        return true;
    });
}

}  // namespace

void saveWatermarkList(CFStringRef fileName, CFArrayRef names) {
    SetInStore(fileName, StoreUse::NewIfNone, kWatermarkListKey, names);
}

Boolean loadWatermarkList(CFStringRef fileName, CFMutableArrayRef* names) {
    const auto root = Root::adopt(CopyXMLData(fileName));
    const void* list = CFDictionaryGetValue(root.get(), kWatermarkListKey);
    if (names == nullptr || CFGetTypeID(list) != CFArrayGetTypeID()) {
        return false;
    }
    *names = CFRef<CFMutableArrayRef>::retain(static_cast<CFMutableArrayRef>(const_cast<void*>(list))).leak();
    return true;
}

void saveWatermarkData(CFStringRef fileName, const WatermarkRecord* record) {
    if (record != nullptr) {
        SetInStore(fileName, StoreUse::NewIfNone, CreateWatermarkName(*record).get(),
                   CreateWatermarkDictionary(*record).get());
    }
}

Boolean loadWatermarkData(CFStringRef fileName, CFStringRef name, WatermarkRecord* record) {
    if (record == nullptr) {
        return false;
    }
    const auto root = Root::adopt(CopyXMLData(fileName));
    const CFDictionaryRef stored = GetRecordDictionary(root.get(), name);
    if (stored == nullptr) {
        *record = {};
        return false;
    }
    ReadWatermarkDictionary(stored, name, record);
    return true;
}

void removeWatermarkData(CFStringRef fileName, CFStringRef name) {
    ChangeStore(fileName, StoreUse::Existing, [name](CFMutableDictionaryRef root) {
        const bool isThere = CFDictionaryContainsKey(root, name);
        CFDictionaryRemoveValue(root, name);
        return isThere;
    });
}

void storeFontData(CFStringRef fileName, CFStringRef postScriptName, CFDataRef font) {
    SetInStore(fileName, StoreUse::Existing, postScriptName, font);
}

void loadFontData(CFStringRef fileName, CFStringRef postScriptName, CFMutableDataRef font) {
    const auto root = Root::adopt(CopyXMLData(fileName));
    const void* stored = CFDictionaryGetValue(root.get(), postScriptName);
    if (CFGetTypeID(stored) == CFDataGetTypeID()) {
        const auto* const data = static_cast<CFDataRef>(stored);
        CFDataAppendBytes(font, CFDataGetBytePtr(data), CFDataGetLength(data));
    }
}
