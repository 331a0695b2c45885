// The objects behind the ...Ref types. For the sources of this folder, and of those platform folders that make counted
// objects of their own: it shows Qt.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/foundation/base64_text.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <atomic>
#include <limits>
#include <type_traits>
#include <variant>

enum class ObjectKind : CFTypeID {
    String = 1,
    Number,
    Bool,
    Data,
    Array,
    Dictionary,
    CharacterSet,
    URL,
    UUID,
    Bundle,
    Locale,
    NumberFormatter,
};

/// What all objects have. Every object derives from it alone and first, so that a CFTypeRef points at it.
class CFObject {
public:
    CFObject(const CFObject&) = delete;
    CFObject& operator=(const CFObject&) = delete;

    ObjectKind kind() const { return kind_; }

    /// Equality with another object of the same kind. By identity unless a kind knows better.
    virtual bool equals(const CFObject& other) const { return this == &other; }
    /// Equal objects have equal hashes.
    virtual CFHashCode hash() const { return reinterpret_cast<std::uintptr_t>(this); }

    // Owners may be in several threads.
    void retain() const {
        if (count_.load(std::memory_order_relaxed) != kImmortal) {
            count_.fetch_add(1, std::memory_order_relaxed);
        }
    }
    void release() const {
        if (count_.load(std::memory_order_relaxed) != kImmortal &&
            count_.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete this;
        }
    }
    CFIndex count() const { return count_; }

    /// From now on nobody's count matters: the object lives as long as the process.
    void makeImmortal() const { count_ = kImmortal; }

protected:
    static constexpr CFIndex kImmortal = std::numeric_limits<CFIndex>::max();

    constexpr explicit CFObject(ObjectKind kind, CFIndex count = 1) : kind_(kind), count_(count) {}
    constexpr virtual ~CFObject() = default;

private:
    ObjectKind kind_;
    mutable std::atomic<CFIndex> count_;
};

struct CFStringObject final : CFObject {
    static constexpr ObjectKind kKind = ObjectKind::String;

    explicit CFStringObject(QString value, bool canChange = false)
        : CFObject(kKind), isMutable(canChange), text(std::move(value)) {}
    bool equals(const CFObject& other) const override;
    CFHashCode hash() const override;

    const bool isMutable;
    QString text;
};

struct CFDataObject final : CFObject {
    static constexpr ObjectKind kKind = ObjectKind::Data;
    using Content = std::variant<QByteArray, Base64Text>;

    explicit CFDataObject(Content value, bool canChange = false)
        : CFObject(kKind), isMutable(canChange), content(std::move(value)) {}
    bool equals(const CFObject& other) const override;
    CFHashCode hash() const override;

    /// Decodes the content for good.
    QByteArray& bytes() const;

    const bool isMutable;
    mutable Content content;
};

/// The object when it is one of the kind that its reference's type promises, else null. References come out of
/// dictionaries as bare pointers and out of files that anybody may have written, so a wrong kind is answered like a
/// missing object and never read as what it is not.
template <typename T>
T* checked(T* reference) {
    const auto* object = static_cast<const CFObject*>(static_cast<const void*>(reference));
    return object && object->kind() == std::remove_const_t<T>::kKind ? reference : nullptr;
}

inline CFRef<CFStringRef> makeString(QString text) {
    return CFRef<CFStringRef>::adopt(new CFStringObject(std::move(text)));
}

/// The string's text; empty for null.
QString textOf(CFStringRef string);
