// The value of a number object, and its exact conversion to and from C variables.
#pragma once

#include "platform/foundation/CFNumber.h"
#include "platform/foundation/objects.h"

#include <optional>
#include <variant>

/// An integer or a real. A number keeps which of the two it was made from.
using NumberValue = std::variant<std::int64_t, double>;

struct CFNumberObject final : CFObject {
    static constexpr ObjectKind kKind = ObjectKind::Number;

    explicit CFNumberObject(NumberValue number) : CFObject(kKind), value(number) {}
    /// By value, exactly: 1 equals 1.0, and 2^53 + 1 does not equal 2^53 as a real.
    bool equals(const CFObject& other) const override;
    CFHashCode hash() const override;

    const NumberValue value;
};

/// Reads a C variable of the type; nothing for an unknown type or a null pointer.
std::optional<NumberValue> numberFromVariable(CFNumberType type, const void* variable);
