// Numbers as text in the user's own notation.
#pragma once

#include "platform/foundation/CFNumber.h"

/// A new reference to the user's locale.
CFLocaleRef CFLocaleCopyCurrent();

enum CFNumberFormatterStyle : CFIndex { kCFNumberFormatterDecimalStyle = 1 };

/// A formatter for the locale; digits and the decimal sign are the locale's, numbers are not grouped.
CFNumberFormatterRef CFNumberFormatterCreate(CFAllocatorRef allocator, CFLocaleRef locale,
                                             CFNumberFormatterStyle style);
/// The decimal places that every formatted number has (0 to 15; 0 at first).
void CFNumberFormatterSetFractionDigits(CFNumberFormatterRef formatter, CFIndex digits);
/// A new string with the value that `value` points at, of the C type that `type` names.
CFStringRef CFNumberFormatterCreateStringWithValue(CFAllocatorRef allocator, CFNumberFormatterRef formatter,
                                                   CFNumberType type, const void* value);
