#include "platform/foundation/CFPlugIn.h"

#include "platform/foundation/CFString.h"
#include "platform/foundation/bundle.h"
#include "platform/foundation/collections.h"
#include "platform/foundation/text_position.h"

#include <algorithm>
#include <list>
#include <optional>

namespace {

struct Factory {
    CFRef<CFUUIDRef> uuid;
    CFRef<CFStringRef> function;
    CFBundleRef bundle;        // the one that declares it; it takes the factory along when it goes
    CFRef<CFBundleRef> inUse;  // the same bundle, owned while there are instances
    CFIndex instances = 0;
};

std::list<Factory>& factories() {
    static auto& all = *new std::list<Factory>;
    return all;
}

Factory* findFactory(CFUUIDRef uuid) {
    const auto found = std::find_if(factories().begin(), factories().end(),
                                    [uuid](const Factory& factory) { return CFEqual(factory.uuid.get(), uuid); });
    return found == factories().end() ? nullptr : &*found;
}

CFRef<CFUUIDRef> parseUUID(const void* text) {
    return CFRef<CFUUIDRef>::adopt(CFUUIDCreateFromString(nullptr, static_cast<CFStringRef>(text)));
}

/// A dictionary of Info.plist itself: identifiers have no translation.
const CFDictionaryObject* infoDictionary(CFBundleRef bundle, CFStringRef key) {
    return checked(static_cast<CFDictionaryRef>(CFDictionaryGetValue(bundle->info.get(), key)));
}

/// The factories that the bundle declares; nothing, with the reason as the last error, when one is malformed.
std::optional<std::list<Factory>> declaredFactories(CFBundleRef bundle) {
    std::list<Factory> declared;
    const CFDictionaryObject* functions = infoDictionary(bundle, CFSTR("CFPlugInFactories"));
    if (!functions) {
        return declared;
    }
    for (const auto& [key, value] : functions->entries) {
        CFRef<CFUUIDRef> uuid = parseUUID(key);
        auto function = CFRef<CFStringRef>::retain(checked(static_cast<CFStringRef>(value)));
        if (!uuid || !function) {
            setLastBundleError(bundle->inContents(QStringLiteral("Info.plist: ")) +
                               messageOf("the factory \"%1\" needs a UUID as its key and a function's name",
                                         {textOf(static_cast<CFStringRef>(key)).toStdString()}));
            return std::nullopt;
        }
        declared.push_back({std::move(uuid), std::move(function), bundle, nullptr});
    }
    return declared;
}

}  // namespace

void forgetFactories(const CFBundleObject& bundle) {
    factories().remove_if([&bundle](const Factory& factory) { return factory.bundle == &bundle; });
}

CFUUIDRef IUnknownUUID() {
    return CFUUIDGetConstantUUIDWithBytes(nullptr, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xC0, 0x00, 0x00,
                                          0x00, 0x00, 0x00, 0x00, 0x46);
}

CFPlugInRef CFPlugInCreate(CFAllocatorRef, CFURLRef url) {
    auto bundle = CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, url));
    if (!bundle) {
        return nullptr;
    }
    std::optional<std::list<Factory>> declared = declaredFactories(bundle.get());
    if (!declared) {
        return nullptr;
    }
    // Of two bundles with one factory the first keeps it: its instances may be alive.
    declared->remove_if([](const Factory& factory) { return findFactory(factory.uuid.get()) != nullptr; });
    factories().splice(factories().end(), *declared);
    return bundle.leak();
}

CFArrayRef CFPlugInFindFactoriesForPlugInTypeInPlugIn(CFUUIDRef type, CFPlugInRef plugIn) {
    auto found = CFRef<CFMutableArrayRef>::adopt(new CFArrayObject(Elements::Objects, false));
    const CFDictionaryObject* types = checked(plugIn) ? infoDictionary(plugIn, CFSTR("CFPlugInTypes")) : nullptr;
    for (const auto& [key, value] : types ? types->entries : CFDictionaryObject::Entries()) {
        const CFArrayObject* names = checked(static_cast<CFArrayRef>(value));
        if (names && CFEqual(parseUUID(key).get(), type)) {
            for (const void* name : names->values) {
                found.get()->append(parseUUID(name).get());
            }
        }
    }
    return found.leak();
}

void* CFPlugInInstanceCreate(CFAllocatorRef allocator, CFUUIDRef factory, CFUUIDRef type) {
    const Factory* known = findFactory(factory);
    if (!known) {
        return nullptr;
    }
    const auto bundle = CFRef<CFBundleRef>::retain(known->bundle);  // while its function runs
    void* function = CFBundleGetFunctionPointerForName(bundle.get(), known->function.get());
    return function ? reinterpret_cast<CFPlugInFactoryFunction>(function)(allocator, type) : nullptr;
}

void CFPlugInAddInstanceForFactory(CFUUIDRef factory) {
    if (Factory* known = findFactory(factory); known && known->instances++ == 0) {
        known->inUse = CFRef<CFBundleRef>::retain(known->bundle);
    }
}

void CFPlugInRemoveInstanceForFactory(CFUUIDRef factory) {
    Factory* known = findFactory(factory);
    if (known && known->instances > 0 && --known->instances == 0) {
        // Out of the registry first: without an owner the bundle goes, and takes the factory along.
        const CFRef<CFBundleRef> bundle = std::move(known->inUse);
    }
}

CFIndex CFPlugInGetInstanceCount(CFUUIDRef factory) {
    const Factory* known = findFactory(factory);
    return known ? known->instances : 0;
}
