#include "core/features/feature_database.h"

#include "tests/core/features/profile_fixture.h"
#include "tests/platform/printing/printing_fixture.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

constexpr char kProfile[] = R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>
<key>Features</key><dict>
  <key>Staple</key><dict>
    <key>Properties</key><dict><key>Shown</key><false/><key>Count</key><integer>0</integer></dict>
    <key>Syntax</key><dict>
      <key>Keyword</key><dict>
        <key>None</key><dict><key>Properties</key><dict><key>Count</key><integer>0</integer></dict>
                             <key>Default</key><string>true</string></dict>
        <key>One</key><dict><key>Properties</key><dict><key>Count</key><integer>1</integer></dict>
                            <key>Default</key><true/></dict>
        <key>Two</key><dict><key>Properties</key><dict><key>Count</key><integer>2</integer></dict>
                            <key>Default</key><true/></dict>
        <key>Odd</key><string>no dictionary</string>
      </dict>
      <key>Name</key><dict><key>Default</key><string>Left</string></dict>
    </dict>
  </dict>
  <key>Title</key><dict>
    <key>Properties</key><dict><key>Shown</key><true/></dict>
    <key>Syntax</key><dict>
      <key>Keyword</key><dict><key>A</key><dict><key>Default</key><integer>1</integer></dict></dict>
      <key>Name</key><dict><key>Default</key><string>Untitled</string></dict>
      <key>Number</key><dict><key>Default</key><integer>7</integer></dict>
    </dict>
  </dict>
  <key>Copies</key><dict>
    <key>Syntax</key><dict><key>Name</key><dict/><key>Number</key><dict><key>Default</key><integer>1</integer></dict></dict>
  </dict>
  <key>Plain</key><dict><key>Syntax</key><dict/></dict>
  <key>Odd</key><string>no dictionary</string>
</dict></dict></plist>)";

using FeatureDatabase = ProfileTest;

/// The dictionaries of an array that the test owns.
std::vector<CFDictionaryRef> elements(CFArrayRef array) {
    const auto owned = CFRef<CFArrayRef>::adopt(array);
    std::vector<CFDictionaryRef> found;
    for (CFIndex i = 0; i < CFArrayGetCount(array); ++i) {
        found.push_back(static_cast<CFDictionaryRef>(CFArrayGetValueAtIndex(array, i)));
    }
    return found;
}

/// "KIND VALUE" of a feature's default.
std::string defaultOf(CFStringRef name) {
    CFStringRef kind = CFSTR("unset");
    CFTypeRef value = nullptr;
    const bool found = TDPGetFeatureDefaultValue(TDPGetFeature(name), &kind, &value);
    EXPECT_EQ(found, value != nullptr);
    SInt32 number = 0;
    const bool isNumber = CFGetTypeID(value) == CFNumberGetTypeID() &&
                          CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberSInt32Type, &number);
    return text(kind) + " " + (isNumber ? std::to_string(number) : text(value));
}

TEST_F(FeatureDatabase, SelectsByProperties) {
    load(kProfile);
    const CFDictionaryRef staple = TDPGetFeature(CFSTR("Staple"));
    const CFDictionaryRef title = TDPGetFeature(CFSTR("Title"));
    ASSERT_NE(staple, nullptr);
    using Found = std::vector<CFDictionaryRef>;
    EXPECT_EQ(elements(TDPGetFeaturesWithProperty(CFSTR("Shown"))), (Found{staple, title})) << "false is present too";
    EXPECT_EQ(elements(TDPGetFeaturesWithPropertyAndValue(CFSTR("Shown"), kCFBooleanTrue)), Found{title});
    EXPECT_EQ(elements(TDPGetFeaturesWithPropertyAndValue(CFSTR("Count"), cf(0).get())), Found{staple});
    EXPECT_EQ(elements(TDPGetFeaturesWithProperty(CFSTR("Absent"))), Found{});
    EXPECT_EQ(TDPGetFeatureProperty(staple, CFSTR("Shown")), kCFBooleanFalse);
    EXPECT_EQ(TDPGetFeatureProperty(staple, CFSTR("Absent")), nullptr);

    const CFDictionaryRef keywords = TDPGetFeatureSyntax(staple, kTDPSyntaxKeyword);
    EXPECT_EQ(elements(TDPGetKeywordsWithPropertyAndValue(staple, CFSTR("Count"), cf(2).get())),
              Found{static_cast<CFDictionaryRef>(CFDictionaryGetValue(keywords, CFSTR("Two")))});
    EXPECT_EQ(elements(TDPGetKeywordsWithPropertyAndValue(title, CFSTR("Count"), cf(2).get())), Found{});
    EXPECT_EQ(elements(TDPGetKeywordsWithPropertyAndValue(TDPGetFeature(CFSTR("Copies")), CFSTR("Count"), cf(2).get())),
              Found{});

    EXPECT_EQ(TDPGetFeature(CFSTR("Odd")), nullptr);
    EXPECT_EQ(TDPGetFeature(CFSTR("Absent")), nullptr);
    EXPECT_EQ(TDPGetFeatureSyntax(TDPGetFeature(CFSTR("Copies")), kTDPSyntaxKeyword), nullptr);
}

