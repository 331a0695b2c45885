// The objects behind arrays and dictionaries.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/objects.h"

#include <list>
#include <unordered_map>
#include <vector>

/// How a collection keeps its elements: counted objects compared by value, or bare pointers.
enum class Elements { Objects, Pointers };

inline void keepElement(Elements kept, const void* element) {
    if (kept == Elements::Objects) {
        CFRetain(element);
    }
}
inline void dropElement(Elements kept, const void* element) {
    if (kept == Elements::Objects) {
        CFRelease(element);
    }
}
/// Null is no counted object, but a bare pointer like any other.
inline bool isNoElement(Elements kept, const void* element) {
    return kept == Elements::Objects && !element;
}
inline bool equalElements(Elements kept, const void* left, const void* right) {
    return kept == Elements::Objects ? CFEqual(left, right) : left == right;
}

struct CFArrayObject final : CFObject {
    static constexpr ObjectKind kKind = ObjectKind::Array;

    CFArrayObject(Elements kept, bool canChange) : CFObject(kKind), elements(kept), isMutable(canChange) {}
    ~CFArrayObject() override;
    bool equals(const CFObject& other) const override;
    CFHashCode hash() const override { return values.size(); }

    /// False, and nothing appended, for null among counted objects.
    bool append(const void* value);

    const Elements elements;
    const bool isMutable;
    std::vector<const void*> values;
};

struct CFDictionaryObject final : CFObject {
    static constexpr ObjectKind kKind = ObjectKind::Dictionary;

    struct Entry {
        const void* key;
        const void* value;
    };
    using Entries = std::list<Entry>;

    CFDictionaryObject(Elements keptKeys, Elements keptValues, bool canChange);
    ~CFDictionaryObject() override;
    bool equals(const CFObject& other) const override;
    CFHashCode hash() const override { return entries.size(); }

    const Entry* find(const void* key) const;
    /// Adds the pair; an equal key that is there keeps its place and takes the value only when `replace` is set.
    /// Null among counted objects is ignored.
    void insert(const void* key, const void* value, bool replace);
    void remove(const void* key);
    void clear();

    const Elements keys;
    const Elements values;
    const bool isMutable;
    Entries entries;  // in the order in which the keys were first added

private:
    struct KeyHash {
        Elements kept;
        std::size_t operator()(const void* key) const;
    };
    struct KeyEqual {
        Elements kept;
        bool operator()(const void* left, const void* right) const;
    };
    std::unordered_map<const void*, Entries::iterator, KeyHash, KeyEqual> index_;
};
