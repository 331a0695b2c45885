// What kept a file from being read, in words.
#pragma once

#include <cstdint>
#include <string>

/// Why a file could not be read, for people: the error number (errno.h) of a call with that maximum.
std::string readFault(int error, std::int64_t maximum);
