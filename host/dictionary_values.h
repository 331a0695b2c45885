// Values of dictionaries that anybody may have written: of another type than expected they read as missing.
#pragma once

#include "host/script/text.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"

#include <cmath>
#include <optional>
#include <string>

/// Empty when it is missing.
inline std::string stringIn(CFDictionaryRef dictionary, CFStringRef key) {
    const void* const value = CFDictionaryGetValue(dictionary, key);
    return CFGetTypeID(value) == CFStringGetTypeID() ? utf8(static_cast<CFStringRef>(value)) : std::string();
}

inline std::optional<bool> booleanIn(CFDictionaryRef dictionary, CFStringRef key) {
    const void* const value = CFDictionaryGetValue(dictionary, key);
    return CFGetTypeID(value) == CFBooleanGetTypeID()
               ? std::optional(CFBooleanGetValue(static_cast<CFBooleanRef>(value)))
               : std::nullopt;
}

inline std::optional<double> numberIn(CFDictionaryRef dictionary, CFStringRef key) {
    const void* const value = CFDictionaryGetValue(dictionary, key);
    double number = 0;
    return CFGetTypeID(value) == CFNumberGetTypeID() &&
                   CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberDoubleType, &number) &&
                   std::isfinite(number)
               ? std::optional(number)
               : std::nullopt;
}
