#include "model/settings/ppd_decode.h"

namespace {

// The bytes are a file's: what counts as a digit must not depend on the locale.
bool IsHexDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

unsigned HexValue(char c) {
    if (c <= '9') {
        return static_cast<unsigned>(c - '0');
    }
    const int lower = c | 0x20;
    return static_cast<unsigned>(lower - 'a' + 10);
}

}  // namespace

std::size_t ppd_decode(char* text) {
    const char* in = text;
    char* out = text;
    while (*in != '\0') {
        if (in[0] != '<' || !IsHexDigit(in[1])) {
            *out++ = *in++;
            continue;
        }
        for (++in; IsHexDigit(in[0]) && IsHexDigit(in[1]); in += 2) {
            *out++ = static_cast<char>(HexValue(in[0]) << 4 | HexValue(in[1]));
        }
        while (*in != '\0' && *in != '>') {
            ++in;
        }
        while (*in == '>') {
            ++in;
        }
    }
    *out = '\0';
    return static_cast<std::size_t>(out - text);
}
