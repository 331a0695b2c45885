#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/collections.h"

namespace {

using Value = CFRef<CFTypeRef>;

Value copyValue(CFTypeRef value, CFOptionFlags mutability, int depth);

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
        if (!copied || !checked(static_cast<CFStringRef>(key))) {
            return nullptr;
        }
        copy.get()->insert(key, copied.get(), true);
    }
    return Value::adopt(copy.leak());
}

/// Nothing when the value, or one below it, is of no property-list kind. Deeper than a property list may be is
/// nothing too, which also ends at containers that hold themselves.
Value copyValue(CFTypeRef value, CFOptionFlags mutability, int depth) {
    if (!value) {
        return nullptr;
    }
    switch (const auto* object = static_cast<const CFObject*>(value); object->kind()) {
        case ObjectKind::String:
            return mutability == kCFPropertyListMutableContainersAndLeaves
                       ? Value::adopt(makeString(static_cast<const CFStringObject*>(object)->text).leak())
                       : Value::retain(value);
        case ObjectKind::Number:
        case ObjectKind::Bool:
        case ObjectKind::Data:
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
