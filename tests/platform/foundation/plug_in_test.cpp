// The plug-in registry: from a bundle on disk to an instance and back.

#include "platform/foundation/CFPlugIn.h"
#include "tests/support/cf_values.h"
#include "tests/support/test_bundle.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* kFactory = "11111111-2222-3333-4444-555555555555";
constexpr const char* kType = "AAAAAAAA-BBBB-CCCC-DDDD-EEEEEEEEEEEE";

CFRef<CFUUIDRef> uuid(const char* text) {
    return CFRef<CFUUIDRef>::adopt(CFUUIDCreateFromString(nullptr, makeCFString(text).get()));
}

class PlugIn : public testing::Test {
protected:
    void declare(const std::string& factory, const std::string& function) const {
        files_.add("Info.plist",
                   "<plist><dict><key>CFBundleIdentifier</key><string>com.tavro.test.plugin</string>"
                   "<key>CFBundleExecutable</key><string>TestModule</string>"
                   "<key>CFPlugInFactories</key><dict><key>" +
                       factory + "</key><string>" + function + "</string></dict><key>CFPlugInTypes</key><dict><key>" +
                       kType + "</key><array><string>" + factory +
                       "</string><string>no UUID</string></array></dict></dict></plist>");
        std::filesystem::create_directories(files_.contents() / "Linux");
        std::filesystem::copy_file(TEST_MODULE, files_.contents() / "Linux" / "TestModule",
                                   std::filesystem::copy_options::skip_existing);
    }
    CFRef<CFPlugInRef> create() const {
        return CFRef<CFPlugInRef>::adopt(
            CFPlugInCreate(nullptr, makeCFURL(files_.contents().parent_path().string()).get()));
    }
    static CFBundleRef living() { return CFBundleGetBundleWithIdentifier(CFSTR("com.tavro.test.plugin")); }

    TestBundle files_;
};

TEST_F(PlugIn, InstancesKeepTheirBundleAlive) {
    declare(kFactory, "TestFactory");
    auto plugIn = create();
    ASSERT_TRUE(plugIn) << textOfCF(CFBundleGetLastError());
    const auto found = CFRef<CFArrayRef>::adopt(
        CFPlugInFindFactoriesForPlugInTypeInPlugIn(uuid("aaaaaaaa-bbbb-cccc-dddd-eeeeeeeeeeee").get(), plugIn.get()));
    ASSERT_EQ(CFArrayGetCount(found.get()), 1);
    const auto* factory = static_cast<CFUUIDRef>(CFArrayGetValueAtIndex(found.get(), 0));
    EXPECT_TRUE(CFEqual(factory, uuid(kFactory).get()));
    EXPECT_EQ(CFArrayGetCount(CFRef<CFArrayRef>::adopt(
                                  CFPlugInFindFactoriesForPlugInTypeInPlugIn(uuid(kFactory).get(), plugIn.get()))
                                  .get()),
              0);

    EXPECT_EQ(CFPlugInInstanceCreate(nullptr, factory, uuid(kFactory).get()), nullptr) << "another type";
    void* instance = CFPlugInInstanceCreate(nullptr, factory, uuid(kType).get());
    ASSERT_NE(instance, nullptr) << textOfCF(CFBundleGetLastError());
    const IUnknownVTable* interface = *static_cast<IUnknownVTable**>(instance);
    void* same = nullptr;
    EXPECT_EQ(interface->QueryInterface(instance, CFUUIDGetUUIDBytes(IUnknownUUID()), &same), 0);
    EXPECT_EQ(same, instance);
    EXPECT_EQ(CFPlugInGetInstanceCount(factory), 1);

    void* second = CFPlugInInstanceCreate(nullptr, factory, uuid(kType).get());
    EXPECT_EQ(CFPlugInGetInstanceCount(factory), 2);
    plugIn = nullptr;
    EXPECT_NE(living(), nullptr);
    interface->Release(instance);
    EXPECT_NE(living(), nullptr);
    interface->Release(second);
    EXPECT_EQ(living(), nullptr);
    EXPECT_EQ(CFPlugInGetInstanceCount(factory), 0);
    EXPECT_EQ(CFPlugInInstanceCreate(nullptr, factory, uuid(kType).get()), nullptr) << "its bundle has gone";

    CFPlugInRemoveInstanceForFactory(factory);
    EXPECT_EQ(CFPlugInGetInstanceCount(factory), 0);
}

TEST_F(PlugIn, OpenedTwiceDeclaresOnce) {
    declare(kFactory, "TestFactory");
    const auto first = create();
    const auto second = create();
    EXPECT_EQ(first.get(), second.get());
    void* instance = CFPlugInInstanceCreate(nullptr, uuid(kFactory).get(), uuid(kType).get());
    ASSERT_NE(instance, nullptr);
    EXPECT_EQ((*static_cast<IUnknownVTable**>(instance))->Release(instance), 0u);
    EXPECT_EQ(CFGetRetainCount(first.get()), 2);
}

TEST_F(PlugIn, ABrokenDeclarationIsRefused) {
    declare("no UUID", "TestFactory");
    EXPECT_FALSE(create());
    EXPECT_NE(textOfCF(CFBundleGetLastError()).find("the factory \"no UUID\""), std::string::npos);
    EXPECT_EQ(living(), nullptr);

    declare(kFactory, "NoSuchFunction");
    const auto plugIn = create();
    ASSERT_TRUE(plugIn);
    EXPECT_EQ(CFPlugInInstanceCreate(nullptr, uuid(kFactory).get(), uuid(kType).get()), nullptr);
    EXPECT_EQ(CFPlugInInstanceCreate(nullptr, nullptr, nullptr), nullptr);
}

}  // namespace
