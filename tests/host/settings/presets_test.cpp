// Settings that are kept by name: what is kept of them, and whatever their names and files are like.
#include "host/settings/presets.h"

#include "host/settings/preset_content.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFPropertyList.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/cf_values.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <algorithm>
#include <fstream>
#include <thread>

namespace fs = std::filesystem;

namespace {

std::string xmlOf(const CFRef<CFDictionaryRef>& items) {
    return items ? bytesOfCF(CFRef<CFDataRef>::adopt(CFPropertyListCreateXMLData(nullptr, items.get())).get()) : "";
}

class Presets : public testing::Test {
protected:
    Presets() { setenv("XDG_CONFIG_HOME", home.path().c_str(), 1); }
    ~Presets() override { unsetenv("XDG_CONFIG_HOME"); }

    fs::path folder() const { return home.path() / "tavro/presets"; }

    /// A file as anybody may have written it.
    void add(const std::string& name, const std::string& content) const {
        fs::create_directories(folder());
        std::ofstream(folder() / name, std::ios::binary) << content;
    }

    JobSettings settingsOf(const std::string& printSettings, const std::string& pageFormat = "") const {
        const std::string path = home / "settings.plist";
        std::ofstream(path) << "<plist version=\"1.0\"><dict><key>PMPrintSettingsTicket</key><dict>" << printSettings
                            << "</dict><key>PMPageFormatTicket</key><dict>" << pageFormat
                            << "</dict><key>PMPrinterInfoTicket</key><dict><key>PMDescriptionPath</key>"
                               "<string>/printers/one.ppd</string></dict></dict></plist>";
        auto read = readSettingsFile(path);
        EXPECT_TRUE(read);
        return read ? *read : JobSettings{};
    }
    JobSettings copies(int number) const {
        return settingsOf("<key>com.apple.print.PrintSettings.PMCopies</key><integer>" + std::to_string(number) +
                          "</integer>");
    }
    static bool hasCopies(const Result<JobSettings>& found, int number) {
        auto settings = found;
        return settings && xmlOf(settings->printSettings).find("<integer>" + std::to_string(number) + "</integer>") !=
                               std::string::npos;
    }

    TemporaryFolder home;
    const KeptSettings presets = namedPresets();
};

constexpr const char* kEverything = R"(
    <key>com.apple.print.JobInfo.PMJobName</key><string>Letter to the bank</string>
    <key>com.apple.print.PrintSettings.PMCopies</key><integer>25</integer>
    <key>com.apple.print.PrintSettings.PMPageRange</key><string>2-3</string>
    <key>com.tavro.print.JobInfo.Passcode</key><string>8642</string>
    <key>com.tavro.print.FinishingOptions</key><integer>4</integer>
    <key>com.tavro.print.JobLevelStock</key><dict><key>Type</key><integer>7</integer></dict>
    <key>com.tavro.print.JobType</key><dict>
      <key>JobType</key><integer>6</integer>
      <key>SavedJobName</key><string>Letter to the bank</string>
      <key>SecurePrintPassword</key><string>8642</string>
    </dict>
    <key>com.tavro.print.FaxOptions</key><dict>
      <key>CreditCard</key><string>8642864286428642</string>
      <key>SendSpeed</key><integer>2</integer>
    </dict>
    <key>com.tavro.print.FaxRecipientList</key><array><dict>
      <key>LastName</key><string>Ward</string>
      <key>AuthorizationCode</key><string>8642</string>
    </dict></array>
    <key>com.tavro.print.JobNotesMessage</key><string>For Monday</string>
    <key>com.tavro.print.SpecialPages.InsertList</key><array/>
    <key>com.tavro.print.watermark.Watermark</key><string>Draft</string>
    <key>PPDDict</key><dict>
      <key>Duplex</key><string>DuplexNoTumble</string>
      <key>JCLCovers</key><string>Front</string>
      <key>JCLPasscode</key><string>Custom.8642</string>
      <key>HoldKey</key><string>Custom.8642</string>
      <key>PageSize</key><string>Custom.300x400</string>
    </dict>)";
constexpr const char* kLandscape =
    "<key>com.apple.print.PageFormat.PMOrientation</key><integer>2</integer>"
    "<key>com.apple.print.PageFormat.PMUnadjustedPaperRect</key><array><real>792</real></array>";

}  // namespace

