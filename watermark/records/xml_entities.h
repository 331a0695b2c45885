// Character entities of XML in a string.
#pragma once

#include "platform/foundation/CFBase.h"

/// A new string in which each entity is replaced by what it stands for: the five of XML (amp, quot, lt, gt, apos),
/// numeric references ("&#65;", "&#x41;") and those of the dictionary of strings, which may be null and goes before the
/// five. The text is gone through once: a replacement is not looked at again. An unknown or malformed entity, and a
/// number that is no character's, stays as it is. Null for a null string.
CFStringRef XMLCreateStringByUnescapingEntities(CFAllocatorRef allocator, CFStringRef string, CFDictionaryRef entities);
