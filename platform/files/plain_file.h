// Reading plain files, whatever it is that stands under a name.
#pragma once

#include "platform/files/descriptor.h"
#include "platform/files/read_fault.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"

#include <cstdint>
#include <string>

/// What is read at most of a file that people write or keep: a script, settings, a list of options.
inline constexpr std::int64_t kKeptFileMaximumBytes = std::int64_t{64} * 1024 * 1024;

/// Opens a plain file for reading, and nothing else: a pipe, a socket or a device would have us wait, or never end. No
/// descriptor on failure, with errno set: EISDIR for a folder, EINVAL for what else is no plain file, EFBIG for one of
/// more than `maximum` bytes.
Descriptor openPlainFile(const std::string& path, std::int64_t maximum);

/// All bytes of a plain file. Null on failure, with errno set as above.
CFRef<CFMutableDataRef> readPlainFile(const std::string& path, std::int64_t maximum);
