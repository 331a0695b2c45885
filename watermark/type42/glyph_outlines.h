// Where a TrueType font's glyphs are, and whether they hold together.
#pragma once

#include "watermark/type42/sfnt_reader.h"

#include <optional>
#include <vector>

struct GlyphOutlines {
    UInt16 count = 0;
    /// Where each glyph begins in 'glyf', with the end of the last one: from 0, never falling, and inside of
    /// the table.
    std::vector<UInt32> offsets;
    /// The two tables of a font that has glyphs at odd places, made anew with all of them at even ones; else empty.
    std::vector<UInt8> evenGlyf;
    std::vector<UInt8> evenLoca;
};

/// Reads the tables that an interpreter needs to show glyphs ('head', 'maxp', 'hhea', 'hmtx', 'loca', 'glyf') and
/// checks them against each other: their sizes, each glyph's contours and instructions, and that glyphs made of others
/// end. Nothing when they are damaged.
std::optional<GlyphOutlines> ReadGlyphOutlines(const SfntFace& face);
