#include "watermark/records/watermark_list.h"

#include "model/settings/preference_files.h"
#include "model/settings/record_ticket.h"
#include "watermark/records/default_watermarks.h"
#include "watermark/records/watermark_storage.h"

namespace {

using Root = CFRef<CFMutableDictionaryRef>;

bool IsDamaged(CFDictionaryRef root, CFStringRef name) {
    WatermarkRecord record = {};
    if (const CFDictionaryRef stored = GetRecordDictionary(root, name)) {
        ReadWatermarkDictionary(stored, name, &record);
    }
    return record.text[0] == '\0' && record.fileName[0] == '\0';
}

CFStringRef NameAt(CFArrayRef list, CFIndex index) {
    return static_cast<CFStringRef>(CFArrayGetValueAtIndex(list, index));
}

}  // namespace

CFRef<CFMutableArrayRef> CopyStoredNames(CFDictionaryRef root) {
    const void* const stored = CFDictionaryGetValue(root, kWatermarkListKey);
    if (CFGetTypeID(stored) != CFArrayGetTypeID()) {
        return nullptr;
    }
    const auto* const entries = static_cast<CFArrayRef>(stored);
    auto list = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
    for (CFIndex i = 0; i < CFArrayGetCount(entries); ++i) {
        if (CFGetTypeID(CFArrayGetValueAtIndex(entries, i)) == CFStringGetTypeID()) {
            // Two names may be alike, but the panel tells its rows apart by the strings' addresses.
            const auto name =
                CFRef<CFMutableStringRef>::adopt(CFStringCreateMutableCopy(nullptr, 0, NameAt(entries, i)));
            CFArrayAppendValue(list.get(), name.get());
        }
    }
    if (CFArrayGetCount(list.get()) > 0 && IsDamaged(root, NameAt(list.get(), 0))) {
        CFArrayRemoveValueAtIndex(list.get(), 0);
    }
    return list;
}

CFRef<CFMutableArrayRef> LoadListOfWatermarks(CFBundleRef bundle) {
    // Read once for list and record: a store may be large.
    const auto read = [] { return CopyStoredNames(Root::adopt(CopyXMLData(kWatermarkStore)).get()); };
    CFRef<CFMutableArrayRef> list = read();
    if (!list) {
        const FolderLock lock = LockStores();
        list = read();  // another dialog may have been faster
        if (!list) {
            CreateDefaultWatermarks(bundle);
            list = read();
        }
    }
    return list ? list : CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
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
