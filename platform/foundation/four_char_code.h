// Four-character codes: signatures, commands, event classes and tags.
#pragma once

#include "platform/foundation/CFBase.h"

#include <cstddef>
#include <string>

/// The code of exactly four ASCII characters, first character in the highest byte. Any other length, or a
/// character beyond ASCII, does not compile.
template <std::size_t N>
consteval OSType FourCharCode(const char (&text)[N]) {
    static_assert(N == 5, "a four-character code has four characters");
    OSType code = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        if (static_cast<unsigned char>(text[i]) > 0x7F || text[i] == '\0') {
            throw "a four-character code is plain ASCII";
        }
        code = (code << 8) | static_cast<unsigned char>(text[i]);
    }
    return code;
}

/// The code as text, for messages and listings; a byte that cannot be shown becomes '?'.
inline std::string FourCharCodeText(OSType code) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const char c = static_cast<char>((code >> shift) & 0xFF);
        text += (c >= 0x20 && c < 0x7F) ? c : '?';
    }
    return text;
}
