#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/collections.h"

namespace {

using Value = CFRef<CFTypeRef>;

Value copyValue(CFTypeRef value, CFOptionFlags mutability, int depth);

/// A string or data; only what nobody can change is shared.
template <typename Object, typename Content>
Value copyLeaf(const Object& leaf, Content Object::*content, bool isMutable) {
    return isMutable || leaf.isMutable ? Value::adopt(new Object(leaf.*content, isMutable)) : Value::retain(&leaf);
}

Value copyArray(const CFArrayObject& array, CFOptionFlags mutability, int depth) {
    auto copy =
        CFRef<CFMutableArrayRef>::adopt(new CFArrayObject(Elements::Objects, mutability != kCFPropertyListImmutable));
    for (const void* value : array.values) {
        if (array.elements != Elements::Objects || !copy.get()->append(copyValue(value, mutability, depth).get())) {
            return nullptr;
        }
    }
    return Value::adopt(copy.leak());
}

Value copyDictionary(const CFDictionaryObject& dictionary, CFOptionFlags mutability, int depth) {
    if (dictionary.keys != Elements::Objects || dictionary.values != Elements::Objects) {
        return nullptr;
    }
    auto copy = CFRef<CFMutableDictionaryRef>::adopt(
        new CFDictionaryObject(Elements::Objects, Elements::Objects, mutability != kCFPropertyListImmutable));
    for (const auto& [key, value] : dictionary.entries) {
        const Value copied = copyValue(value, mutability, depth);
        const CFStringObject* name = checked(static_cast<CFStringRef>(key));
        if (!copied || !name) {
            return nullptr;
        }
        copy.get()->insert(copyLeaf(*name, &CFStringObject::text, false).get(), copied.get(), true);
    }
    return Value::adopt(copy.leak());
}

/// Nothing when the value, or one below it, is of no property-list kind. Deeper than a property list may be is
/// nothing too, which also ends at containers that hold themselves.
Value copyValue(CFTypeRef value, CFOptionFlags mutability, int depth) {
    if (!value) {
        return nullptr;
    }
    const bool mutableLeaves = mutability == kCFPropertyListMutableContainersAndLeaves;
    switch (const auto* object = static_cast<const CFObject*>(value); object->kind()) {
        case ObjectKind::String:
            return copyLeaf(*static_cast<const CFStringObject*>(object), &CFStringObject::text, mutableLeaves);
        case ObjectKind::Data:
            return copyLeaf(*static_cast<const CFDataObject*>(object), &CFDataObject::content, mutableLeaves);
        case ObjectKind::Number:
        case ObjectKind::Bool:
            return Value::retain(value);  // nobody can change them
        case ObjectKind::Array:
            return depth < kPropertyListMaximumDepth
                       ? copyArray(*static_cast<const CFArrayObject*>(object), mutability, depth + 1)
                       : nullptr;
        case ObjectKind::Dictionary:
            return depth < kPropertyListMaximumDepth
                       ? copyDictionary(*static_cast<const CFDictionaryObject*>(object), mutability, depth + 1)
                       : nullptr;
        default:
            return nullptr;
    }
}

}  // namespace

CFTypeRef CFPropertyListCreateDeepCopy(CFAllocatorRef, CFTypeRef propertyList, CFOptionFlags mutability) {
    return copyValue(propertyList, mutability, 0).leak();
}
