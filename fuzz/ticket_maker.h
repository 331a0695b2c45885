// Property lists out of any bytes, with the keys that records look for.
#pragma once

#include "platform/foundation/CFRef.h"

#include <cstddef>
#include <cstdint>
#include <span>

struct TicketForm {
    std::span<const char* const> keys;
    bool hasTexts;  // strings are made of the bytes; else they have a length only
};

/// A property list that the bytes tell step by step; when they end, so does it. Bytes that begin with '<' are its text,
/// which may be none: the result is null then.
[[nodiscard]] CFRef<CFTypeRef> makeTicket(const std::uint8_t* data, std::size_t size);
/// The same of other keys, step by step only.
[[nodiscard]] CFRef<CFTypeRef> makeTicket(const std::uint8_t* data, std::size_t size, const TicketForm& form);
