// Bytes as a file in memory, for readers that take the path of a file.
#pragma once

#include "fuzz/fuzz_target.h"

#include <string>

#include <sys/mman.h>
#include <unistd.h>

/// Makes the bytes the content of the process's one such file, and says its path.
inline const std::string& memoryFile(const std::uint8_t* data, std::size_t size) {
    static const int file = memfd_create("fuzz", MFD_CLOEXEC);
    static const std::string path = "/proc/self/fd/" + std::to_string(file);
    FUZZ_EXPECT(ftruncate(file, 0) == 0 && pwrite(file, data, size, 0) == static_cast<ssize_t>(size));
    return path;
}
