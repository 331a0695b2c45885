#include "tests/core/shell/plugin_bundle.h"

#include <algorithm>
#include <set>
#include <sstream>

namespace {

CFIndex announced() {
    return CFPlugInGetInstanceCount(uuid(kPDEFactoryID).get());
}

TEST(PlugInFactory, ServesTheDialogExtensionTypeOnly) {
    ASSERT_NE(plugIn(), nullptr);
    const auto factories =
        CFRef<CFArrayRef>::adopt(CFPlugInFindFactoriesForPlugInTypeInPlugIn(uuid(kPDEPlugInTypeID).get(), plugIn()));
    ASSERT_EQ(CFArrayGetCount(factories.get()), 1);
    EXPECT_TRUE(CFEqual(CFArrayGetValueAtIndex(factories.get(), 0), uuid(kPDEFactoryID).get()));

    EXPECT_EQ(createInstance(kPDEInterfaceID), nullptr);
    const auto factory = reinterpret_cast<CFPlugInFactoryFunction>(
        CFBundleGetFunctionPointerForName(plugIn(), CFSTR("TavroPDEPluginFactory")));
    ASSERT_NE(factory, nullptr);
    EXPECT_EQ(factory(nullptr, uuid(kPDEInterfaceID).get()), nullptr);
    EXPECT_EQ(announced(), 0);

    PlugInInstance* instance = createInstance();
    ASSERT_NE(instance, nullptr);
    EXPECT_EQ(instance->table, &instance->base);
    EXPECT_EQ(instance->table->reserved, nullptr);
    EXPECT_EQ(announced(), 1);
    EXPECT_EQ(instance->table->Release(instance), 0u);
    EXPECT_EQ(announced(), 0);
}

TEST(PlugInFactory, AnInstanceAnswersForItselfAndForTheExtension) {
    PlugInInstance* instance = createInstance();
    ASSERT_NE(instance, nullptr);
    IUnknownVTable& unknown = *instance->table;
    void* out = nullptr;
    EXPECT_EQ(unknown.QueryInterface(instance, CFUUIDGetUUIDBytes(IUnknownUUID()), &out), 0);
    EXPECT_EQ(out, instance);
    EXPECT_EQ(instance->referenceCount, 2u);

    EXPECT_EQ(unknown.QueryInterface(instance, CFUUIDGetUUIDBytes(uuid(kPDEPlugInTypeID).get()), &out),
              kNoSuchInterface);
    EXPECT_EQ(out, nullptr);

    PMPlugInHeaderInterface* first = queryInterface(instance);
    PMPlugInHeaderInterface* second = queryInterface(instance);
    ASSERT_NE(first, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(first->referenceCount, 1u);
    EXPECT_EQ(instance->referenceCount, 2u) << "the interface lives by its own count";
    second->interface.table->Release(&second);

    EXPECT_EQ(unknown.AddRef(instance), 3u);
    EXPECT_EQ(unknown.Release(instance), 2u);
    EXPECT_EQ(unknown.AddRef(nullptr), 0u);
    EXPECT_EQ(unknown.Release(nullptr), 0u);
    instance->referenceCount = 0;
    EXPECT_EQ(unknown.Release(instance), 0u) << "no underflow";
    EXPECT_EQ(instance->referenceCount, 0u);
    EXPECT_EQ(announced(), 1);
    instance->referenceCount = 1;
    EXPECT_EQ(unknown.Release(instance), 0u);
    EXPECT_EQ(announced(), 0);

    // The interface outlives its instance.
    PDEInterfaceTable& table = *first->interface.table;
    PMPlugInAPIVersion version{9, 9, 9, 9};
    EXPECT_EQ(table.GetAPIVersion(first, &version), noErr);
    EXPECT_EQ(version.buildVersionMajor, 1u);
    EXPECT_EQ(version.buildVersionMinor, 0u);
    EXPECT_EQ(version.baseVersionMajor, 1u);
    EXPECT_EQ(version.baseVersionMinor, 0u);
    EXPECT_EQ(table.Retain(first), noErr);
    PMPlugInHeaderInterface* other = first;
    EXPECT_EQ(table.Release(&other), noErr);
    EXPECT_EQ(other, nullptr) << "cleared although an owner is left";
    EXPECT_EQ(first->referenceCount, 1u);
    const auto retain = table.Retain;
    const auto release = table.Release;
    EXPECT_EQ(release(&first), noErr);
    EXPECT_EQ(retain(nullptr), noErr);
    EXPECT_EQ(release(&other), noErr);
}

TEST(PlugInFactory, ThePanelsOfferTheOperationsButNoCounts) {
    for (const char* name : {"GetAdvancedPanelInterface", "GetAboutPanelInterface"}) {
        const auto getter =
            reinterpret_cast<PanelInterfaceGetter>(CFBundleGetFunctionPointerForName(plugIn(), cf(name).get()));
        ASSERT_NE(getter, nullptr) << name;
        PlugInIntf* interface = nullptr;
        EXPECT_EQ(getter(&interface), noErr);
        EXPECT_EQ(interface->table->Retain, nullptr);
        EXPECT_EQ(interface->table->Release, nullptr);
        EXPECT_EQ(interface->table->GetAPIVersion, nullptr);
        EXPECT_NE(interface->table->operations.Prologue, nullptr);
        EXPECT_NE(interface->table->operations.Terminate, nullptr);
        std::free(interface->table);
        std::free(interface);
    }
}

TEST(PlugInFactory, TheBundleExportsItsEntryPointsOnly) {
    const auto [symbols, status] =
        run("nm -D --defined-only -j '" + (kPluginPath / "Contents/Linux/TavroFeatures").string() + "'");
    ASSERT_EQ(status, 0) << symbols;
    std::istringstream lines(symbols);
    int entries = 0;
    for (std::string name; std::getline(lines, name); ++entries) {
        EXPECT_TRUE(name == "TavroPDEPluginFactory" || name == "TavroPDECopyExtensionGetters" ||
                    name == "CocoaInitializeCocoa" || name == "CocoaEditWatermark" ||
                    (name.starts_with("Get") && name.ends_with("PanelInterface")))
            << name;
    }
    EXPECT_EQ(entries, 13);
}

}  // namespace
