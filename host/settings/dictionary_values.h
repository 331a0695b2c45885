// Values of dictionaries that anybody may have written: of another type than expected they read as missing.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/text.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Empty when it is missing.
inline std::string stringIn(CFDictionaryRef dictionary, CFStringRef key) {
    const void* const value = CFDictionaryGetValue(dictionary, key);
    return CFGetTypeID(value) == CFStringGetTypeID() ? utf8Text(static_cast<CFStringRef>(value)) : std::string();
}

/// The keys and values that are both strings.
inline std::vector<std::pair<std::string, std::string>> pairsIn(CFDictionaryRef dictionary) {
    const auto count = static_cast<std::size_t>(CFDictionaryGetCount(dictionary));
    std::vector<const void*> keys(count);
    std::vector<const void*> values(count);
    CFDictionaryGetKeysAndValues(dictionary, keys.data(), values.data());
    std::vector<std::pair<std::string, std::string>> pairs;
    for (std::size_t i = 0; i < count; ++i) {
        if (CFGetTypeID(keys[i]) == CFStringGetTypeID() && CFGetTypeID(values[i]) == CFStringGetTypeID()) {
            pairs.emplace_back(utf8Text(static_cast<CFStringRef>(keys[i])),
                               utf8Text(static_cast<CFStringRef>(values[i])));
        }
    }
    return pairs;
}

inline std::optional<bool> booleanIn(CFDictionaryRef dictionary, CFStringRef key) {
    const void* const value = CFDictionaryGetValue(dictionary, key);
    return CFGetTypeID(value) == CFBooleanGetTypeID()
               ? std::optional(CFBooleanGetValue(static_cast<CFBooleanRef>(value)))
               : std::nullopt;
}
