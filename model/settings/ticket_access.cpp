#include "model/settings/ticket_access.h"

#include "platform/foundation/CFRef.h"

namespace {

CFNumberRef AsNumber(CFTypeRef object) {
    return CFGetTypeID(object) == CFNumberGetTypeID() ? static_cast<CFNumberRef>(object) : nullptr;
}

/// The number of a dictionary's key; null when there is none.
CFNumberRef GetNumber(CFDictionaryRef dictionary, CFStringRef key) {
    return key == nullptr ? nullptr : AsNumber(CFDictionaryGetValue(dictionary, key));
}

}  // namespace

OSStatus GetTicketFromSession(PMPrintSession session, CFStringRef key, PMTicketRef* ticket) {
    CFTypeRef data = nullptr;
    const OSStatus status = PMSessionGetDataFromSession(session, key, &data);
    const auto owned = CFRef<CFTypeRef>::adopt(data);
    if (status != noErr) {
        return status;
    }
    const CFNumberRef number = AsNumber(data);
    const bool read = number != nullptr && CFNumberGetValue(number, kCFNumberSInt32Type, ticket);
    return read ? noErr : kPMItemTypeMismatch;
}

SInt32 GetTicketNumber(PMTicketRef ticket, CFStringRef key, SInt32 defaultValue) {
    CFNumberRef number = nullptr;
    SInt32 value = 0;
    const bool read = PMTicketGetCFNumber(ticket, kPMTopLevel, kPMTopLevel, key, &number) == noErr &&
                      CFNumberGetValue(number, kCFNumberSInt32Type, &value);
    return read ? value : defaultValue;
}

OSStatus SetTicketNumber(PMTicketRef ticket, CFStringRef creator, CFStringRef key, SInt32 value) {
    const CFIndex wide = value;
    const auto number = CFRef<CFNumberRef>::adopt(CFNumberCreate(kCFAllocatorDefault, kCFNumberCFIndexType, &wide));
    return PMTicketSetCFNumber(ticket, creator, key, number.get(), kPMUnlocked);
}

Boolean GetCFIndexFromCFDictionary(CFDictionaryRef dictionary, CFStringRef key, CFIndex* value) {
    return CFDictionaryGetNumber(dictionary, key, value, kCFNumberCFIndexType);
}

void WriteTicketValue(CFMutableDictionaryRef dictionary, CFStringRef key, CFIndex value) {
    CFDictionarySetNumber(dictionary, key, &value, kCFNumberCFIndexType);
}

void CFDictionarySetNumber(CFMutableDictionaryRef dictionary, CFStringRef key, const void* value, CFNumberType type) {
    if (dictionary == nullptr || key == nullptr || value == nullptr) {
        return;
    }
    const auto number = CFRef<CFNumberRef>::adopt(CFNumberCreate(kCFAllocatorDefault, type, value));
    CFDictionarySetValue(dictionary, key, number.get());
}

Boolean CFDictionaryGetNumber(CFDictionaryRef dictionary, CFStringRef key, void* value, CFNumberType type) {
    const CFNumberRef number = GetNumber(dictionary, key);
    return number != nullptr && CFNumberGetValue(number, type, value);
}

void CFDictionarySetCString(CFMutableDictionaryRef dictionary, CFStringRef key, const char* bytes,
                            CFStringEncoding encoding) {
    const auto string = CFRef<CFStringRef>::adopt(CFStringCreateWithCString(kCFAllocatorDefault, bytes, encoding));
    if (dictionary != nullptr && key != nullptr && string) {
        CFDictionarySetValue(dictionary, key, string.get());
    }
}

CFMutableDictionaryRef CFDictionaryGetDictionaryOrCreate(CFMutableDictionaryRef dictionary, CFStringRef key) {
    if (dictionary == nullptr || key == nullptr) {
        return nullptr;
    }
    const void* present = CFDictionaryGetValue(dictionary, key);
    if (CFGetTypeID(present) == CFDictionaryGetTypeID()) {
        return static_cast<CFMutableDictionaryRef>(const_cast<void*>(present));
    }
    const auto made = CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutable(
        kCFAllocatorDefault, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    CFDictionarySetValue(dictionary, key, made.get());
    return made.get();
}
