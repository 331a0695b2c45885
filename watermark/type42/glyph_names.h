// The names by which a PostScript font's glyphs are shown.
#pragma once

#include "watermark/type42/font_characters.h"

#include <string>
#include <vector>

/// Parts of a font program.
struct GlyphNames {
    int count = 0;
    std::string charStrings;  // `count` lines that define each name as the number of its glyph
    std::string encoding;     // lines that put names into an array, one for each Latin 1 character of the font
};

/// The names are, in this order, as long as there are not more than a dictionary can hold: ".notdef", a name of every
/// character, the usual names of characters that have one, the names that the font's 'post' table gives, and "gN" for
/// the glyphs that are left. A name that is taken stays with its first glyph.
GlyphNames NameGlyphs(const std::vector<FontCharacter>& characters, SfntBytes post, UInt16 glyphCount);
