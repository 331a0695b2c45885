// Strings: sequences of UTF-16 code units.
//
// Property lists that are read with mutable leaves hold mutable strings; every other string never changes.
#pragma once

#include "platform/foundation/CFBase.h"

using CFStringEncoding = UInt32;
inline constexpr CFStringEncoding kCFStringEncodingMacRoman = 0;
inline constexpr CFStringEncoding kCFStringEncodingISOLatin1 = 0x0201;
inline constexpr CFStringEncoding kCFStringEncodingASCII = 0x0600;
inline constexpr CFStringEncoding kCFStringEncodingUTF8 = 0x08000100;

CFTypeID CFStringGetTypeID();

/// The constant string of a literal (UTF-8): one object a text for the whole process, never destroyed, never to be
/// released by its users. Code writes CFSTR; tables that hold their texts call this.
CFStringRef CFStringMakeConstant(const char* text);
#define CFSTR(literal) CFStringMakeConstant("" literal "")

/// A new string from zero-terminated bytes; null for a null pointer or bytes that are not of the encoding.
CFStringRef CFStringCreateWithCString(CFAllocatorRef allocator, const char* bytes, CFStringEncoding encoding);

/// A new string from `length` bytes; null for bytes that are not of the encoding. The last argument (whether the
/// bytes begin with a byte order mark) is accepted for the platform's sake and ignored.
CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8* bytes, CFIndex length,
                                    CFStringEncoding encoding, Boolean isExternalRepresentation);

/// A new string from UTF-16 code units.
CFStringRef CFStringCreateWithCharacters(CFAllocatorRef allocator, const UniChar* characters, CFIndex length);

/// A new immutable copy; null for null.
CFStringRef CFStringCreateCopy(CFAllocatorRef allocator, CFStringRef string);

/// A new string that can be changed; null for null. The limit of its length must be 0: none.
CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef allocator, CFIndex maximumLength, CFStringRef string);

/// A new string of the given range of code units; the range must lie inside the string, else null.
CFStringRef CFStringCreateWithSubstring(CFAllocatorRef allocator, CFStringRef string, CFRange range);

/// Gives a mutable string another text; whoever holds it sees the new one. It must not be a dictionary's key. A string
/// that is not mutable stays as it is, with a line on standard error.
void CFStringReplaceAll(CFMutableStringRef string, CFStringRef replacement);

/// Number of UTF-16 code units; 0 for null.
CFIndex CFStringGetLength(CFStringRef string);

/// The code unit at a position inside the string; 0 outside it.
UniChar CFStringGetCharacterAtIndex(CFStringRef string, CFIndex index);

/// Copies a range of code units into a buffer that holds at least range.length of them.
void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* buffer);

/// Writes the text, zero-terminated, into a buffer of bufferSize bytes. False, with an empty buffer, when it does
/// not fit or has characters outside the encoding.
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize, CFStringEncoding encoding);

using CFStringCompareFlags = CFOptionFlags;
inline constexpr CFStringCompareFlags kCFCompareCaseInsensitive = 1;
inline constexpr CFStringCompareFlags kCFCompareLocalized = 32;
inline constexpr CFStringCompareFlags kCFCompareDiacriticInsensitive = 128;

/// Order of two strings by code units, or by case-folded code units with kCFCompareCaseInsensitive; with
/// kCFCompareLocalized alone, as the user's language sorts words, whatever their case.
CFComparisonResult CFStringCompare(CFStringRef left, CFStringRef right, CFStringCompareFlags options);

/// Where each of `count` strings stands when they are sorted as the user's language sorts words, whatever their case:
/// equal ones have one rank, the first has 0. Not of the platform, whose comparisons of two strings take too long for
/// the lists of a library.
void CFStringGetLocalizedRanks(const CFStringRef* strings, CFIndex count, UInt32* ranks);

/// Makes all texts alike that differ in case or in diacritics only, as the options say, so that they can be searched
/// code unit by code unit. Characters are decomposed first (Unicode's compatibility form, which knows no full and half
/// widths), and the digits of every script become 0 to 9, since users may read others than they type. The locale is
/// ignored. For a string that is not mutable, see CFStringReplaceAll.
void CFStringFold(CFMutableStringRef string, CFStringCompareFlags options, CFLocaleRef locale);
