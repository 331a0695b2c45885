// The list of watermarks as the panel shows it.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"

/// The names of the stored watermarks in the order of display, each a string of its own that can be changed. A user
/// who has no list gets the default watermarks; when they cannot be stored either, the list is empty. What is no text
/// is left out, and so is a first name behind which there is no watermark.
CFRef<CFMutableArrayRef> LoadListOfWatermarks(CFBundleRef bundle);

/// The names in a store's root, read in the same way; null when it has no list.
CFRef<CFMutableArrayRef> CopyStoredNames(CFDictionaryRef root);

/// The first name in the list that has this text, but for the name `other` itself, which may be null; lent. Null when
/// there is none.
CFStringRef FindWatermark(CFArrayRef list, CFStringRef text, CFStringRef other);

/// Takes this very name out of the list.
void RemoveWatermark(CFMutableArrayRef list, CFStringRef name);