TEST_F(Presets, KeepWhatOtherJobsMayHaveToo) {
    const JobSettings all = settingsOf(kEverything, kLandscape);
    const JobSettings preset = presetContent(all);
    const std::string kept = xmlOf(preset.printSettings) + xmlOf(preset.pageFormat);
    for (const char* text : {"PMCopies", "FinishingOptions", "JobLevelStock", "SendSpeed", "Ward", "For Monday",
                             "InsertList", "Draft", "DuplexNoTumble", "JCLCovers", "300x400", "PMOrientation"}) {
        EXPECT_NE(kept.find(text), std::string::npos) << text;
    }
    for (const char* text : {"8642", "bank", "2-3"}) {
        EXPECT_EQ(kept.find(text), std::string::npos) << text;
    }
    EXPECT_FALSE(preset.printerInfo);

    // The next document is not faxed, held, turned or stamped because the one before it was.
    const JobSettings lastUsed = lastUsedContent(all);
    const std::string printing = xmlOf(lastUsed.printSettings) + xmlOf(lastUsed.pageFormat);
    for (const char* text : {"FinishingOptions", "JobLevelStock", "DuplexNoTumble", "300x400", "PaperRect"}) {
        EXPECT_NE(printing.find(text), std::string::npos) << text;
    }
    for (const char* text : {"8642", "bank", "2-3", "PMCopies", "JobType", "Fax", "JobNotes", "SpecialPages",
                             "watermark", "JCLCovers", "PMOrientation"}) {
        EXPECT_EQ(printing.find(text), std::string::npos) << text;
    }

    EXPECT_TRUE(isSamePreset(all, preset));
    EXPECT_FALSE(isSamePreset(all, lastUsed));
    EXPECT_FALSE(isSamePreset(preset, JobSettings{}));
    EXPECT_TRUE(isSamePreset(JobSettings{}, JobSettings{}));
    const JobSettings nothing = settingsOf(
        "<key>com.tavro.print.BookletLayout</key><false/><key>com.tavro.print.ImageOptions</key><dict/>"
        "<key>com.tavro.print.FinishingOptions</key><integer>0</integer>");
    EXPECT_TRUE(isSamePreset(nothing, JobSettings{}));
    EXPECT_FALSE(isSamePreset(nothing, settingsOf("<key>com.tavro.print.BookletLayout</key><true/>")));
    EXPECT_FALSE(isSamePreset(nothing, copies(1)));
}

TEST_F(Presets, HoldNoSecretWrittenOrRead) {
    ASSERT_EQ(presets.write("Secure", settingsOf(kEverything, kLandscape)), std::nullopt);
    ASSERT_EQ(lastUsedSettings().write("office", settingsOf(kEverything, kLandscape)), std::nullopt);
    std::size_t files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(home.path() / "tavro")) {
        const auto rights = fs::status(entry).permissions();
        EXPECT_EQ(rights, fs::perms(entry.is_directory() ? 0700 : 0600)) << entry.path();
        if (entry.is_regular_file()) {
            ++files;
            std::stringstream content;
            content << std::ifstream(entry.path()).rdbuf();
            EXPECT_EQ(content.str().find("8642"), std::string::npos) << entry.path();
        }
    }
    EXPECT_EQ(files, 2U);

    // A file from elsewhere: it is called like itself.
    fs::copy_file(home / "settings.plist", folder() / "mine.plist");
    Result<JobSettings> mine = presets.read("mine");
    ASSERT_TRUE(mine) << mine.failure().line;
    EXPECT_EQ(xmlOf(mine->printSettings).find("8642"), std::string::npos);
    EXPECT_NE(xmlOf(mine->printSettings).find("DuplexNoTumble"), std::string::npos);
    EXPECT_FALSE(mine->printerInfo);
}

TEST_F(Presets, MayHaveAnyName) {
    std::vector<std::string> names{
        "Office draft", "office draft", ".",   "..",   "../../etc/passwd", ".hidden", "a/b", "Entwürfe – 两面", "%s%n",
        "-rf",          "a&b",          "CON", "\"'<>"};
    std::string manyAccents;
    for (int i = 0; i < 300; ++i) {
        manyAccents += "é";
    }
    names.push_back(manyAccents);
    names.push_back(manyAccents + "e");
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(presets.write(names[i], copies(int(i) + 1)), std::nullopt) << names[i];
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_TRUE(hasCopies(presets.read(names[i]), int(i) + 1)) << names[i];
    }
    auto listed = presets.list().names;
    std::ranges::sort(listed);
    auto expected = names;
    std::ranges::sort(expected);
    EXPECT_EQ(listed, expected);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder()), {}), std::ptrdiff_t(names.size()));

    ASSERT_EQ(presets.rename("a/b", "b/a"), std::nullopt);
    EXPECT_TRUE(hasCopies(presets.read("b/a"), 7));
    EXPECT_FALSE(presets.contains("a/b"));
    ASSERT_EQ(presets.rename("b/a", "b/a"), std::nullopt);
    EXPECT_TRUE(presets.contains("b/a"));
    ASSERT_EQ(presets.remove(".."), std::nullopt);
    EXPECT_FALSE(presets.contains(".."));
    EXPECT_EQ(presets.remove("..").value_or(""), "preset \"..\": there is none of that name");
    EXPECT_EQ(presets.rename("nobody", "somebody").value_or(""), "preset \"nobody\": there is none of that name");

    EXPECT_EQ(cleanPresetName(" \t two\nlines  "), "two lines");
    EXPECT_EQ(cleanPresetName("  "), "");
}

