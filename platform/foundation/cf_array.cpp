#include "platform/foundation/collections.h"

#include <algorithm>
#include <cstdio>

struct CFArrayCallBacks {};
extern const CFArrayCallBacks kCFTypeArrayCallBacks = {};

namespace {

/// The array when it can be changed, else null, and a line on standard error for one that cannot.
CFArrayObject* changeable(CFMutableArrayRef array, const char* function) {
    CFArrayObject* object = checked(array);
    if (object && !object->isMutable) {
        std::fprintf(stderr, "%s: this array cannot be changed\n", function);
        return nullptr;
    }
    return object;
}

}  // namespace

CFArrayObject::~CFArrayObject() {
    for (const void* value : values) {
        dropElement(elements, value);
    }
}

bool CFArrayObject::equals(const CFObject& other) const {
    const auto& right = static_cast<const CFArrayObject&>(other);
    return elements == right.elements &&
           std::equal(values.begin(), values.end(), right.values.begin(), right.values.end(),
                      [this](const void* mine, const void* theirs) { return equalElements(elements, mine, theirs); });
}

bool CFArrayObject::append(const void* value) {
    if (isNoElement(elements, value)) {
        return false;
    }
    keepElement(elements, value);
    values.push_back(value);
    return true;
}

CFTypeID CFArrayGetTypeID() {
    return static_cast<CFTypeID>(ObjectKind::Array);
}

CFArrayRef CFArrayCreate(CFAllocatorRef, const void** values, CFIndex count, const CFArrayCallBacks* callbacks) {
    if (count < 0 || (count > 0 && !values)) {
        return nullptr;
    }
    auto array =
        CFRef<CFMutableArrayRef>::adopt(new CFArrayObject(callbacks ? Elements::Objects : Elements::Pointers, false));
    for (CFIndex i = 0; i < count; ++i) {
        if (!array.get()->append(values[i])) {
            return nullptr;
        }
    }
    return array.leak();
}

CFMutableArrayRef CFArrayCreateMutable(CFAllocatorRef, CFIndex, const CFArrayCallBacks* callbacks) {
    return new CFArrayObject(callbacks ? Elements::Objects : Elements::Pointers, true);
}

CFIndex CFArrayGetCount(CFArrayRef array) {
    const CFArrayObject* object = checked(array);
    return object ? CFIndex(object->values.size()) : 0;
}

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    const CFArrayObject* object = checked(array);
    return object && index >= 0 && index < CFIndex(object->values.size()) ? object->values[std::size_t(index)]
                                                                          : nullptr;
}

void CFArrayAppendValue(CFMutableArrayRef array, const void* value) {
    if (CFArrayObject* object = changeable(array, __func__)) {
        object->append(value);
    }
}

void CFArrayRemoveValueAtIndex(CFMutableArrayRef array, CFIndex index) {
    CFArrayObject* object = changeable(array, __func__);
    if (object && index >= 0 && index < CFIndex(object->values.size())) {
        const void* removed = object->values[std::size_t(index)];
        object->values.erase(object->values.begin() + index);
        dropElement(object->elements, removed);
    }
}
