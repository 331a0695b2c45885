// Printing without a window: the settings as they are, and nothing else.
#include "tests/host/program/program_fixture.h"

#include <algorithm>
#include <regex>

namespace {

class PrintsAtOnce : public ProgramTest {
protected:
    Run print(const Words& more, const Words& environment = {}) const {
        Words arguments{"--ppd", kZR420, "--print", kTenPages};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments, environment);
    }

    std::string settings(const std::string& choices, const std::string& items = {}) const {
        return add("settings.plist", "<plist version=\"1.0\"><dict><key>PMPrintSettingsTicket</key><dict>" + items +
                                         "<key>PPDDict</key><dict>" + choices + "</dict></dict></dict></plist>");
    }

    std::string job() const { return contentOf(folder / "job.ps"); }
};

/// A job without what two runs of the same job differ by.
std::string withoutDates(const std::string& job) {
    return std::regex_replace(job, std::regex("%%CreationDate.*"), "");
}

}  // namespace

TEST_F(PrintsAtOnce, WhatTheDialogPrintedFromTheSameSettings) {
    const Run dialog = script(
        "panel \"Paper and Output\"\nitem Tshl:104 Sclr 2\n"
        "choose Tshl:113 \"2-Sided, Flip on Long Edge\"\nset Host:20 3\nok\n",
        {"--ticket-out", folder / "kept.plist", "--job-out", folder / "dialog.ps"});
    ASSERT_EQ(dialog.status, 0) << dialog.errors;
    // It needs none of the maker's panels.
    const Run run = print(
        {"--ticket-in", folder / "kept.plist", "--job-out", folder / "job.ps", "--ticket-out", folder / "again.plist"},
        {"TAVRO_PLUGIN_DIR=" + (folder / "none")});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(withoutDates(job()), withoutDates(contentOf(folder / "dialog.ps")));
    EXPECT_NE(job().find("%%BeginFeature: *Duplex DuplexNoTumble"), std::string::npos);
    EXPECT_EQ(contentOf(folder / "again.plist"), contentOf(folder / "kept.plist"));
}

TEST_F(PrintsAtOnce, WhatNoPanelWouldHaveLeftAsItIs) {
    // The panel of paper writes the sides that its own item knows; here there is only the printer's option.
    const Run run = print(
        {"--ticket-in", settings("<key>Duplex</key><string>DuplexTumble</string>"), "--job-out", folder / "job.ps"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_NE(job().find("%%BeginFeature: *Duplex DuplexTumble"), std::string::npos);
}

TEST_F(PrintsAtOnce, FilesWhoseNamesAreNotUTF8) {
    const std::string name = folder / "caf\xE9";
    for (const auto& [from, ending] : {std::pair{kTenPages, ".pdf"}, {kZR420, ".ppd"}}) {
        std::filesystem::copy_file(from, name + ending);
    }
    const Words files{"--ppd",         name + ".ppd", name + ".pdf", "--ticket-out",
                      name + ".plist", "--job-out",   name + ".ps"};
    Words words = files;
    words.emplace_back("--print");
    EXPECT_EQ(run(words).status, 0);
    // The panels find the PPD that the settings name.
    words = files;
    const std::string before = add("again.plist", contentOf(name + ".plist"));
    words.insert(words.end(), {"--script", add("script", "panel 1\nok\n"), "--ticket-in", before});
    std::filesystem::remove(name + ".ps");
    EXPECT_EQ(run(words).status, 0);
    EXPECT_NE(contentOf(name + ".ps").find("%%Pages: 10\n"), std::string::npos);
    const Run missing = run({"--ppd", kZR420, "--print", name});
    EXPECT_EQ(missing.errors, "tavro-print: " + (folder / "caf\u00E9") + ": No such file or directory\n");
}

TEST_F(PrintsAtOnce, AndTellsWhatItCannotPrint) {
    const Run other =
        print({"--ticket-in", settings("<key>Duplex</key><string>Sideways</string>"), "--job-out", folder / "job.ps"});
    EXPECT_EQ(other.status, 0);
    EXPECT_EQ(other.errors, "tavro-print: Duplex=Sideways: Tavro ZR420 does not offer it; its default is printed\n");
    std::filesystem::remove(folder / "job.ps");

    const std::string range = "<key>com.apple.print.PrintSettings.PMPageRange</key><string>8-11</string>";
    const Run pages = print({"--ticket-in", settings("", range), "--job-out", folder / "job.ps"});
    EXPECT_EQ(pages.status, 4);
    EXPECT_EQ(pages.errors, "tavro-print: pages 8-11: the document has no such page\n");
    EXPECT_FALSE(std::filesystem::exists(folder / "job.ps"));

    const Run nowhere = print({});
    EXPECT_EQ(nowhere.status, 5);
    EXPECT_NE(nowhere.errors.find("has no queue"), std::string::npos) << nowhere.errors;
    EXPECT_EQ(print({"--list-controls"}).status, 2);
}
