#include "platform/foundation/CFNumber.h"

#include "platform/foundation/number_value.h"

#include <QHashFunctions>

#include <cmath>
#include <cstring>
#include <limits>

namespace {

/// The integer that the real is, when it is one of 64 bits.
std::optional<std::int64_t> integerOf(double real) {
    constexpr double kLimit = 9223372036854775808.0;  // 2^63
    if (!(real >= -kLimit && real < kLimit) || real != std::trunc(real)) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(real);
}

std::optional<std::int64_t> integerOf(const NumberValue& value) {
    const double* real = std::get_if<double>(&value);
    return real ? integerOf(*real) : std::optional(std::get<std::int64_t>(value));
}

template <typename T>
T load(const void* variable) {
    T value;
    std::memcpy(&value, variable, sizeof value);
    return value;
}

template <typename T>
bool store(T value, void* variable) {
    std::memcpy(variable, &value, sizeof value);
    return true;
}

template <typename T>
bool storeInteger(const NumberValue& value, void* variable) {
    const std::optional<std::int64_t> integer = integerOf(value);
    if (!integer || *integer < std::numeric_limits<T>::min() || *integer > std::numeric_limits<T>::max()) {
        return false;
    }
    return store(static_cast<T>(*integer), variable);
}

template <typename T>
bool storeReal(const NumberValue& value, void* variable) {
    const double real = std::visit([](auto number) { return static_cast<double>(number); }, value);
    if (std::isfinite(real) && std::fabs(real) > static_cast<double>(std::numeric_limits<T>::max())) {
        return false;
    }
    return store(static_cast<T>(real), variable);
}

}  // namespace

bool CFNumberObject::equals(const CFObject& other) const {
    const NumberValue& right = static_cast<const CFNumberObject&>(other).value;
    if (value.index() == right.index()) {
        return value == right;
    }
    const std::optional<std::int64_t> integer = integerOf(value);
    return integer && integer == integerOf(right);
}

CFHashCode CFNumberObject::hash() const {
    const std::optional<std::int64_t> integer = integerOf(value);
    return integer ? qHash(qlonglong(*integer)) : qHash(std::get<double>(value));
}

std::optional<NumberValue> numberFromVariable(CFNumberType type, const void* variable) {
    if (!variable) {
        return std::nullopt;
    }
    switch (type) {
        case kCFNumberSInt16Type:
            return std::int64_t{load<SInt16>(variable)};
        case kCFNumberSInt32Type:
            return std::int64_t{load<SInt32>(variable)};
        case kCFNumberSInt64Type:
        case kCFNumberCFIndexType:
            return load<std::int64_t>(variable);
        case kCFNumberFloat32Type:
            return double{load<float>(variable)};
        case kCFNumberFloat64Type:
        case kCFNumberDoubleType:
            return load<double>(variable);
    }
    return std::nullopt;
}

CFTypeID CFNumberGetTypeID() {
    return static_cast<CFTypeID>(ObjectKind::Number);
}

CFNumberRef CFNumberCreate(CFAllocatorRef, CFNumberType type, const void* value) {
    const std::optional<NumberValue> number = numberFromVariable(type, value);
    return number ? new CFNumberObject(*number) : nullptr;
}

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value) {
    const CFNumberObject* object = checked(number);
    if (!object || !value) {
        return false;
    }
    switch (type) {
        case kCFNumberSInt16Type:
            return storeInteger<SInt16>(object->value, value);
        case kCFNumberSInt32Type:
            return storeInteger<SInt32>(object->value, value);
        case kCFNumberSInt64Type:
        case kCFNumberCFIndexType:
            return storeInteger<std::int64_t>(object->value, value);
        case kCFNumberFloat32Type:
            return storeReal<float>(object->value, value);
        case kCFNumberFloat64Type:
        case kCFNumberDoubleType:
            return storeReal<double>(object->value, value);
    }
    return false;
}
