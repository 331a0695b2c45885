// The characters that a font has.
#pragma once

#include "watermark/type42/sfnt_reader.h"

#include <vector>

struct FontCharacter {
    char32_t code;
    UInt16 glyph;  // never 0, and below the number of glyphs
};

/// What the font's best table of characters ('cmap') says, sorted by code, each code once. At most 65535 characters.
/// The codes of a symbol font are there twice, in the private area and, as other systems reach them, as Latin 1.
std::vector<FontCharacter> CharactersOfFont(SfntBytes cmap, UInt16 glyphCount);
