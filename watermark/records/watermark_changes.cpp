#include "watermark/records/watermark_changes.h"

#include "model/settings/preference_files.h"
#include "model/settings/record_ticket.h"
#include "watermark/records/watermark_list.h"
#include "watermark/records/watermark_storage.h"

#include <cerrno>

namespace {

CFStringRef NameAt(CFArrayRef names, CFIndex index) {
    return static_cast<CFStringRef>(CFArrayGetValueAtIndex(names, index));
}

CFRef<CFMutableArrayRef> CreateNames() {
    return CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
}

void AppendCopy(CFMutableArrayRef names, CFStringRef name) {
    CFArrayAppendValue(names, CFRef<CFMutableStringRef>::adopt(CFStringCreateMutableCopy(nullptr, 0, name)).get());
}

/// The names with `added` (or nothing, for null) in the place of `removed`, else at the end. Another one that is called
/// like it goes.
CFRef<CFMutableArrayRef> CreateChangedNames(CFArrayRef names, CFStringRef removed, CFStringRef added) {
    CFRef<CFMutableArrayRef> changed = CreateNames();
    bool isDone = false;
    for (CFIndex i = 0; i < CFArrayGetCount(names); ++i) {
        const CFStringRef name = NameAt(names, i);
        const bool isPlace = !isDone && removed != nullptr && CFEqual(name, removed);
        if (!isPlace && (added == nullptr || !CFEqual(name, added))) {
            AppendCopy(changed.get(), name);
        } else if (isPlace && added != nullptr) {
            AppendCopy(changed.get(), added);
        }
        isDone |= isPlace;
    }
    if (!isDone && added != nullptr) {
        AppendCopy(changed.get(), added);
    }
    return changed;
}

/// Whether a watermark is printed in the font of that name.
bool IsFontOfOne(CFDictionaryRef root, CFArrayRef names, CFStringRef name) {
    for (CFIndex i = 0; i < CFArrayGetCount(names); ++i) {
        const CFStringRef font = GetRecordString(GetRecordDictionary(root, NameAt(names, i)), CFSTR("fontName"));
        if (font != nullptr && CFEqual(font, name)) {
            return true;
        }
    }
    return false;
}

/// Whether the record can stand in the store under its name beside its font and what is there.
ChangeFault FindFault(CFDictionaryRef root, CFArrayRef others, const WatermarkRecord& record, CFStringRef own,
                      bool mayReplace, CFRef<CFStringRef>* name) {
    const void* const stored = CFDictionaryGetValue(root, name->get());
    const auto font =
        CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, record.fontName, kCFStringEncodingUTF8));
    const bool hasFont = record.kind == kTextWatermark && CFStringGetLength(font.get()) > 0;
    if (CFEqual(name->get(), kWatermarkListKey)) {
        return ChangeFault::nameOfList;
    }
    if (CFGetTypeID(stored) == CFDataGetTypeID() || IsFontOfOne(root, others, name->get()) ||
        (hasFont && CFEqual(font.get(), name->get()))) {
        return ChangeFault::nameOfFont;
    }
    if (hasFont && GetRecordDictionary(root, font.get()) != nullptr && (own == nullptr || !CFEqual(font.get(), own))) {
        *name = font;
        return ChangeFault::nameOfFont;
    }
    return !mayReplace && FindWatermark(others, name->get(), nullptr) != nullptr ? ChangeFault::nameTaken
                                                                                 : ChangeFault::none;
}

/// Lets `apply` change the root and give its names anew; null from it means that nothing is to be written.
template <typename Apply>
WatermarkChange Change(CFArrayRef shown, Apply apply) {
    WatermarkChange change;
    const FolderLock lock = LockStores();
    change.error = lock ? ChangeStore(kWatermarkStore, StoreUse::NewIfNone,
                                      [&](CFMutableDictionaryRef root) {
                                          const CFRef<CFMutableArrayRef> stored = CopyStoredNames(root);
                                          const CFArrayRef names = stored ? stored.get() : shown;
                                          change.names = apply(root, names, &change);
                                          if (change.fault != ChangeFault::none) {
                                              change.names = CreateChangedNames(names, nullptr, nullptr);
                                              return false;
                                          }
                                          CFDictionarySetValue(root, kWatermarkListKey, change.names.get());
                                          return true;
                                      })
                        : errno;  // of the lock
    if (change.error != 0) {
        change.fault = ChangeFault::notWritten;
        change.names = nullptr;
    }
    return change;
}

}  // namespace

WatermarkChange StoreWatermark(const WatermarkRecord& record, CFStringRef own, bool mayReplace, CFArrayRef shown) {
    return Change(shown, [&](CFMutableDictionaryRef root, CFArrayRef names, WatermarkChange* change) {
        const CFRef<CFStringRef> name = CreateWatermarkName(record);
        const auto others = CreateChangedNames(names, own, nullptr);
        change->name = name;
        change->fault = FindFault(root, others.get(), record, own, mayReplace, &change->name);
        if (change->fault == ChangeFault::none) {
            CFDictionaryRemoveValue(root, own);
            CFDictionarySetValue(root, name.get(), CreateWatermarkDictionary(record).get());
        }
        return CreateChangedNames(names, own, name.get());
    });
}

WatermarkChange DeleteWatermark(CFStringRef own, CFArrayRef shown) {
    return Change(shown, [&](CFMutableDictionaryRef root, CFArrayRef names, WatermarkChange*) {
        CFDictionaryRemoveValue(root, own);
        return CreateChangedNames(names, own, nullptr);
    });
}
