#include "watermark/watermark_list.h"

#include "model/record_ticket.h"
#include "watermark/default_watermarks.h"
#include "watermark/preference_files.h"
#include "watermark/watermark_storage.h"

namespace {

using Root = CFRef<CFMutableDictionaryRef>;

/// The stored list, lent by the root; null when there is none.
CFArrayRef StoredList(const Root& root) {
    const void* list = CFDictionaryGetValue(root.get(), kWatermarkListKey);
    return CFGetTypeID(list) == CFArrayGetTypeID() ? static_cast<CFArrayRef>(list) : nullptr;
}

bool IsDamaged(const Root& root, CFStringRef name) {
    WatermarkRecord record = {};
    if (const CFDictionaryRef stored = GetRecordDictionary(root.get(), name)) {
        ReadWatermarkDictionary(stored, name, &record);
    }
    return record.text[0] == '\0' && record.fileName[0] == '\0';
}

CFStringRef NameAt(CFArrayRef list, CFIndex index) {
    return static_cast<CFStringRef>(CFArrayGetValueAtIndex(list, index));
}

}  // namespace

CFRef<CFMutableArrayRef> LoadListOfWatermarks(CFBundleRef bundle) {
    // Read once for list and record: a store may be large.
    auto root = Root::adopt(CopyXMLData(kWatermarkStore));
    if (StoredList(root) == nullptr) {
        CreateDefaultWatermarks(bundle);
        root = Root::adopt(CopyXMLData(kWatermarkStore));
    }
    const CFArrayRef stored = StoredList(root);
    auto list = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
    for (CFIndex i = 0; i < CFArrayGetCount(stored); ++i) {
        if (CFGetTypeID(CFArrayGetValueAtIndex(stored, i)) == CFStringGetTypeID()) {
            // Two names may be alike, but the panel tells its rows apart by the strings' addresses.
            const auto name =
                CFRef<CFMutableStringRef>::adopt(CFStringCreateMutableCopy(nullptr, 0, NameAt(stored, i)));
            CFArrayAppendValue(list.get(), name.get());
        }
    }
    if (CFArrayGetCount(list.get()) > 0 && IsDamaged(root, NameAt(list.get(), 0))) {
        CFArrayRemoveValueAtIndex(list.get(), 0);
    }
    return list;
}

CFStringRef FindWatermark(CFArrayRef list, CFStringRef text, CFStringRef other) {
    for (CFIndex i = 0; i < CFArrayGetCount(list); ++i) {
        const CFStringRef name = NameAt(list, i);
        if (name != other && CFEqual(name, text)) {
            return name;
        }
    }
    return nullptr;
}

void RemoveWatermark(CFMutableArrayRef list, CFStringRef name) {
    for (CFIndex i = 0; i < CFArrayGetCount(list); ++i) {
        if (NameAt(list, i) == name) {
            CFArrayRemoveValueAtIndex(list, i);
            return;
        }
    }
}
