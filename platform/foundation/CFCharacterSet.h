// Sets of characters, for checks of typed text.
#pragma once

#include "platform/foundation/CFBase.h"

enum CFCharacterSetPredefinedSet : CFIndex {
    kCFCharacterSetControl = 1,  // Unicode's categories Cc and Cf
    kCFCharacterSetWhitespaceAndNewline = 3,
    kCFCharacterSetDecimalDigit = 4,  // the decimal digits of every script
};

/// One of the platform's own sets; never released.
CFCharacterSetRef CFCharacterSetGetPredefined(CFCharacterSetPredefinedSet set);

/// A new set of the characters that stand in the string.
CFCharacterSetRef CFCharacterSetCreateWithCharactersInString(CFAllocatorRef allocator, CFStringRef string);

/// Whether the set holds the code point. False for null.
Boolean CFCharacterSetIsLongCharacterMember(CFCharacterSetRef set, UInt32 codePoint);

/// The value of a decimal digit of any script, 0 to 9; -1 for every other character.
SInt32 CFCharacterGetDigitValue(UInt32 codePoint);
