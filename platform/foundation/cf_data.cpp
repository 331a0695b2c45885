#include "platform/foundation/CFCollections.h"
#include "platform/foundation/large_buffer.h"
#include "platform/foundation/objects.h"

#include <QHashFunctions>

#include <cstdio>

namespace {

/// The data to change, or null with a line that says who tried.
CFDataObject* changeable(CFMutableDataRef data, const char* caller) {
    CFDataObject* object = checked(data);
    if (object && !object->isMutable) {
        std::fprintf(stderr, "%s: this data cannot be changed\n", caller);
        return nullptr;
    }
    return object;
}

}  // namespace

bool CFDataObject::equals(const CFObject& other) const {
    return bytes() == static_cast<const CFDataObject&>(other).bytes();
}

CFHashCode CFDataObject::hash() const {
    return qHash(bytes());
}

QByteArray& CFDataObject::bytes() const {
    if (const auto* base64 = std::get_if<Base64Text>(&content)) {
        content = base64->decoded();
    }
    return std::get<QByteArray>(content);
}

CFTypeID CFDataGetTypeID() {
    return static_cast<CFTypeID>(ObjectKind::Data);
}

CFDataRef CFDataCreate(CFAllocatorRef, const UInt8* bytes, CFIndex length) {
    if (length < 0 || (length > 0 && !bytes)) {
        return nullptr;
    }
    return new CFDataObject(QByteArray(reinterpret_cast<const char*>(bytes), length));
}

CFIndex CFDataGetLength(CFDataRef data) {
    const CFDataObject* object = checked(data);
    return object ? object->bytes().size() : 0;
}

const UInt8* CFDataGetBytePtr(CFDataRef data) {
    const CFDataObject* object = checked(data);
    return object && !object->bytes().isEmpty() ? reinterpret_cast<const UInt8*>(object->bytes().constData()) : nullptr;
}

CFMutableDataRef CFDataCreateMutable(CFAllocatorRef, CFIndex capacity) {
    QByteArray bytes;
    reserveLargeBuffer(&bytes, capacity);
    return new CFDataObject(std::move(bytes), true);
}

void CFDataAppendBytes(CFMutableDataRef data, const UInt8* bytes, CFIndex length) {
    CFDataObject* object = changeable(data, __func__);
    if (object && bytes && length > 0) {
        object->bytes().append(reinterpret_cast<const char*>(bytes), length);
    }
}

UInt8* CFDataGetMutableBytePtr(CFMutableDataRef data) {
    CFDataObject* object = changeable(data, __func__);
    return object && !object->bytes().isEmpty() ? reinterpret_cast<UInt8*>(object->bytes().data()) : nullptr;
}

void CFDataIncreaseLength(CFMutableDataRef data, CFIndex extraLength) {
    CFDataObject* object = changeable(data, __func__);
    if (object && extraLength > 0) {
        object->bytes().append(extraLength, '\0');
    }
}
