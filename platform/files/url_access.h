// Reading and replacing whole files.
#pragma once

#include "platform/foundation/CFBase.h"

/// What is read at most; a larger file is refused with EFBIG.
inline constexpr CFIndex kMaximumFileBytes = CFIndex{256} * 1024 * 1024;

/// Reads the plain file at the address into new data. False when it cannot be read, with a POSIX error number (errno.h)
/// in *error: EINVAL for a pipe, a socket or a device, which nobody waits for; readFault (read_fault.h) has its words.
/// The property arguments of the platform's call are not supported and must be null.
Boolean CFURLCreateDataAndPropertiesFromResource(CFAllocatorRef allocator, CFURLRef url, CFDataRef* data,
                                                 CFDictionaryRef* properties, CFArrayRef desiredProperties,
                                                 SInt32* error);

/// Replaces the file at the address with the data: a new file beside it, synced to disk, then renamed over the old
/// one, so that a crash or a full disk leaves the old file or the new one, never a part. The file is private to the
/// user (0600); an existing file keeps stricter rights only. A symbolic link stays, and the file that it points at is
/// replaced; a folder (EISDIR) or a device (EINVAL) is not. False on failure with a POSIX error number in *error; the
/// old file is then untouched. The property argument is not supported and must be null.
Boolean CFURLWriteDataAndPropertiesToResource(CFURLRef url, CFDataRef data, CFDictionaryRef properties, SInt32* error);
