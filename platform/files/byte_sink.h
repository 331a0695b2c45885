// Where bytes go that are made one after the other.
#pragma once

#include <string_view>

class ByteSink {
public:
    ByteSink() = default;
    virtual ~ByteSink() = default;
    ByteSink(const ByteSink&) = delete;
    ByteSink& operator=(const ByteSink&) = delete;

    /// Takes all of the bytes. False when it could not: what is there then is a part, and of no use.
    virtual bool write(std::string_view bytes) = 0;
};

/// Writes all of the bytes to a descriptor. False with errno set.
bool writeAll(int file, std::string_view bytes);
