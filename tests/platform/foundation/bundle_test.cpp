// Bundles on disk: life, resources, texts, executable, and what a broken installation says.

#include "tests/support/cf_values.h"
#include "tests/support/test_bundle.h"

#include <gtest/gtest.h>

#include <QLocale>

namespace {

std::string lastError() {
    return textOfCF(CFBundleGetLastError());
}

std::string localized(TestBundle& bundle, const char* key, CFStringRef value = nullptr, CFStringRef table = nullptr) {
    const auto text =
        CFRef<CFStringRef>::adopt(CFBundleCopyLocalizedString(bundle.bundle(), makeCFString(key).get(), value, table));
    return textOfCF(text.get());
}

/// The path below Contents/Resources, or "(none)".
std::string resource(TestBundle& bundle, const char* name, const char* type = nullptr, const char* folder = nullptr) {
    const auto text = [](const char* utf8) { return utf8 ? makeCFString(utf8) : nullptr; };
    const auto url = CFRef<CFURLRef>::adopt(
        CFBundleCopyResourceURL(bundle.bundle(), text(name).get(), text(type).get(), text(folder).get()));
    const std::string path = pathOfCF(url.get());
    const std::string resources = std::filesystem::canonical(bundle.contents() / "Resources").string() + "/";
    return path.starts_with(resources) ? path.substr(resources.size()) : path;
}

TEST(Bundle, OneFolderIsOneObjectWhileItLives) {
    TestBundle files("com.tavro.test.one");
    EXPECT_EQ(CFBundleGetBundleWithIdentifier(CFSTR("com.tavro.test.one")), nullptr);
    {
        const auto first = CFRef<CFBundleRef>::adopt(
            CFBundleCreate(nullptr, makeCFURL(files.contents().parent_path().string()).get()));
        ASSERT_TRUE(first);
        // By another spelling of its path.
        const auto second =
            CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, makeCFURL(files.contents().string() + "/../").get()));
        EXPECT_EQ(first.get(), second.get());
        EXPECT_EQ(CFGetRetainCount(first.get()), 2);
        EXPECT_EQ(CFBundleGetBundleWithIdentifier(CFSTR("com.tavro.test.one")), first.get());
        EXPECT_EQ(CFGetRetainCount(first.get()), 2);
    }
    EXPECT_EQ(CFBundleGetBundleWithIdentifier(CFSTR("com.tavro.test.one")), nullptr);
    EXPECT_EQ(CFBundleGetBundleWithIdentifier(nullptr), nullptr);
}

TEST(Bundle, ABrokenInfoFileIsNamedWithItsPlace) {
    TestBundle files;
    const std::string info = std::filesystem::canonical(files.contents()).string() + "/Info.plist";
    files.add("Info.plist", "<plist>\n<dict><key>a</key></dict></plist>");
    EXPECT_EQ(files.bundle(), nullptr);
    EXPECT_EQ(lastError(), info + ": line 2, column 25: the key \"a\" has no value");
    files.add("Info.plist", "<plist><array/></plist>");
    EXPECT_EQ(files.bundle(), nullptr);
    EXPECT_EQ(lastError(), info + ": not a dictionary");
    std::filesystem::remove(files.contents() / "Info.plist");
    EXPECT_EQ(files.bundle(), nullptr);
    EXPECT_EQ(lastError(), info + ": No such file or directory");
    EXPECT_EQ(CFBundleCreate(nullptr, nullptr), nullptr);
    files.add("Info.plist", "<plist><dict/></plist>");
    EXPECT_NE(files.bundle(), nullptr);
    EXPECT_EQ(CFBundleGetLastError(), nullptr);
}

TEST(Bundle, ResourcesAreFoundByTheirExactNames) {
    TestBundle files;
    files.add("Resources/Booklet Creation/None.gif", "");
    files.add("Resources/Paper & Output+.nib/Main.ui", "");
    files.add("Resources/Device Profile.plist", "");
    files.add("Resources/en.lproj/page.html", "");
    files.add("Resources/Name.txt", "");
    files.add("Info.txt", "");
    EXPECT_EQ(resource(files, "Device Profile", "plist"), "Device Profile.plist");
    EXPECT_EQ(resource(files, "Device Profile", ".plist"), "Device Profile.plist");
    EXPECT_EQ(resource(files, "None", "gif", "Booklet Creation"), "Booklet Creation/None.gif");
    EXPECT_EQ(resource(files, "Booklet Creation/None.gif"), "Booklet Creation/None.gif");
    EXPECT_EQ(resource(files, "Main", "ui", "Paper & Output+.nib"), "Paper & Output+.nib/Main.ui");
    EXPECT_EQ(resource(files, "page", "html"), "en.lproj/page.html");
    EXPECT_EQ(resource(files, "name", "txt"), "(none)");
    EXPECT_EQ(resource(files, "Name", "gif"), "(none)");
    EXPECT_EQ(resource(files, ""), "(none)");
    // Nothing outside of the folder is a resource.
    EXPECT_EQ(resource(files, "../Info", "txt"), "(none)");
    EXPECT_EQ(resource(files, "Info", "txt", ".."), "(none)");
    EXPECT_EQ(resource(files, "/etc/passwd"), "(none)");
    EXPECT_EQ(pathOfCF(CFRef<CFURLRef>::adopt(CFBundleCopyBuiltInPlugInsURL(files.bundle())).get()),
              std::filesystem::canonical(files.contents()).string() + "/PlugIns");
}

