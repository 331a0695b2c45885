#include "watermark/watermark_list.h"

#include "platform/foundation/CFString.h"
#include "watermark/default_watermarks.h"
#include "watermark/watermark_storage.h"

namespace {

CFRef<CFMutableArrayRef> CopyStoredList() {
    CFMutableArrayRef list = nullptr;
    loadWatermarkList(kWatermarkStore, &list);
    return CFRef<CFMutableArrayRef>::adopt(list);
}

bool IsDamaged(CFStringRef name) {
    WatermarkRecord record = {};
    loadWatermarkData(kWatermarkStore, name, &record);
    return record.text[0] == '\0' && record.fileName[0] == '\0';
}

CFStringRef NameAt(CFArrayRef list, CFIndex index) {
    return static_cast<CFStringRef>(CFArrayGetValueAtIndex(list, index));
}

}  // namespace

CFRef<CFMutableArrayRef> LoadListOfWatermarks(CFBundleRef bundle) {
    CFRef<CFMutableArrayRef> stored = CopyStoredList();
    if (!stored) {
        CreateDefaultWatermarks(bundle);
        stored = CopyStoredList();
    }
    auto list = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
    for (CFIndex i = 0; i < CFArrayGetCount(stored.get()); ++i) {
        if (CFGetTypeID(CFArrayGetValueAtIndex(stored.get(), i)) == CFStringGetTypeID()) {
            // Two names may be alike, but the panel tells its rows apart by the strings' addresses.
            const auto name =
                CFRef<CFMutableStringRef>::adopt(CFStringCreateMutableCopy(nullptr, 0, NameAt(stored.get(), i)));
            CFArrayAppendValue(list.get(), name.get());
        }
    }
    if (CFArrayGetCount(list.get()) > 0 && IsDamaged(NameAt(list.get(), 0))) {
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
