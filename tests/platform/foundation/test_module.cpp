// The executable of the test bundle: a plain function, and a factory whose instances count themselves.

#include "platform/foundation/CFPlugIn.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"

namespace {

CFRef<CFUUIDRef> uuid(CFStringRef text) {
    return CFRef<CFUUIDRef>::adopt(CFUUIDCreateFromString(nullptr, text));
}
CFRef<CFUUIDRef> factoryUUID() {
    return uuid(CFSTR("11111111-2222-3333-4444-555555555555"));
}
CFRef<CFUUIDRef> typeUUID() {
    return uuid(CFSTR("AAAAAAAA-BBBB-CCCC-DDDD-EEEEEEEEEEEE"));
}

struct Instance {
    IUnknownVTable* interface;
    ULONG count;
};

HRESULT query(void* instance, REFIID wanted, LPVOID* out) {
    const auto asked = CFRef<CFUUIDRef>::adopt(CFUUIDCreateFromUUIDBytes(nullptr, wanted));
    *out = CFEqual(asked.get(), IUnknownUUID()) ? instance : nullptr;
    return *out ? 0 : static_cast<HRESULT>(0x80000004);
}

ULONG addRef(void* instance) {
    return ++static_cast<Instance*>(instance)->count;
}

ULONG release(void* instance) {
    const ULONG left = --static_cast<Instance*>(instance)->count;
    if (left == 0) {
        delete static_cast<Instance*>(instance);
        CFPlugInRemoveInstanceForFactory(factoryUUID().get());
    }
    return left;
}

IUnknownVTable table = {nullptr, query, addRef, release};

}  // namespace

extern "C" int TestFunction() {
    return 42;
}

extern "C" void* TestFactory(CFAllocatorRef, CFUUIDRef type) {
    if (!CFEqual(type, typeUUID().get())) {
        return nullptr;
    }
    CFPlugInAddInstanceForFactory(factoryUUID().get());
    return new Instance{&table, 1};
}
