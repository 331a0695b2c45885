// What the records share when they become ticket dictionaries and are read back.
#pragma once

#include "model/settings/ticket_access.h"
#include "platform/foundation/CFRef.h"

inline CFRef<CFMutableDictionaryRef> CreateRecordDictionary() {
    return CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutable(
        kCFAllocatorDefault, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
}

/// Writes a setting unless it is kTicketValueUnset.
inline void WriteIfSet(CFMutableDictionaryRef dictionary, CFStringRef key, SInt32 value) {
    if (value != kTicketValueUnset) {
        WriteTicketValue(dictionary, key, value);
    }
}

/// Writes a text unless it is null or empty.
inline void WriteIfNotEmpty(CFMutableDictionaryRef dictionary, CFStringRef key, CFStringRef text) {
    if (CFStringGetLength(text) > 0) {
        CFDictionarySetValue(dictionary, key, text);
    }
}

/// Reads a setting. False, and the setting as it was, when the key is absent or holds no integer of 32 bits.
inline bool ReadTicketValue(CFDictionaryRef dictionary, CFStringRef key, SInt32* value) {
    return CFDictionaryGetNumber(dictionary, key, value, kCFNumberSInt32Type);
}

/// The string under the key, lent; null when it is absent or something else.
inline CFStringRef GetRecordString(CFDictionaryRef dictionary, CFStringRef key) {
    const void* value = CFDictionaryGetValue(dictionary, key);
    return CFGetTypeID(value) == CFStringGetTypeID() ? static_cast<CFStringRef>(value) : nullptr;
}

/// The dictionary under the key, lent; null when it is absent or something else.
inline CFDictionaryRef GetRecordDictionary(CFDictionaryRef dictionary, CFStringRef key) {
    const void* value = CFDictionaryGetValue(dictionary, key);
    return CFGetTypeID(value) == CFDictionaryGetTypeID() ? static_cast<CFDictionaryRef>(value) : nullptr;
}
