// A font by its PostScript name, and the file where it lies.
#pragma once

#include "platform/foundation/CFURL.h"

/// A font that was found, until the process ends.
using ATSFontRef = UInt32;
inline constexpr ATSFontRef kATSFontRefUnspecified = 0;

using ATSOptionFlags = UInt32;
inline constexpr ATSOptionFlags kATSOptionFlagsDefault = 0;

/// The same font as the font manager calls it.
using FMFont = UInt32;
inline constexpr OSStatus kFMInvalidFontErr = -981;

/// The font that FindFontFace (font_faces.h) has for the name, so it may be one that stands in for the font that was
/// asked for. kATSFontRefUnspecified when there is none.
ATSFontRef ATSFontFindFromPostScriptName(CFStringRef name, ATSOptionFlags options);

FMFont FMGetFontFromATSFontRef(ATSFontRef font);

/// The font's file. kFMInvalidFontErr for no font, fnfErr when the file is gone or its path is too long.
OSStatus FMGetFontContainer(FMFont font, FSRef* file);

/// The font's place in its file, which is 0 unless the file is a collection.
UInt32 FMGetFontIndex(FMFont font);
