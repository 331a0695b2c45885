#include "platform/foundation/CFBase.h"

#include "platform/foundation/objects.h"

namespace {
const CFObject* objectOf(CFTypeRef reference) {
    return static_cast<const CFObject*>(reference);
}
}  // namespace

CFTypeRef CFRetain(CFTypeRef object) {
    if (object) {
        objectOf(object)->retain();
    }
    return object;
}

void CFRelease(CFTypeRef object) {
    if (object) {
        objectOf(object)->release();
    }
}

CFIndex CFGetRetainCount(CFTypeRef object) {
    return object ? objectOf(object)->count() : 0;
}

CFTypeID CFGetTypeID(CFTypeRef object) {
    return object ? static_cast<CFTypeID>(objectOf(object)->kind()) : 0;
}

Boolean CFEqual(CFTypeRef left, CFTypeRef right) {
    if (left == right) {
        return true;
    }
    return left && right && objectOf(left)->kind() == objectOf(right)->kind() &&
           objectOf(left)->equals(*objectOf(right));
}
