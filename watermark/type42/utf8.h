// A platform string as UTF-8.
#pragma once

#include "platform/foundation/CFString.h"

#include <string>

/// Empty for null, and for a text that has no UTF-8 form.
inline std::string Utf8Of(CFStringRef string) {
    // A UTF-16 code unit takes three bytes at most.
    std::string text(static_cast<std::size_t>(CFStringGetLength(string)) * 3 + 1, '\0');
    CFStringGetCString(string, text.data(), static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8);
    text.resize(text.find('\0'));
    return text;
}
