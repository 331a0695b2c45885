// What a file is known by: one that is replaced or written to becomes another.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <sys/types.h>

struct FileStamp {
    dev_t device;
    ino_t number;
    off_t size;
    std::int64_t seconds;
    std::int64_t nanoseconds;

    bool operator==(const FileStamp&) const = default;
};

/// Nothing when there is no file at the path.
std::optional<FileStamp> stampOf(const std::string& path);