TEST_F(FeatureDatabase, DefaultsAreSearchedInKeywordsThenNameThenNumber) {
    load(kProfile);
    EXPECT_EQ(defaultOf(CFSTR("Staple")), "Keyword One") << "the first that is true, not merely set";
    EXPECT_EQ(defaultOf(CFSTR("Title")), "Name Untitled");
    EXPECT_EQ(defaultOf(CFSTR("Copies")), "Number 1");
    EXPECT_EQ(defaultOf(CFSTR("Plain")), "unset (null)");
    EXPECT_EQ(defaultOf(CFSTR("Absent")), "unset (null)");
}

TEST_F(FeatureDatabase, LivesFromInitializeToFinalize) {
    EXPECT_EQ(elements(TDPGetFeaturesWithProperty(CFSTR("Shown"))).size(), 0u);
    load(kProfile);
    const CFDictionaryRef staple = TDPGetFeature(CFSTR("Staple"));
    TDPInitialize();
    EXPECT_EQ(TDPGetFeature(CFSTR("Staple")), staple) << "loaded once";
    TDPFinalize();
    EXPECT_EQ(TDPGetFeature(CFSTR("Staple")), nullptr);
}

TEST_F(FeatureDatabase, StaysUnloadedWithoutAUsableFile) {
    SetPDEBundle(bundle_.bundle());
    TDPInitialize();  // no file
    EXPECT_EQ(TDPGetFeature(CFSTR("Staple")), nullptr);
    load(R"(<?xml version="1.0"?><plist version="1.0"><dict><key>Features</key>)");
    EXPECT_EQ(TDPGetFeature(CFSTR("Staple")), nullptr);
    load(R"(<?xml version="1.0"?><plist version="1.0"><array/></plist>)");
    EXPECT_EQ(TDPGetFeature(CFSTR("Staple")), nullptr);
    load(kProfile);
    EXPECT_NE(TDPGetFeature(CFSTR("Staple")), nullptr) << "a failure does not stand in the way of a later attempt";
}

// Features without a syntax are parts of the plug-in that a model has or has not.
TEST(DeviceProfile, OfTheProductLineNamesADefaultForEveryFeatureWithAValue) {
    const auto root = CFRef<CFTypeRef>::adopt(
        CreatePropertiesFromXMLFile(makeFileURL(kSources / "resources/device/Device Profile.plist").get()));
    ASSERT_EQ(CFGetTypeID(root.get()), CFDictionaryGetTypeID());
    const auto features =
        static_cast<CFDictionaryRef>(CFDictionaryGetValue(static_cast<CFDictionaryRef>(root.get()), CFSTR("Features")));
    const auto count = static_cast<std::size_t>(CFDictionaryGetCount(features));
    std::vector<const void*> keys(count);
    std::vector<const void*> values(count);
    CFDictionaryGetKeysAndValues(features, keys.data(), values.data());
    EXPECT_GT(count, 0u);
    for (std::size_t i = 0; i < count; ++i) {
        CFStringRef kind = nullptr;
        CFTypeRef value = nullptr;
        const auto* const feature = static_cast<CFDictionaryRef>(values[i]);
        if (CFDictionaryGetValue(feature, CFSTR("Syntax")) != nullptr) {
            EXPECT_TRUE(TDPGetFeatureDefaultValue(feature, &kind, &value)) << text(keys[i]);
        }
    }
}

}  // namespace