/// ar_EG has the digits that Arabic tables are written in, ar_MA has 0 to 9 and a comma.
TEST(Bundle, TextsHaveTheDigitsOfNumbersThatArePutIn) {
    const struct {
        const char *locale, *text;
    } rows[] = {{"ar_EG", "A4: %1$@ ١٤٫٤ ٠-٩"}, {"ar_MA", "A4: %1$@ 14,4 0-9"}, {"fa_IR", "A4: %1$@ ۱۴٫۴ ۰-۹"}};
    for (const auto& row : rows) {
        QLocale::setDefault(QLocale(QString::fromLatin1(row.locale)));
        TestBundle files;
        files.add("Resources/en.lproj/Localizable.strings", "\"Size\" = \"A4: %1$@ ١٤٫٤ ٠-٩\";");
        EXPECT_EQ(localized(files, "Size"), row.text) << row.locale;
    }
    QLocale::setDefault(QLocale::c());
}

TEST(Bundle, TextsFallBackFromTheUsersLanguageToEnglishToTheKey) {
    // The desktop's way of saying it; Qt reads it before anything else.
    setenv("LANG", "de_DE.UTF-8", 1);
    setenv("LANGUAGE", "de_AT:fr", 1);
    TestBundle files;
    files.add("Resources/en.lproj/Localizable.strings", R"("Tray" = "Paper tray"; "Fax" = "Fax it"; "OK" = "OK";)");
    files.add("Resources/fr.lproj/Localizable.strings", R"("Fax" = "Télécopie"; "OK" = "D'accord";)");
    files.add("Resources/de.lproj/Localizable.strings", R"("OK" = "Gut";)");
    files.add("Resources/de_AT.lproj/InfoPlist.strings", R"("CFBundleName" = "Drucken";)");
    files.add("Resources/de.lproj/LANFax.strings", R"("Dial" = "Wählen")");
    files.add("Resources/en.lproj/LANFax.strings", R"("Dial" = "Dial it";)");
    // Texts that the user's language lacks are told of once; its country lacks none that the language has.
    testing::internal::CaptureStderr();
    EXPECT_EQ(localized(files, "OK"), "Gut");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    testing::internal::CaptureStderr();
    EXPECT_EQ(localized(files, "Fax"), "Télécopie");
    EXPECT_EQ(localized(files, "Tray"), "Paper tray");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              std::filesystem::canonical(files.contents()).string() +
                  "/Resources/de.lproj/Localizable.strings: texts are missing\n");
    EXPECT_EQ(localized(files, "Staple"), "Staple");
    EXPECT_EQ(localized(files, "Staple", CFSTR("")), "Staple");
    EXPECT_EQ(localized(files, "Staple", CFSTR("STRING NOT FOUND")), "STRING NOT FOUND");
    EXPECT_EQ(localized(files, "OK", nullptr, CFSTR("NoSuchTable")), "OK");

    // A broken table counts as missing, and says so once.
    testing::internal::CaptureStderr();
    EXPECT_EQ(localized(files, "Dial", nullptr, CFSTR("LANFax")), "Dial it");
    EXPECT_EQ(localized(files, "Dial", nullptr, CFSTR("LANFax")), "Dial it");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              std::filesystem::canonical(files.contents()).string() +
                  "/Resources/de.lproj/LANFax.strings: line 1, column 18: ';' is missing\n");

    const auto info = [&](CFStringRef key) {
        return textOfCF(static_cast<CFStringRef>(CFBundleGetValueForInfoDictionaryKey(files.bundle(), key)));
    };
    EXPECT_EQ(info(CFSTR("CFBundleName")), "Drucken");
    EXPECT_EQ(info(CFSTR("CFBundleIdentifier")), "com.example.test");
    EXPECT_EQ(info(CFSTR("CFBundleVersion")), "(null)");
    EXPECT_EQ(CFDictionaryGetCount(CFBundleGetLocalInfoDictionary(files.bundle())), 1);
}

TEST(Bundle, TheExecutableLoadsOrSaysWhyNot) {
    TestBundle files;
    const auto declare = [&](const std::string& executable) {
        files.add("Info.plist",
                  "<plist><dict><key>CFBundleExecutable</key><string>" + executable + "</string></dict></plist>");
    };
    declare("TestModule");
    const std::string path = std::filesystem::canonical(files.contents()).string() + "/Linux/TestModule";
    EXPECT_FALSE(CFBundleLoadExecutable(files.bundle()));
    EXPECT_EQ(lastError(), path + ": cannot open shared object file: No such file or directory");
    files.add("Linux/TestModule", "not a library");
    EXPECT_FALSE(CFBundleLoadExecutable(files.bundle()));
    EXPECT_TRUE(lastError().starts_with(path + ": ")) << lastError();
    EXPECT_EQ(CFBundleGetFunctionPointerForName(files.bundle(), CFSTR("TestFunction")), nullptr);

    std::filesystem::copy_file(TEST_MODULE, path, std::filesystem::copy_options::overwrite_existing);
    EXPECT_TRUE(CFBundleLoadExecutable(files.bundle())) << lastError();
    EXPECT_EQ(CFBundleGetLastError(), nullptr);
    void* function = CFBundleGetFunctionPointerForName(files.bundle(), CFSTR("TestFunction"));
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(reinterpret_cast<int (*)()>(function)(), 42);
    EXPECT_EQ(CFBundleGetFunctionPointerForName(files.bundle(), CFSTR("NoSuchFunction")), nullptr);

    TestBundle outside;
    outside.add("Info.plist", "<plist><dict><key>CFBundleExecutable</key><string>../../x</string></dict></plist>");
    EXPECT_FALSE(CFBundleLoadExecutable(outside.bundle()));
    EXPECT_NE(lastError().find("CFBundleExecutable"), std::string::npos) << lastError();
}

}  // namespace
