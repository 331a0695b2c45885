// Property lists: trees of strings, numbers, booleans, data, arrays and dictionaries, as XML.
#pragma once

#include "platform/foundation/CFBase.h"

enum CFPropertyListMutabilityOptions : CFOptionFlags {
    kCFPropertyListImmutable = 0,
    kCFPropertyListMutableContainers = 1,
    kCFPropertyListMutableContainersAndLeaves = 2,  // strings and data too
};

/// Limits of what is read: deeper or larger input is refused, so that hostile files cannot exhaust the process.
inline constexpr int kPropertyListMaximumDepth = 64;
inline constexpr CFIndex kPropertyListMaximumBytes = CFIndex{256} * 1024 * 1024;

/// A new tree from an XML property list, or null with the reason, its line and column in *error (a new string,
/// "line 3, column 7: …"; error may be null). Numbers are read independently of the locale; an integer that does
/// not fit into 64 bits, a real that is not finite, a key that stands twice in a dictionary, a date, a declared or
/// unknown entity, an unknown element or text after the end is an error. The place is where the reader stood when it
/// noticed, often the end of the tag.
CFTypeRef CFPropertyListCreateFromXMLData(CFAllocatorRef allocator, CFDataRef data, CFOptionFlags mutability,
                                          CFStringRef* error);

/// The XML form of a tree (UTF-8, keys in the dictionary's order, shortest exact reals); null when it holds what could
/// not be read back: an object of another kind, a real that is not finite, a text with a character that XML 1.0 does
/// not have (control characters), or more levels than are read.
CFDataRef CFPropertyListCreateXMLData(CFAllocatorRef allocator, CFTypeRef propertyList);

/// A new tree that shares nothing with the old one that can change; null when it holds an object of another kind or
/// more levels than a property list may have.
CFTypeRef CFPropertyListCreateDeepCopy(CFAllocatorRef allocator, CFTypeRef propertyList, CFOptionFlags mutability);
