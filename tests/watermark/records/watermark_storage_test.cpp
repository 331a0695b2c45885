// Stores and preferences: what comes back, and what happens to files that nobody can read.

#include "watermark/records/watermark_storage.h"

#include "model/settings/preference_files.h"
#include "platform/foundation/CFPropertyList.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/cf_values.h"
#include "tests/support/full_disk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <limits>
#include <sstream>

#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

#define kStore CFSTR("com.tavro.printing.watermarks.plist")

template <std::size_t size>
void setText(char (&field)[size], std::string_view text) {
    ASSERT_LT(text.size(), size);
    *std::copy(text.begin(), text.end(), field) = '\0';
}

std::string_view bytesOf(const WatermarkRecord& record) {
    return {reinterpret_cast<const char*>(&record), sizeof record};
}

WatermarkRecord textWatermark(const char* text) {
    WatermarkRecord record = {};
    setText(record.text, text);
    setText(record.fontName, "ArialMT");
    record.xOffset = 0.1F;
    record.fontColor = {0.75F, 0.7F, 1, 0.5F};
    record.wellColor = {0, 0.25F, 1, 1};
    record.angle = -45;
    record.density = 25;
    record.scale = 100;
    record.units = std::numeric_limits<SInt32>::min();
    record.fontSize = 72;
    record.kind = kTextWatermark;
    record.paperExtentA = 792;
    record.xPosition = 280.627441;
    record.yPosition = -1e-9;
    return record;
}

/// Reads the record over one that has something everywhere.
WatermarkRecord load(CFStringRef name, bool expected) {
    WatermarkRecord record;
    std::memset(&record, 0x41, sizeof record);
    EXPECT_EQ(loadWatermarkData(kStore, name, &record), expected);
    return record;
}

CFRef<CFMutableArrayRef> loadList() {
    CFMutableArrayRef names = nullptr;
    const bool loaded = loadWatermarkList(kStore, &names);
    EXPECT_EQ(loaded, names != nullptr);
    return CFRef<CFMutableArrayRef>::adopt(names);
}

std::string listed() {
    std::string names;
    const auto list = loadList();
    for (CFIndex i = 0; i < CFArrayGetCount(list.get()); ++i) {
        names += textOfCF(static_cast<CFStringRef>(CFArrayGetValueAtIndex(list.get(), i))) + "|";
    }
    return names;
}

void saveList(std::initializer_list<const char*> names) {
    const auto list = makeCFArray();
    for (const char* name : names) {
        CFArrayAppendValue(list.get(), makeCFString(name).get());
    }
    saveWatermarkList(kStore, list.get());
}

std::string loadFont(CFStringRef name) {
    const auto font = CFRef<CFMutableDataRef>::adopt(CFDataCreateMutable(nullptr, 0));
    CFDataAppendBytes(font.get(), reinterpret_cast<const UInt8*>("%!"), 2);
    loadFontData(kStore, name, font.get());
    return bytesOfCF(font.get());
}

