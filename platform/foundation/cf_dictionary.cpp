#include "platform/foundation/collections.h"

#include <cstdio>

struct CFDictionaryKeyCallBacks {};
struct CFDictionaryValueCallBacks {};
extern const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks = {};
extern const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks = {};

namespace {

CFRef<CFMutableDictionaryRef> makeDictionary(const CFDictionaryKeyCallBacks* keyCallBacks,
                                             const CFDictionaryValueCallBacks* valueCallBacks, bool isMutable) {
    return CFRef<CFMutableDictionaryRef>::adopt(
        new CFDictionaryObject(keyCallBacks ? Elements::Objects : Elements::Pointers,
                               valueCallBacks ? Elements::Objects : Elements::Pointers, isMutable));
}

/// The dictionary to change, or null with a line that says who tried.
CFDictionaryObject* changeable(CFMutableDictionaryRef dictionary, const char* caller) {
    CFDictionaryObject* object = checked(dictionary);
    if (object && !object->isMutable) {
        std::fprintf(stderr, "%s: this dictionary cannot be changed\n", caller);
        return nullptr;
    }
    return object;
}

}  // namespace

std::size_t CFDictionaryObject::KeyHash::operator()(const void* key) const {
    return kept == Elements::Objects ? static_cast<const CFObject*>(key)->hash() : std::hash<const void*>{}(key);
}

bool CFDictionaryObject::KeyEqual::operator()(const void* left, const void* right) const {
    return equalElements(kept, left, right);
}

CFDictionaryObject::CFDictionaryObject(Elements keptKeys, Elements keptValues, bool canChange)
    : CFObject(kKind), keys(keptKeys), values(keptValues), isMutable(canChange), index_(0, {keys}, {keys}) {}

CFDictionaryObject::~CFDictionaryObject() {
    clear();
}

bool CFDictionaryObject::equals(const CFObject& other) const {
    const auto& right = static_cast<const CFDictionaryObject&>(other);
    if (keys != right.keys || values != right.values || entries.size() != right.entries.size()) {
        return false;
    }
    for (const Entry& entry : entries) {
        const Entry* match = right.find(entry.key);
        if (!match || !equalElements(values, entry.value, match->value)) {
            return false;
        }
    }
    return true;
}

const CFDictionaryObject::Entry* CFDictionaryObject::find(const void* key) const {
    if (isNoElement(keys, key)) {
        return nullptr;
    }
    const auto found = index_.find(key);
    return found == index_.end() ? nullptr : &*found->second;
}

void CFDictionaryObject::insert(const void* key, const void* value, bool replace) {
    if (isNoElement(keys, key) || isNoElement(values, value)) {
        return;
    }
    if (const auto found = index_.find(key); found != index_.end()) {
        if (replace) {
            keepElement(values, value);
            dropElement(values, std::exchange(found->second->value, value));
        }
        return;
    }
    keepElement(keys, key);
    keepElement(values, value);
    index_.emplace(key, entries.insert(entries.end(), {key, value}));
}

void CFDictionaryObject::remove(const void* key) {
    const auto found = isNoElement(keys, key) ? index_.end() : index_.find(key);
    if (found == index_.end()) {
        return;
    }
    const Entry entry = *found->second;
    entries.erase(found->second);
    index_.erase(found);
    dropElement(keys, entry.key);
    dropElement(values, entry.value);
}

void CFDictionaryObject::clear() {
    index_.clear();
    for (const Entry& entry : std::exchange(entries, {})) {
        dropElement(keys, entry.key);
        dropElement(values, entry.value);
    }
}

CFTypeID CFDictionaryGetTypeID() {
    return static_cast<CFTypeID>(ObjectKind::Dictionary);
}

CFDictionaryRef CFDictionaryCreate(CFAllocatorRef, const void** keys, const void** values, CFIndex count,
                                   const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks) {
    if (count < 0 || (count > 0 && (!keys || !values))) {
        return nullptr;
    }
    auto dictionary = makeDictionary(keyCallBacks, valueCallBacks, false);
    for (CFIndex i = 0; i < count; ++i) {
        dictionary.get()->insert(keys[i], values[i], false);
    }
    return dictionary.leak();
}

CFMutableDictionaryRef CFDictionaryCreateMutable(CFAllocatorRef, CFIndex, const CFDictionaryKeyCallBacks* keyCallBacks,
                                                 const CFDictionaryValueCallBacks* valueCallBacks) {
    return makeDictionary(keyCallBacks, valueCallBacks, true).leak();
}

CFMutableDictionaryRef CFDictionaryCreateMutableCopy(CFAllocatorRef, CFIndex, CFDictionaryRef dictionary) {
    const CFDictionaryObject* object = checked(dictionary);
    if (!object) {
        return nullptr;
    }
    auto* copy = new CFDictionaryObject(object->keys, object->values, true);
    for (const auto& [key, value] : object->entries) {
        copy->insert(key, value, false);
    }
    return copy;
}

CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary) {
    const CFDictionaryObject* object = checked(dictionary);
    return object ? CFIndex(object->entries.size()) : 0;
}

const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key) {
    const CFDictionaryObject* object = checked(dictionary);
    const CFDictionaryObject::Entry* entry = object ? object->find(key) : nullptr;
    return entry ? entry->value : nullptr;
}

Boolean CFDictionaryContainsKey(CFDictionaryRef dictionary, const void* key) {
    const CFDictionaryObject* object = checked(dictionary);
    return object && object->find(key);
}

void CFDictionaryGetKeysAndValues(CFDictionaryRef dictionary, const void** keys, const void** values) {
    const CFDictionaryObject* object = checked(dictionary);
    if (!object) {
        return;
    }
    for (const auto& [key, value] : object->entries) {
        if (keys) {
            *keys++ = key;
        }
        if (values) {
            *values++ = value;
        }
    }
}

void CFDictionaryAddValue(CFMutableDictionaryRef dictionary, const void* key, const void* value) {
    if (CFDictionaryObject* object = changeable(dictionary, __func__)) {
        object->insert(key, value, false);
    }
}

void CFDictionarySetValue(CFMutableDictionaryRef dictionary, const void* key, const void* value) {
    if (CFDictionaryObject* object = changeable(dictionary, __func__)) {
        object->insert(key, value, true);
    }
}

void CFDictionaryRemoveValue(CFMutableDictionaryRef dictionary, const void* key) {
    if (CFDictionaryObject* object = changeable(dictionary, __func__)) {
        object->remove(key);
    }
}
