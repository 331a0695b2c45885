// A converted font as Ghostscript draws it, beside the font itself as FreeType draws it.
#pragma once

#include "watermark/type42/type42.h"

#include <string>

struct FontComparison {
    std::string failure;  // what went wrong; empty when the pictures could be compared
    int glyphs = 0;
    /// The differences of all pixels, as a part of the ink.
    double difference = 0;
    std::string worstGlyph;
    double worstDifference = 0;
};

/// Draws characters from all over the font, at the same places, without hints. What the program says about every
/// character is compared with FreeType's answer, too.
FontComparison CompareWithFreeType(const std::string& path, UInt32 face, const std::string& postScriptName,
                                   const std::string& program);

/// The program, or the reason in *refusal.
std::string ConvertFontFile(const std::string& path, UInt32 face, const std::string& postScriptName,
                            FontRefusal* refusal);

const char* NameOfRefusal(FontRefusal refusal);
