// The list of watermarks: its first start, and stores that are not what they should be.

#include "watermark/records/watermark_list.h"
#include "model/settings/preference_files.h"
#include "platform/foundation/CFNumber.h"
#include "tests/panels/plugin_fixture.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/dialogs_at_once.h"
#include "watermark/records/watermark_changes.h"
#include "watermark/records/watermark_font.h"
#include "watermark/records/watermark_storage.h"

#include <fstream>
#include <sstream>

namespace {

WatermarkRecord TextWatermark(const std::string& text, const char* font = "ArialMT") {
    WatermarkRecord record = {};
    record.kind = kTextWatermark;
    std::ranges::copy(text, record.text);
    std::ranges::copy(std::string(font), record.fontName);
    return record;
}

class WatermarkListTest : public testing::Test {
protected:
    WatermarkListTest() { setenv("XDG_DATA_HOME", folder.path().c_str(), 1); }
    ~WatermarkListTest() override { unsetenv("XDG_DATA_HOME"); }

    std::vector<std::string> loaded() {
        const auto list = LoadListOfWatermarks(plugin.bundle());
        std::vector<std::string> names;
        for (CFIndex i = 0; i < CFArrayGetCount(list.get()); ++i) {
            names.push_back(Text(static_cast<CFStringRef>(CFArrayGetValueAtIndex(list.get(), i))));
        }
        return names;
    }
    static void saveList(const std::vector<CFTypeRef>& entries) {
        const auto list = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
        for (const CFTypeRef entry : entries) {
            CFArrayAppendValue(list.get(), entry);
        }
        saveWatermarkList(kWatermarkStore, list.get());
    }
    void write(const std::string& content) const { std::ofstream(store, std::ios::binary) << content; }
    std::string content() const {
        std::ostringstream text;
        text << std::ifstream(store, std::ios::binary).rdbuf();
        return text.str();
    }
    static std::string font(CFStringRef name) {
        const auto data = CFRef<CFMutableDataRef>::adopt(CFDataCreateMutable(nullptr, 0));
        loadFontData(kWatermarkStore, name, data.get());
        return {reinterpret_cast<const char*>(CFDataGetBytePtr(data.get())),
                static_cast<std::size_t>(CFDataGetLength(data.get()))};
    }