TEST_F(Presets, StayUsableBesideDamagedOnes) {
    ASSERT_EQ(presets.write("Good", copies(2)), std::nullopt);
    ASSERT_EQ(presets.write("Bad", copies(3)), std::nullopt);
    fs::path bad;
    for (const auto& entry : fs::directory_iterator(folder())) {
        if (entry.path().filename().string().starts_with("Bad")) {
            bad = entry.path();
        }
    }
    std::ofstream(bad) << "<plist version=\"1.0\"><dict>";
    add("list.plist", "<plist version=\"1.0\"><array/></plist>");
    add("notes.txt", "not ours");
    fs::create_directory(folder() / "folder.plist");
    mkfifo((folder() / "pipe.plist").c_str(), 0600);

    const auto found = presets.list();
    EXPECT_EQ(found.names, std::vector<std::string>{"Good"});
    ASSERT_EQ(found.unreadable.size(), 2U);
    EXPECT_EQ(found.unreadable[0].file, bad.filename());
    EXPECT_TRUE(found.unreadable[0].line.starts_with(bad.string() + ": line ")) << found.unreadable[0].line;
    const Result<JobSettings> damaged = presets.read("Bad");
    ASSERT_FALSE(damaged);
    EXPECT_TRUE(damaged.failure().line.starts_with("preset \"Bad\": " + bad.string() + ": line "))
        << damaged.failure().line;

    // Whoever can still read the damaged one finds it there.
    ASSERT_EQ(presets.write("Bad", copies(4)), std::nullopt);
    EXPECT_TRUE(hasCopies(presets.read("Bad"), 4));
    EXPECT_EQ(fs::file_size(bad), 27U);
    ASSERT_EQ(presets.write("Bad", copies(5)), std::nullopt);
    EXPECT_TRUE(hasCopies(presets.read("Bad"), 5));
    EXPECT_EQ(presets.list().names.size(), 2U);
    ASSERT_EQ(presets.remove("Bad"), std::nullopt);
    EXPECT_TRUE(fs::exists(bad));
}

TEST_F(Presets, AreWrittenBySeveralDialogsAtOnce) {
    std::vector<std::thread> dialogs;
    for (int dialog = 0; dialog < 4; ++dialog) {
        dialogs.emplace_back([this, dialog] {
            for (int i = 0; i < 10; ++i) {
                EXPECT_EQ(presets.write("shared", JobSettings{}), std::nullopt);
                EXPECT_EQ(presets.write("own " + std::to_string(dialog), JobSettings{}), std::nullopt);
                EXPECT_TRUE(presets.read("shared"));
                EXPECT_TRUE(presets.list().unreadable.empty());
            }
        });
    }
    for (std::thread& dialog : dialogs) {
        dialog.join();
    }
    EXPECT_EQ(presets.list().names.size(), 5U);
}

TEST_F(Presets, NeedAPlaceThatCanBeMade) {
    std::ofstream(home.path() / "tavro") << "a file where the folder would be";
    EXPECT_EQ(presets.write("Draft", copies(2)).value_or(""),
              "preset \"Draft\": your configuration folder cannot be made");
    EXPECT_TRUE(presets.list().names.empty());
    EXPECT_FALSE(presets.read("Draft"));
}

TEST_F(Presets, OfAPrinterAreFoundByItsQueueOrItsFile) {
    EXPECT_EQ(printerKey("office", "/tmp/copy.ppd"), "office");
    EXPECT_EQ(printerKey("", "/printers/../printers/one.ppd"), "/printers/one.ppd");
    EXPECT_EQ(printerKey("", "one.ppd"), (fs::current_path() / "one.ppd").string());
}
