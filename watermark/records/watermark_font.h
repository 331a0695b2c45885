// The font of a watermark, kept beside it in the form that printing needs.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"

/// Converts the font of the stored text watermark of that name to Type 42 and stores it under its PostScript name. A
/// font that is stored already, made from the same file's content, is left alone. Nothing happens without such a
/// watermark, and when its font is not found, not read, or refused.
///
/// The last line of a stored font is a comment that says what it was made from.
void convertFont(CFStringRef watermark);

/// The installed font of that PostScript name as Type 42; null when it is not found, not read, or refused.
CFRef<CFDataRef> CopyInstalledFont(CFStringRef postScriptName);
