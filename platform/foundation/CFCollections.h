// Data, arrays and dictionaries.
#pragma once

#include "platform/foundation/CFBase.h"

// The platform's callback tables say how a collection keeps its elements. Only the two forms that the code uses
// exist: counted objects (these tables) and, with null in their place, bare pointers that are neither counted nor
// compared by value. Null is no counted object: it is not added to such a collection.
//
// An immutable collection stays as it is: changing it through a cast reference writes a line to standard error.
struct CFArrayCallBacks;
struct CFDictionaryKeyCallBacks;
struct CFDictionaryValueCallBacks;
extern const CFArrayCallBacks kCFTypeArrayCallBacks;
extern const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;
extern const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;

CFTypeID CFDataGetTypeID();
/// A new object with a copy of `length` bytes.
CFDataRef CFDataCreate(CFAllocatorRef allocator, const UInt8* bytes, CFIndex length);
CFIndex CFDataGetLength(CFDataRef data);
/// The bytes, valid as long as the object and, when it can grow, until it does; null when there are none.
const UInt8* CFDataGetBytePtr(CFDataRef data);
/// A new empty object that can grow; the capacity is a hint.
CFMutableDataRef CFDataCreateMutable(CFAllocatorRef allocator, CFIndex capacity);
/// Adds a copy of `length` bytes at the end; immutable data stays as it is, with a line on standard error.
void CFDataAppendBytes(CFMutableDataRef data, const UInt8* bytes, CFIndex length);
/// The bytes of mutable data, to be changed; null when there are none. Valid until the data grows.
UInt8* CFDataGetMutableBytePtr(CFMutableDataRef data);
/// Adds as many zeros at the end; immutable data stays as it is, with a line on standard error.
void CFDataIncreaseLength(CFMutableDataRef data, CFIndex extraLength);

CFTypeID CFArrayGetTypeID();
/// A new immutable array with `count` elements copied from `values`; null when counted objects have a null among them.
CFArrayRef CFArrayCreate(CFAllocatorRef allocator, const void** values, CFIndex count,
                         const CFArrayCallBacks* callbacks);
/// A new empty array; the capacity is a hint.
CFMutableArrayRef CFArrayCreateMutable(CFAllocatorRef allocator, CFIndex capacity, const CFArrayCallBacks* callbacks);
/// 0 for null.
CFIndex CFArrayGetCount(CFArrayRef array);
/// The element, lent; null outside the array.
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);
void CFArrayAppendValue(CFMutableArrayRef array, const void* value);
/// Nothing happens for a position outside the array.
void CFArrayRemoveValueAtIndex(CFMutableArrayRef array, CFIndex index);

CFTypeID CFDictionaryGetTypeID();
/// A new immutable dictionary with `count` pairs; of equal keys the first one stays.
CFDictionaryRef CFDictionaryCreate(CFAllocatorRef allocator, const void** keys, const void** values, CFIndex count,
                                   const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks);
CFMutableDictionaryRef CFDictionaryCreateMutable(CFAllocatorRef allocator, CFIndex capacity,
                                                 const CFDictionaryKeyCallBacks* keyCallBacks,
                                                 const CFDictionaryValueCallBacks* valueCallBacks);
/// A new mutable dictionary with the same pairs (the values themselves are shared).
CFMutableDictionaryRef CFDictionaryCreateMutableCopy(CFAllocatorRef allocator, CFIndex capacity,
                                                     CFDictionaryRef dictionary);
/// 0 for null.
CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary);
/// The value, lent; null for a null dictionary or an absent key.
const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key);
Boolean CFDictionaryContainsKey(CFDictionaryRef dictionary, const void* key);
/// Copies all keys and values, lent, into two buffers of at least CFDictionaryGetCount entries; either may be null.
/// The order is that in which the keys were first added.
void CFDictionaryGetKeysAndValues(CFDictionaryRef dictionary, const void** keys, const void** values);
/// Adds the pair only when the key is absent.
void CFDictionaryAddValue(CFMutableDictionaryRef dictionary, const void* key, const void* value);
/// Adds the pair or replaces the value of the key.
void CFDictionarySetValue(CFMutableDictionaryRef dictionary, const void* key, const void* value);
void CFDictionaryRemoveValue(CFMutableDictionaryRef dictionary, const void* key);
