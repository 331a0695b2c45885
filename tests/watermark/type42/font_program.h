// A Type 42 program, read back.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct FontProgram {
    std::vector<std::size_t> strings;        // their lengths, without the byte of padding
    std::string sfnt;                        // what the strings hold together
    std::map<std::string, unsigned> glyphs;  // by name
    std::map<int, std::string> encoding;     // names by code, without those that are not defined

    /// A table of the font; nothing when it is missing or does not lie inside.
    [[nodiscard]] std::optional<std::string_view> table(std::string_view tag) const;
};

unsigned BigEndian(std::string_view bytes, std::size_t offset, std::size_t length);

/// Nothing, with the reason, when it is not built as Type 42 asks: the strings, the dictionaries and what they count, a
/// font with the tables an interpreter needs, glyphs that exist, and glyph data that is cut between two glyphs.
std::optional<FontProgram> ReadFontProgram(std::string_view program, std::string* fault);
