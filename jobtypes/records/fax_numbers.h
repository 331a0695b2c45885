// What a fax device dials.
#pragma once

#include "platform/foundation/CFCharacterSet.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"

/// Digits, keys and tones, and the device's codes for pauses and waiting. Case matters: "s" is no code.
#define kFaxDialingCharacters CFSTR("0123456789*#=:!,/S$<>ABCD")

/// The set of exactly these characters; made at load and never destroyed.
extern const CFCharacterSetRef kFaxDialingCharacterSet;

/// A new string of the dialing characters of a fax number as it was typed, in their order. Empty for null.
[[nodiscard]] CFRef<CFStringRef> CopyDialingStringFromFaxNumber(CFStringRef faxNumber);