std::string contentOf(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

class Storage : public testing::Test {
protected:
    Storage() {
        setenv("XDG_DATA_HOME", (home_ / "data").c_str(), 1);
        setenv("XDG_CONFIG_HOME", (home_ / "config").c_str(), 1);
    }

    std::size_t files() const {
        return std::size_t(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
    }

    TemporaryFolder home_;
    const std::string folder_ = home_ / "data/tavro/Tavro";
    const std::string store_ = folder_ + "/com.tavro.printing.watermarks.plist";
};

TEST_F(Storage, LiesInAFolderOfTheUserAlone) {
    const auto url = CFRef<CFURLRef>::adopt(CopyPreferenceFileURL(kStore));
    EXPECT_EQ(pathOfCF(url.get()), store_);
    EXPECT_EQ(files(), 0u);
    EXPECT_EQ(fs::status(folder_).permissions(), fs::perms::owner_all);
    saveList({"Draft"});
    EXPECT_EQ(fs::status(store_).permissions(), fs::perms::owner_read | fs::perms::owner_write);

    EXPECT_EQ(CopyPreferenceFileURL(nullptr), nullptr);
    fs::remove_all(folder_);
    std::ofstream(folder_) << "a file in the way";
    EXPECT_EQ(CopyPreferenceFileURL(kStore), nullptr);
    saveList({"Draft"});
    EXPECT_EQ(contentOf(folder_), "a file in the way");
}

TEST_F(Storage, ARecordComesBackWithoutItsPaper) {
    WatermarkRecord saved = textWatermark("Größe <1> & \"2\"");
    saveWatermarkData(kStore, &saved);
    WatermarkRecord loaded = {};
    loaded.paperExtentA = 842;
    ASSERT_TRUE(loadWatermarkData(kStore, CFSTR("Größe <1> & \"2\""), &loaded));
    EXPECT_EQ(loaded.paperExtentA, 842);
    loaded.paperExtentA = saved.paperExtentA;
    EXPECT_TRUE(bytesOf(loaded) == bytesOf(saved));

    // An image watermark is named after its file; a text that is empty is a name as well.
    WatermarkRecord image = {};
    setText(image.fileName, "seal.png");
    setText(image.filePath, "/home/anna/seal.png");
    saveWatermarkData(kStore, &image);
    EXPECT_EQ(load(CFSTR("seal.png"), true).kind, kImageWatermark);
    saved = textWatermark("");
    saveWatermarkData(kStore, &saved);
    EXPECT_STREQ(load(CFSTR(""), true).fontName, "ArialMT");

    removeWatermarkData(kStore, CFSTR("seal.png"));
    EXPECT_TRUE(bytesOf(load(CFSTR("seal.png"), false)) == std::string(sizeof(WatermarkRecord), '\0'));
}

TEST_F(Storage, OnlyWhatFitsIsTaken) {
    saveList({"Draft"});
    ChangeStore(kStore, StoreUse::Existing, [](CFMutableDictionaryRef root) {
        const auto stored = makeCFDictionary();
        const auto set = [&](const char* key, CFTypeRef value) {
            CFDictionarySetValue(stored.get(), makeCFString(key).get(), value);
        };
        std::string text;
        for (int i = 0; i < 300; ++i) {
            text += "é";
        }
        set("textString", makeCFString(text).get());
        set("filename", makeCFNumber(1.0).get());
        set("fontName", makeCFString(std::string(511, 'f')).get());
        set("filePath", makeCFString(std::string(8192, 'p')).get());
        set("angle", makeCFNumber(std::int64_t{1} << 32).get());
        set("density", makeCFNumber(12.5).get());
        set("scale", CFSTR("100"));
        set("fontSize", makeCFNumber(12.0).get());
        set("xOffset", makeCFNumber(1e300).get());
        CFDictionarySetValue(root, CFSTR("odd"), stored.get());
        CFDictionarySetValue(root, CFSTR("no record"), CFSTR("x"));
        return true;
    });
    WatermarkRecord record = textWatermark("before");
    setText(record.fileName, "before");
    ASSERT_TRUE(loadWatermarkData(kStore, CFSTR("odd"), &record));
    EXPECT_EQ(std::strlen(record.text), 510u) << "half a character, or no zero";
    EXPECT_EQ(std::strlen(record.fontName), 511u);
    EXPECT_EQ(std::strlen(record.filePath), 8191u);
    EXPECT_STREQ(record.fileName, "before");
    EXPECT_EQ(record.angle, -45);
    EXPECT_EQ(record.density, 25);
    EXPECT_EQ(record.scale, 100);
    EXPECT_EQ(record.fontSize, 12);
    EXPECT_EQ(record.xOffset, 0.1F);
    load(CFSTR("no record"), false);

    // Its name tells a picture from a text that the editor left behind.
    WatermarkRecord picture = textWatermark("Draft");
    picture.kind = kImageWatermark;
    setText(picture.fileName, "logo.png");
    saveWatermarkData(kStore, &picture);
    EXPECT_EQ(load(CFSTR("logo.png"), true).kind, kImageWatermark);
    setText(picture.text, "logo.png");
    saveWatermarkData(kStore, &picture);
    EXPECT_EQ(load(CFSTR("logo.png"), true).kind, kTextWatermark);

    // What the editor should not have left: a text without its zero, one that is no UTF-8, a number that is none.
    record = textWatermark("bad editor");
    std::memset(record.fontName, 'f', sizeof record.fontName);
    setText(record.fileName, "\xFF");
    record.yOffset = std::numeric_limits<float>::quiet_NaN();
    saveWatermarkData(kStore, &record);
    EXPECT_EQ(load(CFSTR("bad editor"), true).fontName, std::string(511, 'f'));
    setText(record.text, "\xFF");
    saveWatermarkData(kStore, &record);
    EXPECT_EQ(listed(), "Draft|");
}

TEST_F(Storage, AnEntryOfTheListChangesInPlace) {
    CFMutableArrayRef untouched = nullptr;
    EXPECT_FALSE(loadWatermarkList(kStore, &untouched));
    saveList({"Draft", "Copy", "Copy"});
    const auto names = loadList();
    CFStringReplaceAll(static_cast<CFMutableStringRef>(const_cast<void*>(CFArrayGetValueAtIndex(names.get(), 1))),
                       CFSTR("Secret"));
    saveWatermarkList(kStore, names.get());
    EXPECT_EQ(listed(), "Draft|Secret|Copy|");
    saveWatermarkList(kStore, nullptr);
    saveWatermarkList(nullptr, names.get());
    EXPECT_EQ(listed(), "Draft|Secret|Copy|");

    // The list and the records are apart: an entry may have none. And they share one space of keys.
    load(CFSTR("Secret"), false);
    const WatermarkRecord record = textWatermark("WatermarkListEntries");
    saveWatermarkData(kStore, &record);
    EXPECT_FALSE(loadWatermarkList(kStore, &untouched));
    EXPECT_EQ(untouched, nullptr);
}

TEST_F(Storage, FontsNeedAStore) {
    const std::string program("%!PS\0\xFF", 6);
    storeFontData(kStore, CFSTR("ArialMT"), makeCFData(program).get());
    removeWatermarkData(kStore, CFSTR("ArialMT"));
    EXPECT_EQ(files(), 0u);
    saveList({"Draft"});
    storeFontData(kStore, CFSTR("ArialMT"), makeCFData(program).get());
    EXPECT_EQ(loadFont(CFSTR("ArialMT")), "%!" + program);
    EXPECT_EQ(loadFont(CFSTR("WatermarkListEntries")), "%!");
    EXPECT_EQ(loadFont(CFSTR("Arial")), "%!");
    EXPECT_EQ(listed(), "Draft|");
}

TEST_F(Storage, AStoreThatCannotBeParsedIsKeptBeside) {
    const std::string contents[] = {"<plist><dict><key>My work", "<plist><array/></plist>", ""};
    int kept = 0;
    for (const std::string& content : contents) {
        fs::create_directories(folder_);
        std::ofstream(store_, std::ios::binary) << content;
        testing::internal::CaptureStderr();
        load(CFSTR("Draft"), false);
        storeFontData(kStore, CFSTR("ArialMT"), makeCFData("x").get());
        removeWatermarkData(kStore, CFSTR("Draft"));
        EXPECT_EQ(contentOf(store_), content);
        EXPECT_EQ(files(), std::size_t(1 + kept));
        saveList({"Draft"});
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(said.rfind("CopyXMLData()::CFPropertyListCreateFromXMLData() error: ", 0), 0u) << said;
        ++kept;
        EXPECT_EQ(listed(), "Draft|");
        EXPECT_EQ(contentOf(store_ + ".unreadable" + (kept > 1 ? "-" + std::to_string(kept) : "")), content);
        EXPECT_EQ(files(), std::size_t(1 + kept));
    }
    // One that is there but out of reach may be as good as ever.
    fs::remove(store_);
    std::ofstream(store_).close();
    constexpr std::uintmax_t kTooLarge = std::uintmax_t{1} << 34;
    fs::resize_file(store_, kTooLarge);
    saveList({"Copy"});
    EXPECT_EQ(fs::file_size(store_), kTooLarge);
}

TEST_F(Storage, AFullDiskLeavesTheOldStoreAndTheUnreadableOne) {
    const auto saveOnFullDisk = [] {
        onFullDisk(256, [] {
            const WatermarkRecord record = textWatermark("Copy");
            saveWatermarkData(kStore, &record);
        });
    };
    saveList({"Draft"});
    const std::string before = contentOf(store_);
    saveOnFullDisk();
    EXPECT_EQ(contentOf(store_), before);
    const std::string broken = before.substr(0, 150) + std::string(1000, ' ');
    std::ofstream(store_, std::ios::binary) << broken;
    saveOnFullDisk();
    EXPECT_EQ(contentOf(store_), broken);
    EXPECT_EQ(files(), 1u);
}

TEST_F(Storage, AReadOnlyFolderLeavesTheOldStoreAndTheUnreadableOne) {
    saveList({"Draft"});
    const std::string good = contentOf(store_);
    for (const std::string& before : {good, good.substr(0, 150)}) {
        std::ofstream(store_, std::ios::binary) << before;
        // Root may write everywhere, so it becomes somebody else, who can read the folders.
        constexpr uid_t kNobody = 65534;
        const bool isRoot = geteuid() == 0;
        for (const char* path : {"", "data", "data/tavro"}) {
            ASSERT_EQ(chmod((home_ / path).c_str(), 0755), 0);
        }
        ASSERT_EQ(chmod(store_.c_str(), 0644), 0);
        ASSERT_EQ(chmod(folder_.c_str(), 0555), 0);
        ASSERT_TRUE(!isRoot || seteuid(kNobody) == 0);
        testing::internal::CaptureStderr();
        saveList({"Copy"});
        removeWatermarkData(kStore, CFSTR("WatermarkListEntries"));
        const std::string said = testing::internal::GetCapturedStderr();
        ASSERT_TRUE(!isRoot || seteuid(0) == 0);
        ASSERT_EQ(chmod(folder_.c_str(), 0700), 0);
        EXPECT_NE(said.find("plist was not written (13)\n"), std::string::npos) << said;
        EXPECT_EQ(contentOf(store_), before);
        EXPECT_EQ(files(), 1u);
    }
}

TEST_F(Storage, PreferencesAreFilesOfTheirOwn) {
#define kNotes CFSTR("com.tavro.print.jobnotes.plist")
    const std::string path = home_ / "config/tavro/com.tavro.print.jobnotes.plist";
    EXPECT_EQ(CopyUserPreferences(kNotes), nullptr);
    const auto notes = makeCFDictionary();
    CFDictionarySetValue(notes.get(), CFSTR("name"), CFSTR("Anna"));
    EXPECT_TRUE(WriteUserPreferences(kNotes, notes.get()));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    const auto read = CFRef<CFMutableDictionaryRef>::adopt(CopyUserPreferences(kNotes));
    EXPECT_TRUE(CFEqual(read.get(), notes.get()));
    CFDictionarySetValue(read.get(), CFSTR("phone"), CFSTR("1"));
    EXPECT_EQ(CFDictionaryGetCount(read.get()), 2);

    const std::string before = contentOf(path);
    testing::internal::CaptureStderr();
    CFDictionarySetValue(notes.get(), CFSTR("name"), CFSTR("\x01"));
    EXPECT_FALSE(WriteUserPreferences(kNotes, notes.get()));
    EXPECT_FALSE(WriteUserPreferences(kNotes, nullptr));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "WriteUserPreferences() failed (22)\nWriteUserPreferences() failed (22)\n");
    EXPECT_EQ(contentOf(path), before);

    // What somebody has broken by hand is kept, once, and only when there is something to put in its place.
    std::ofstream(path, std::ios::binary) << "<plist><dict>";
    testing::internal::CaptureStderr();
    EXPECT_FALSE(WriteUserPreferences(kNotes, notes.get()));
    EXPECT_EQ(contentOf(path), "<plist><dict>");
    EXPECT_FALSE(fs::exists(path + ".unreadable"));
    CFDictionarySetValue(notes.get(), CFSTR("name"), CFSTR("Anna"));
    EXPECT_TRUE(WriteUserPreferences(kNotes, notes.get()));
    EXPECT_TRUE(WriteUserPreferences(kNotes, notes.get()));
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(contentOf(path), before);
    EXPECT_EQ(contentOf(path + ".unreadable"), "<plist><dict>");
    EXPECT_EQ(fs::status(path + ".unreadable").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_FALSE(fs::exists(path + ".unreadable-2"));

    fs::remove(path);
    fs::create_directory(path);
    testing::internal::CaptureStderr();
    EXPECT_FALSE(WriteUserPreferences(kNotes, notes.get()));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "WriteUserPreferences() failed (21)\n");
    EXPECT_TRUE(fs::is_directory(path));
}

}  // namespace
