// Letting the user choose a file.
#pragma once

#include "platform/foundation/CFBase.h"

inline constexpr OSStatus userCanceledErr = -128;

/// A kind of files that can be shown alone.
struct NavFileKind {
    CFStringRef name;      // for the user
    CFStringRef patterns;  // of file names, blanks between them: "*.vcf *.vcard"
};

/// Asks for a file that exists, in the folder where the user chose one last. The first kind is shown at first. The
/// caller releases *file; userCanceledErr, and null, when the user wants none. A scripted run gives its files
/// beforehand (AutomationQueueFile).
OSStatus NavChooseFile(CFStringRef title, ItemCount kindCount, const NavFileKind* kinds, CFURLRef* file);

/// Asks where to put a new file of the kind, which is proposed under a name; the user is asked before an existing one
/// is replaced. All else as above.
OSStatus NavChooseNewFile(CFStringRef title, const NavFileKind* kind, CFStringRef name, CFURLRef* file);
