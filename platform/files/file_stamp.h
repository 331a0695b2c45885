// What a file is known by: one that is replaced or written to becomes another.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

struct FileStamp {
    std::uint64_t device;
    std::uint64_t number;
    std::int64_t size;
    std::int64_t seconds;
    std::int64_t nanoseconds;

    bool operator==(const FileStamp&) const = default;
};

/// Nothing when there is no file at the path.
std::optional<FileStamp> stampOf(const std::string& path);
