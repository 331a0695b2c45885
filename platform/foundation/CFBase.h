// Basic types of the platform and the life of its counted objects.
//
// Every object behind a ...Ref type is counted. A function with Create or Copy in its name hands its result over
// to the caller, who releases it; a function with Get lends it. All objects live on the user-interface thread.
#pragma once

#include <cstdint>

using OSStatus = std::int32_t;
using OSType = std::uint32_t;
using UInt8 = std::uint8_t;
using UInt16 = std::uint16_t;
using UInt32 = std::uint32_t;
using SInt16 = std::int16_t;
using SInt32 = std::int32_t;
using UniChar = char16_t;
using Boolean = bool;
using ItemCount = std::uint32_t;
using ByteCount = std::uint64_t;

/// A count, length or position; 64 bits wide.
using CFIndex = std::int64_t;
using CFTypeID = std::uint32_t;
using CFHashCode = std::uint64_t;
using CFOptionFlags = std::uint32_t;

/// Any counted object. The concrete ...Ref types convert to it by themselves.
using CFTypeRef = const void*;

/// Allocators are not supported; every function takes null (kCFAllocatorDefault).
using CFAllocatorRef = const struct CFAllocatorObject*;
inline constexpr CFAllocatorRef kCFAllocatorDefault = nullptr;

using CFStringRef = const struct CFStringObject*;
using CFMutableStringRef = struct CFStringObject*;
using CFDictionaryRef = const struct CFDictionaryObject*;
using CFMutableDictionaryRef = struct CFDictionaryObject*;
using CFArrayRef = const struct CFArrayObject*;
using CFMutableArrayRef = struct CFArrayObject*;
using CFDataRef = const struct CFDataObject*;
using CFMutableDataRef = struct CFDataObject*;
using CFNumberRef = const struct CFNumberObject*;
using CFBooleanRef = const struct CFBooleanObject*;
using CFCharacterSetRef = const struct CFCharacterSetObject*;
using CFURLRef = const struct CFURLObject*;
using CFUUIDRef = const struct CFUUIDObject*;
using CFBundleRef = struct CFBundleObject*;
using CFLocaleRef = const struct CFLocaleObject*;
using CFNumberFormatterRef = struct CFNumberFormatterObject*;

struct CFRange {
    CFIndex location;
    CFIndex length;
};
constexpr CFRange CFRangeMake(CFIndex location, CFIndex length) {
    return {location, length};
}

inline constexpr CFIndex kCFNotFound = -1;

enum CFComparisonResult : CFIndex { kCFCompareLessThan = -1, kCFCompareEqualTo = 0, kCFCompareGreaterThan = 1 };

// Status codes that more than one floor answers with.
inline constexpr OSStatus noErr = 0;
inline constexpr OSStatus fnfErr = -43;    // file not found
inline constexpr OSStatus paramErr = -50;  // bad argument
inline constexpr OSStatus memFullErr = -108;

/// Adds one to the object's count and returns it. Null is allowed and returned.
CFTypeRef CFRetain(CFTypeRef object);

/// Takes one from the object's count and destroys it at zero. Null is ignored.
void CFRelease(CFTypeRef object);

/// The number of owners; for tests. Constant strings, booleans and constant UUIDs answer a very large number.
CFIndex CFGetRetainCount(CFTypeRef object);

/// The kind of an object, to compare with a kind's own ...GetTypeID(). 0 for null.
CFTypeID CFGetTypeID(CFTypeRef object);

/// Equality by value for two objects of one kind; objects of different kinds are never equal. Null equals only null.
Boolean CFEqual(CFTypeRef left, CFTypeRef right);
