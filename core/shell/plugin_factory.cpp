#include "core/shell/plugin_factory.h"

#include "core/shell/shell_panel.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"

#include <cstdlib>
#include <utility>

namespace {

constexpr HRESULT kUnexpected = static_cast<HRESULT>(0x8000FFFF);

// ---- The interface object

OSStatus Retain(PMPlugInHeaderInterface* interface) {
    if (interface != nullptr) {
        ++interface->referenceCount;
    }
    return noErr;
}

OSStatus Release(PMPlugInHeaderInterface** variable) {
    PMPlugInHeaderInterface* interface = std::exchange(*variable, nullptr);
    if (interface != nullptr && --interface->referenceCount == 0) {
        std::free(interface->interface.table);
        std::free(interface);
    }
    return noErr;
}

OSStatus GetAPIVersion(PMPlugInHeaderInterface*, PMPlugInAPIVersion* version) {
    *version = {1, 0, 1, 0};
    return noErr;
}

/// Always 0: without memory the object, or its table, is null.
OSStatus CreatePlugInInterface(PlugInIntf** interface) {
    auto* object = static_cast<PMPlugInHeaderInterface*>(std::calloc(1, sizeof(PMPlugInHeaderInterface)));
    *interface = nullptr;
    if (object != nullptr) {
        object->referenceCount = 1;
        object->interface.table = static_cast<PDEInterfaceTable*>(std::calloc(1, sizeof(PDEInterfaceTable)));
        if (object->interface.table != nullptr) {
            *object->interface.table = {Retain, Release, GetAPIVersion, kShellOperations};
        }
        *interface = &object->interface;
    }
    return noErr;
}

// ---- The root object

HRESULT QueryInterface(void* opaque, REFIID interface, LPVOID* out) {
    auto* instance = static_cast<PlugInInstance*>(opaque);
    const auto wanted = CFRef<CFUUIDRef>::adopt(CFUUIDCreateFromUUIDBytes(kCFAllocatorDefault, interface));
    const auto dialogExtension = CFRef<CFUUIDRef>::adopt(CFUUIDCreateFromString(kCFAllocatorDefault, kPDEInterfaceID));
    HRESULT result = kUnexpected;
    if (CFEqual(wanted.get(), IUnknownUUID())) {
        instance->table->AddRef(instance);
        *out = instance;
        result = 0;
    } else if (CFEqual(wanted.get(), dialogExtension.get())) {
        PlugInIntf* object = nullptr;
        result = CreatePlugInInterface(&object);
        if (result == 0) {
            *out = object;
        }
    } else {
        *out = nullptr;
        result = kNoSuchInterface;
    }
    return result;
}

ULONG IUnknownAddRef(void* opaque) {
    auto* instance = static_cast<PlugInInstance*>(opaque);
    return instance == nullptr ? 0 : ++instance->referenceCount;
}

ULONG IUnknownRelease(void* opaque) {
    auto* instance = static_cast<PlugInInstance*>(opaque);
    if (instance == nullptr || instance->referenceCount == 0) {
        return 0;
    }
    if (--instance->referenceCount > 0) {
        return instance->referenceCount;
    }
    const auto factory = CFRef<CFUUIDRef>::adopt(instance->factory);
    try {
        CFPlugInRemoveInstanceForFactory(factory.get());
    } catch (...) {  // the instance goes whatever the registry thinks of it
    }
    std::free(instance);
    return 0;
}

/// For the instance to own. A refusal does not give it back: no dialog asks for a second type.
CFUUIDRef CreateFactoryUUID() {
    return CFUUIDCreateFromString(kCFAllocatorDefault, kPDEFactoryID);
}

}  // namespace

void* TavroPDEPluginFactory(CFAllocatorRef, CFUUIDRef type) {
    const auto served = CFRef<CFUUIDRef>::adopt(CFUUIDCreateFromString(kCFAllocatorDefault, kPDEPlugInTypeID));
    const CFUUIDRef factory = CreateFactoryUUID();
    if (!CFEqual(type, served.get())) {
        return nullptr;
    }
    auto* instance = static_cast<PlugInInstance*>(std::calloc(1, sizeof(PlugInInstance)));
    if (instance == nullptr) {
        return nullptr;
    }
    instance->base = {nullptr, QueryInterface, IUnknownAddRef, IUnknownRelease};
    instance->table = &instance->base;
    instance->factory = factory;
    instance->referenceCount = 1;
    CFPlugInAddInstanceForFactory(factory);
    return instance;
}
