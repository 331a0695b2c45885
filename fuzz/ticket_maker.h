// Property lists out of any bytes, with the keys that records look for.
#pragma once

#include "platform/foundation/CFRef.h"

#include <cstddef>
#include <cstdint>

/// A property list that the bytes tell step by step; when they end, so does it.
[[nodiscard]] CFRef<CFTypeRef> makeTicket(const std::uint8_t* data, std::size_t size);
