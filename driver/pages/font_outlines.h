// Text as outlines.
#pragma once

#include "driver/pages/sheet_geometry.h"

#include <optional>
#include <string>

struct TextOutline {
    std::string path;  // PDF operators: its origin is where the base line begins
    double width;      // points
};

/// A UTF-8 text in a font, a Type 42 program whose glyphs have the names that watermark/type42/glyph_names.h gives
/// them. What the font lacks is its box for missing glyphs; what ends lines, and the like, is a blank. Nothing, with
/// the reason, for a font that cannot be read.
std::optional<TextOutline> outlineText(const std::string& text, const std::string& font, double size,
                                       std::string* reason);
