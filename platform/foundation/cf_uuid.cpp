#include "platform/foundation/CFUUID.h"

#include "platform/foundation/objects.h"

#include <QHashFunctions>
#include <QUuid>

#include <algorithm>
#include <array>
#include <map>

namespace {
using Bytes = std::array<UInt8, 16>;
}

struct CFUUIDObject final : CFObject {
    static constexpr ObjectKind kKind = ObjectKind::UUID;

    explicit CFUUIDObject(const Bytes& value) : CFObject(kKind), bytes(value) {}
    bool equals(const CFObject& other) const override { return bytes == static_cast<const CFUUIDObject&>(other).bytes; }
    CFHashCode hash() const override { return qHashBits(bytes.data(), bytes.size()); }

    const Bytes bytes;
};

CFUUIDRef CFUUIDCreateFromString(CFAllocatorRef, CFStringRef text) {
    // QUuid also takes braces and other lengths; the canonical text is what it writes itself.
    const QString canonical = textOf(text).toLower();
    const QUuid uuid = QUuid::fromString(canonical);
    if (uuid.toString(QUuid::WithoutBraces) != canonical) {
        return nullptr;
    }
    const QByteArray raw = uuid.toRfc4122();
    Bytes bytes;
    std::copy(raw.begin(), raw.end(), bytes.begin());
    return new CFUUIDObject(bytes);
}

CFUUIDRef CFUUIDCreateFromUUIDBytes(CFAllocatorRef, CFUUIDBytes bytes) {
    return new CFUUIDObject(std::to_array(bytes.bytes));
}

CFUUIDRef CFUUIDGetConstantUUIDWithBytes(CFAllocatorRef, UInt8 byte0, UInt8 byte1, UInt8 byte2, UInt8 byte3,
                                         UInt8 byte4, UInt8 byte5, UInt8 byte6, UInt8 byte7, UInt8 byte8, UInt8 byte9,
                                         UInt8 byte10, UInt8 byte11, UInt8 byte12, UInt8 byte13, UInt8 byte14,
                                         UInt8 byte15) {
    static auto& constants = *new std::map<Bytes, CFUUIDRef>;
    const Bytes bytes = {byte0, byte1, byte2,  byte3,  byte4,  byte5,  byte6,  byte7,
                         byte8, byte9, byte10, byte11, byte12, byte13, byte14, byte15};
    CFUUIDRef& uuid = constants[bytes];
    if (!uuid) {
        uuid = new CFUUIDObject(bytes);
        uuid->makeImmortal();
    }
    return uuid;
}

CFUUIDBytes CFUUIDGetUUIDBytes(CFUUIDRef uuid) {
    CFUUIDBytes result = {};
    if (const CFUUIDObject* object = checked(uuid)) {
        std::copy(object->bytes.begin(), object->bytes.end(), result.bytes);
    }
    return result;
}
