// TrueType fonts as PostScript.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"
#include "watermark/type42/font_refusal.h"
#include "watermark/type42/sfnt_reader.h"

/// Converts one face of a TrueType file to a Type 42 font program (Adobe Technical Note 5012), which is
/// ASCII text in short lines and ends by defining the font under its name.
///
/// `font` is the whole file, `face` the place of the face in a collection and 0 otherwise. The name becomes the font's;
/// it need not be the one that the file has. Null when the font is refused, with the reason in *refusal.
///
/// How text is shown: every character that the font has is a glyph "uniXXXX" (four hexadecimal digits, upper case), or
/// "uXXXXX" with five or six digits above U+FFFF, so that `/uni0041 glyphshow` shows an A. The usual names ("A",
/// "space") are there too, and the encoding is Latin 1, so that strings of such text can be shown as they are. Glyphs
/// that no character has, such as ligatures, have the font's own names or "gN", N being the glyph's number. A
/// dictionary of PostScript ends at 65535 names; the rarest of these kinds is left out beyond that.
CFRef<CFDataRef> convertTTFtoPS42(CFDataRef font, CFStringRef postScriptName, UInt32 face, FontRefusal* refusal);

/// What speaks against a face by its directory and its maker's rights: for lists of fonts, since glyphs and characters
/// are not looked at. A face against which nothing speaks can be refused by the conversion all the same.
FontRefusal RefusalAtFirstSight(SfntBytes file, UInt32 face);
