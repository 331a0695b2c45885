// The text of a Type 42 font program.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"
#include "watermark/type42/glyph_names.h"
#include "watermark/type42/glyph_outlines.h"

#include <string>

/// The program of a face that was found sound. Null when a glyph is longer than a string of PostScript can be.
CFRef<CFDataRef> WriteType42(const std::string& name, const SfntFace& face, const GlyphOutlines& outlines,
                             const GlyphNames& names);
