// The glyphs of the standard Macintosh set, which TrueType fonts name by number.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

struct MacGlyph {
    std::string_view name;
    char32_t code;  // 0 for what is no character
};

inline constexpr std::size_t kMacGlyphCount = 258;

/// In the order of the 'post' table.
extern const std::array<MacGlyph, kMacGlyphCount> kMacGlyphs;

/// The character with that code in the Macintosh's Roman set; 0 for a control character.
char32_t UnicodeOfMacRoman(char32_t code);