    PluginBundle plugin;
    TemporaryFolder folder;
    const std::filesystem::path store = folder.path() / "tavro/Tavro/com.tavro.printing.watermarks.plist";
    const std::vector<std::string> kDefaults{"Draft", "Confidential", "Copy"};
};

TEST_F(WatermarkListTest, AFirstStartMakesThreeWatermarks) {
    EXPECT_EQ(loaded(), kDefaults);
    WatermarkRecord record = {};
    ASSERT_TRUE(loadWatermarkData(kWatermarkStore, CFSTR("Confidential"), &record));
    EXPECT_STREQ(record.text, "Confidential");
    EXPECT_STREQ(record.fontName, "ArialMT");
    EXPECT_NE(record.kind, kImageWatermark);
    EXPECT_EQ(record.angle, 45);
    EXPECT_EQ(record.density, 25);
    EXPECT_EQ(record.scale, 100);
    EXPECT_EQ(record.fontSize, 72);
    EXPECT_EQ(record.fontColor.green, 0.75F);
    EXPECT_EQ(record.wellColor.blue, 1.0F);
    EXPECT_EQ(record.xOffset, 0.0F);
    EXPECT_EQ(record.xPosition, 201.350601);
    EXPECT_EQ(record.yPosition, 231.773102);

    // A list that the user has emptied stays empty.
    saveList({});
    EXPECT_EQ(loaded(), std::vector<std::string>());
}

TEST_F(WatermarkListTest, AStoreThatCannotBeReadIsKeptBesideTheNewOne) {
    EXPECT_EQ(loaded(), kDefaults);
    write("<plist><dict>");
    EXPECT_EQ(loaded(), kDefaults);
    EXPECT_TRUE(std::filesystem::exists(store.string() + ".unreadable"));
}

TEST_F(WatermarkListTest, WithoutAPlaceForAStoreTheListIsEmpty) {
    std::ofstream(folder.path() / "tavro") << "a file where the folder should be";
    EXPECT_EQ(loaded(), std::vector<std::string>());
}

TEST_F(WatermarkListTest, AStoreOfAnotherVersionKeepsWhatItHas) {
    EXPECT_EQ(loaded(), kDefaults);
    ChangeStore(kWatermarkStore, StoreUse::Existing, [](CFMutableDictionaryRef root) {
        CFDictionarySetValue(root, CFSTR("WatermarkListEntries"), CFSTR("a text"));
        CFDictionarySetValue(root, CFSTR("Of another version"), CFSTR("kept"));
        return true;
    });
    EXPECT_EQ(loaded(), kDefaults);
    EXPECT_NE(content().find("Of another version"), std::string::npos);
}

TEST_F(WatermarkListTest, LeavesOutWhatIsNoNameAndADamagedFirstEntry) {
    saveList({CFSTR("Gone"), kCFBooleanTrue, CFSTR("Twice"), CFSTR("Twice"), CFSTR("Gone too")});
    const WatermarkRecord twice = TextWatermark("Twice");
    saveWatermarkData(kWatermarkStore, &twice);
    EXPECT_EQ(loaded(), (std::vector<std::string>{"Twice", "Twice", "Gone too"}));
    const auto list = LoadListOfWatermarks(plugin.bundle());
    EXPECT_NE(CFArrayGetValueAtIndex(list.get(), 0), CFArrayGetValueAtIndex(list.get(), 1)) << "two rows";
    EXPECT_EQ(FindWatermark(list.get(), CFSTR("twice"), nullptr), nullptr) << "case counts";
    EXPECT_EQ(FindWatermark(list.get(), CFSTR("Twice"), nullptr), CFArrayGetValueAtIndex(list.get(), 0));
}

TEST_F(WatermarkListTest, AFontIsConvertedOnce) {
    EXPECT_EQ(loaded(), kDefaults);
    convertFont(CFSTR("Draft"));
    const std::string converted = font(CFSTR("ArialMT"));
    ASSERT_TRUE(converted.starts_with("%!")) << converted.substr(0, 80);
    EXPECT_NE(converted.find("/FontType 42"), std::string::npos);

    const auto before = std::filesystem::last_write_time(store);
    convertFont(CFSTR("Copy"));
    EXPECT_EQ(std::filesystem::last_write_time(store), before) << "the same font again";

    // One that was made of another file, or by somebody else, is made anew.
    const std::string other = converted.substr(0, converted.rfind(' ')) + " 7\n";
    const auto data = CFRef<CFDataRef>::adopt(
        CFDataCreate(nullptr, reinterpret_cast<const UInt8*>(other.data()), static_cast<CFIndex>(other.size())));
    storeFontData(kWatermarkStore, CFSTR("ArialMT"), data.get());
    convertFont(CFSTR("Draft"));
    EXPECT_EQ(font(CFSTR("ArialMT")), converted);
}

TEST_F(WatermarkListTest, AFontThatIsNotThereIsNotStored) {
    EXPECT_EQ(loaded(), kDefaults);
    const std::string before = content();
    convertFont(CFSTR("No such watermark"));
    EXPECT_EQ(content(), before);
    for (const char* name : {"NoSuchFont-Bold", ""}) {
        const WatermarkRecord record = TextWatermark("Unprintable", name);
        saveWatermarkData(kWatermarkStore, &record);
        const std::string saved = content();
        convertFont(CFSTR("Unprintable"));
        EXPECT_EQ(content(), saved) << name;
    }
}

TEST_F(WatermarkListTest, DialogsTakeTurns) {
    loaded();
    const auto none = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, nullptr));
    saveInDialogsAtOnce([&none](const std::string& name) {
        return StoreWatermark(TextWatermark(name), nullptr, false, none.get()).fault == ChangeFault::none;
    });
    EXPECT_EQ(loaded().size(), 3u + 4u * 20u);
}

}  // namespace
