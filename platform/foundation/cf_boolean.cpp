#include "platform/foundation/CFNumber.h"
#include "platform/foundation/objects.h"

struct CFBooleanObject final : CFObject {
    static constexpr ObjectKind kKind = ObjectKind::Bool;

    constexpr explicit CFBooleanObject(bool truth) : CFObject(kKind, kImmortal), value(truth) {}

    const bool value;
};

namespace {

/// Storage that is there before the first static constructor and after the last static destructor has run.
union Storage {
    constexpr explicit Storage(bool value) : object(value) {}
    constexpr ~Storage() {}

    CFBooleanObject object;
};

constinit Storage trueStorage(true);
constinit Storage falseStorage(false);

}  // namespace

constinit const CFBooleanRef kCFBooleanTrue = &trueStorage.object;
constinit const CFBooleanRef kCFBooleanFalse = &falseStorage.object;

CFTypeID CFBooleanGetTypeID() {
    return static_cast<CFTypeID>(ObjectKind::Bool);
}

Boolean CFBooleanGetValue(CFBooleanRef boolean) {
    const CFBooleanObject* object = checked(boolean);
    return object && object->value;
}
