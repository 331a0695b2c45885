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

// ---- Lists of whole numbers, such as pages ("1-3, 7"). Not of the platform, which reads single numbers only.

/// A new string: the list in plain ASCII. Digits of every script become 0 to 9, its commas and dashes (the minus, and
/// what East Asian keyboards type for one, too) ',' and '-'. Blanks between two numbers become a comma; all others go,
/// and so do commas with nothing before or behind them. Every other character stays. Null for null.
CFStringRef CFNumberListCreatePlain(CFAllocatorRef allocator, CFStringRef list);
/// A new string: the plain list with the digits of the user's locale. Null for null.
CFStringRef CFNumberListCreateLocalized(CFAllocatorRef allocator, CFStringRef plain);
