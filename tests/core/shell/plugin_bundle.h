// The real bundle, loaded as a print dialog loads it.
#pragma once

#include "core/shell/plugin_factory.h"
#include "platform/foundation/CFBundle.h"
#include "tests/platform/printing/printing_fixture.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>

inline const std::filesystem::path kPluginPath = stagePath("plugins/TavroFeatures.plugin");

/// The bundle, for the whole program; null when it cannot be opened.
inline CFPlugInRef plugIn() {
    static const auto bundle = CFRef<CFPlugInRef>::adopt(CFPlugInCreate(
        nullptr, CFRef<CFURLRef>::adopt(
                     CFURLCreateWithFileSystemPath(nullptr, cf(kPluginPath.string()).get(), kCFURLPOSIXPathStyle, true))
                     .get()));
    return bundle.get();
}

inline CFRef<CFUUIDRef> uuid(CFStringRef text) {
    return CFRef<CFUUIDRef>::adopt(CFUUIDCreateFromString(nullptr, text));
}

inline PlugInInstance* createInstance(CFStringRef type = kPDEPlugInTypeID) {
    EXPECT_NE(plugIn(), nullptr) << text(CFBundleGetLastError());
    return static_cast<PlugInInstance*>(CFPlugInInstanceCreate(nullptr, uuid(kPDEFactoryID).get(), uuid(type).get()));
}

/// The dialog extension interface of an instance; null when it is refused.
inline PMPlugInHeaderInterface* queryInterface(PlugInInstance* instance) {
    void* interface = nullptr;
    instance->table->QueryInterface(instance, CFUUIDGetUUIDBytes(uuid(kPDEInterfaceID).get()), &interface);
    return static_cast<PMPlugInHeaderInterface*>(interface);
}
