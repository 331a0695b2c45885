// Characters of UTF-16 text.
#pragma once

#include "platform/foundation/CFBase.h"

#include <string_view>

constexpr bool IsHighSurrogate(UniChar unit) {
    return (unit & 0xFC00) == 0xD800;
}
constexpr bool IsLowSurrogate(UniChar unit) {
    return (unit & 0xFC00) == 0xDC00;
}

/// Whether the predicate holds for every code point. A lone surrogate is a code point of its own.
template <typename Predicate>
bool AllCodePoints(std::u16string_view text, Predicate predicate) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        UInt32 codePoint = text[i];
        if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
            codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (text[++i] - 0xDC00);
        }
        if (!predicate(codePoint)) {
            return false;
        }
    }
    return true;
}
