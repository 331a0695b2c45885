// The one owner of counted objects in C++ code.
#pragma once

#include "platform/foundation/CFBase.h"

#include <utility>

/// Owns one count of an object, or nothing. T is a reference type such as CFStringRef.
///
/// There is no constructor from a bare reference: whether a count is taken over or added must be said, with
/// adopt() for the result of a Create or Copy function and retain() for one that was only lent. Assignment is
/// copy-and-swap, so an object that owns its own owner survives it.
template <typename T>
class [[nodiscard]] CFRef {
public:
    CFRef() = default;
    CFRef(std::nullptr_t) {}  // NOLINT(google-explicit-constructor): null owns nothing, there is no count to name
    CFRef(const CFRef& other) : object_(other.object_) { CFRetain(object_); }
    CFRef(CFRef&& other) noexcept : object_(other.leak()) {}
    CFRef& operator=(CFRef other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~CFRef() { CFRelease(object_); }

    /// Takes over a count that the caller owns.
    [[nodiscard]] static CFRef adopt(T object) {
        CFRef ref;
        ref.object_ = object;
        return ref;
    }

    /// Adds a count to an object that the caller does not own.
    [[nodiscard]] static CFRef retain(T object) {
        CFRetain(object);
        return adopt(object);
    }

    /// The object, still owned by this reference.
    [[nodiscard]] T get() const { return object_; }

    /// Gives the count to the caller; this reference owns nothing afterwards.
    [[nodiscard]] T leak() { return std::exchange(object_, nullptr); }

    explicit operator bool() const { return object_ != nullptr; }

private:
    T object_ = nullptr;
};
