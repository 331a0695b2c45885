// Numbers as text in the user's own notation.
#pragma once

#include "platform/foundation/CFNumber.h"

/// A new reference to the user's locale.
CFLocaleRef CFLocaleCopyCurrent();

enum CFLocaleKey : CFIndex {
    kCFLocaleDecimalSeparator = 1,
    kCFLocaleMeasurementSystem,  // "U.S.", "U.K." or "Metric"
};
/// The locale's string for the key, lent for as long as the locale lives.
CFTypeRef CFLocaleGetValue(CFLocaleRef locale, CFLocaleKey key);

enum CFNumberFormatterStyle : CFIndex { kCFNumberFormatterDecimalStyle = 1 };

/// A formatter for the locale; digits and the decimal sign are the locale's, numbers are not grouped.
CFNumberFormatterRef CFNumberFormatterCreate(CFAllocatorRef allocator, CFLocaleRef locale,
                                             CFNumberFormatterStyle style);
/// The decimal places that every formatted number has (0 to 15; 0 at first).
void CFNumberFormatterSetFractionDigits(CFNumberFormatterRef formatter, CFIndex digits);
/// A new string with the value that `value` points at, of the C type that `type` names.
CFStringRef CFNumberFormatterCreateStringWithValue(CFAllocatorRef allocator, CFNumberFormatterRef formatter,
                                                   CFNumberType type, const void* value);
/// Reads the number that the string, or the range of it, is from end to end, and writes it into the variable of the C
/// type that `type` names. Accepts what the formatter writes, and also the digits of every script, the ASCII minus sign
/// and a decimal sign with digits on one side only; direction marks are passed over. False, and nothing written, for
/// any other text (grouped digits too) and for a number that CFNumberGetValue() would not give as that type.
Boolean CFNumberFormatterGetValueFromString(CFNumberFormatterRef formatter, CFStringRef string, const CFRange* range,
                                            CFNumberType type, void* value);
