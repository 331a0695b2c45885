// Addresses of files and web pages, and UUIDs.

#include "platform/foundation/CFUUID.h"
#include "tests/support/cf_values.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

CFRef<CFURLRef> parse(const char* text) {
    return CFRef<CFURLRef>::adopt(CFURLCreateWithString(nullptr, makeCFString(text).get(), nullptr));
}

CFRef<CFURLRef> append(const CFRef<CFURLRef>& url, const char* component, bool isDirectory = false) {
    return CFRef<CFURLRef>::adopt(
        CFURLCreateCopyAppendingPathComponent(nullptr, url.get(), makeCFString(component).get(), isDirectory));
}

TEST(URLs, PathsSurviveWhateverTheirCharacters) {
    for (const char* path : {"/", "/a", "/with blank & 100% #1?x=[2];", "/a%20b", "/Größe/三 😀", "/a/../b", "/a:b"}) {
        EXPECT_EQ(pathOfCF(makeCFURL(path).get()), path);
        const auto again = parse(textOfCF(CFURLGetString(makeCFURL(path).get())).c_str());
        EXPECT_EQ(pathOfCF(again.get()), path);
    }
    EXPECT_EQ(pathOfCF(makeCFURL("//host/share").get()), "/host/share");
    EXPECT_EQ(pathOfCF(makeCFURL("some/file").get()), std::filesystem::current_path().string() + "/some/file");
    EXPECT_FALSE(makeCFURL(""));
    EXPECT_FALSE(makeCFURL(std::string("/a\0b", 4)));
    EXPECT_TRUE(CFEqual(makeCFURL("/a").get(), parse("file:///a").get()));
    // Of another time and encoding.
    const std::string bytes = "/caf\xE9%/\xFF.pdf";
    const auto latin = CFRef<CFURLRef>::adopt(CFURLCreateFromFileSystemRepresentation(
        nullptr, reinterpret_cast<const UInt8*>(bytes.data()), static_cast<CFIndex>(bytes.size()), false));
    EXPECT_EQ(pathOfCF(latin.get()), bytes);
    EXPECT_EQ(pathOfCF(parse(textOfCF(CFURLGetString(latin.get())).c_str()).get()), bytes);
    EXPECT_EQ(pathOfCF(append(latin, "Größe").get()), bytes + "/Größe");
}

TEST(URLs, ComponentsAreAppendedInsideTheFolder) {
    const auto folder = makeCFURL("/opt/Bundle & Co");
    EXPECT_EQ(pathOfCF(append(folder, "a%b #c").get()), "/opt/Bundle & Co/a%b #c");
    EXPECT_EQ(pathOfCF(append(append(folder, "sub", true), "x/y").get()), "/opt/Bundle & Co/sub/x/y");
    EXPECT_EQ(textOfCF(CFURLGetString(append(makeCFURL("/"), "d", true).get())), "file:///d/");
    EXPECT_EQ(textOfCF(CFURLGetString(append(parse("https://example.com/a?q=1"), "b c").get())),
              "https://example.com/a/b%20c?q=1");
    EXPECT_FALSE(append(folder, ""));
    EXPECT_FALSE(append(nullptr, "a"));
}

TEST(URLs, OnlyLocalFilesHaveAPath) {
    for (const char* text : {"https://example.com/etc/passwd", "file://server/etc/passwd", "file:///a%00b"}) {
        ASSERT_TRUE(parse(text)) << text;
        EXPECT_EQ(pathOfCF(parse(text).get()), "(none)") << text;
    }
    for (const char* text : {"", "no scheme", "/path", "http://[::1", "http://a b/"}) {
        EXPECT_FALSE(parse(text)) << text;
    }
    UInt8 small[3];
    EXPECT_FALSE(CFURLGetFileSystemRepresentation(makeCFURL("/ab").get(), true, small, sizeof small));
    EXPECT_TRUE(CFURLGetFileSystemRepresentation(makeCFURL("/a").get(), true, small, sizeof small));
}

TEST(URLs, FileReferencesNeedAnExistingFile) {
    FSRef ref;
    ASSERT_TRUE(CFURLGetFSRef(makeCFURL("/proc/self").get(), &ref));
    EXPECT_STREQ(ref.path, "/proc/self");
    EXPECT_FALSE(CFURLGetFSRef(makeCFURL("/proc/no such file").get(), &ref));
    EXPECT_FALSE(CFURLGetFSRef(parse("https://example.com/").get(), &ref));
    EXPECT_FALSE(CFURLGetFSRef(nullptr, &ref));
}

TEST(UUIDs, AreReadFromTheirCanonicalTextOnly) {
    const auto read = [](const char* text) {
        return CFRef<CFUUIDRef>::adopt(CFUUIDCreateFromString(nullptr, makeCFString(text).get()));
    };
    const auto uuid = read("BDB091F4-E57F-11D3-B5CC-0050E4603277");
    ASSERT_TRUE(uuid);
    const CFUUIDBytes bytes = CFUUIDGetUUIDBytes(uuid.get());
    EXPECT_EQ(bytes.bytes[0], 0xBD);
    EXPECT_EQ(bytes.bytes[6], 0x11);
    EXPECT_EQ(bytes.bytes[15], 0x77);
    EXPECT_TRUE(CFEqual(uuid.get(), read("bdb091f4-e57f-11d3-b5cc-0050e4603277").get()));
    EXPECT_TRUE(CFEqual(uuid.get(), CFRef<CFUUIDRef>::adopt(CFUUIDCreateFromUUIDBytes(nullptr, bytes)).get()));
    EXPECT_TRUE(read("00000000-0000-0000-0000-000000000000"));
    for (const char* text :
         {"", "BDB091F4", "{BDB091F4-E57F-11D3-B5CC-0050E4603277}", "BDB091F4-E57F-11D3-B5CC-0050E460327G",
          "BDB091F4E57F11D3B5CC0050E4603277", "BDB091F4-E57F-11D3-B5CC-0050E46032777"}) {
        EXPECT_FALSE(read(text)) << text;
    }
}

}  // namespace
