// Addresses of files and web pages.
#pragma once

#include "platform/foundation/CFBase.h"

enum CFURLPathStyle : CFIndex { kCFURLPOSIXPathStyle = 0 };

/// A new address of the file-system path; a relative path is taken from the working directory.
CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef allocator, CFStringRef path, CFURLPathStyle style,
                                       Boolean isDirectory);
/// The same of a path in the file system's bytes, which need not be UTF-8.
CFURLRef CFURLCreateFromFileSystemRepresentation(CFAllocatorRef allocator, const UInt8* path, CFIndex length,
                                                 Boolean isDirectory);
/// A new address from its text, such as "https://…"; null when it is not one. The base must be null.
CFURLRef CFURLCreateWithString(CFAllocatorRef allocator, CFStringRef text, CFURLRef base);
/// A new address of `component` inside the folder that `url` names.
CFURLRef CFURLCreateCopyAppendingPathComponent(CFAllocatorRef allocator, CFURLRef url, CFStringRef component,
                                               Boolean isDirectory);
/// The whole address as text, lent.
CFStringRef CFURLGetString(CFURLRef url);
/// The absolute path of a file address, zero-terminated, in the file system's bytes. False when the address is no
/// file's or the path does not fit into bufferSize bytes.
Boolean CFURLGetFileSystemRepresentation(CFURLRef url, Boolean resolveAgainstBase, UInt8* buffer, CFIndex bufferSize);

/// A file or folder that exists: its absolute path, zero-terminated.
struct FSRef {
    char path[1025];
};
/// False when the address names no existing file or folder.
Boolean CFURLGetFSRef(CFURLRef url, FSRef* ref);
