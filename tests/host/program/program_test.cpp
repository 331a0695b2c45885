// What the program does from a script to the settings and the job that it leaves.
#include "driver/proof/proof.h"
#include "tests/driver/pages/pdf_maker.h"
#include "tests/driver/proof/proof_words.h"
#include "tests/host/program/program_fixture.h"
#include "tests/support/places.h"

#include <algorithm>
#include <ctime>
#include <regex>

namespace fs = std::filesystem;

namespace {

class Program : public ProgramTest {
protected:
    std::string settings() const { return contentOf(folder / "settings.plist"); }
    std::string job() const { return contentOf(folder / "job.ps"); }
    Words outputs() const { return {"--ticket-out", folder / "settings.plist", "--job-out", folder / "job.ps"}; }

    /// The XML of a pair, blanks between the two left out.
    static bool hasPair(std::string plist, const std::string& key, const std::string& value) {
        std::erase_if(plist, [](char c) { return c == '\n' || c == '\t'; });
        return plist.find("<key>" + key + "</key>" + value) != std::string::npos;
    }

    /// Whether the job chooses the option of the PPD.
    bool jobHas(const std::string& mainKeyword, const std::string& option) const {
        return job().find("%%BeginFeature: *" + mainKeyword + " " + option + "\n") != std::string::npos;
    }

    Proof readJob() const {
        std::string reason;
        const auto proof = readProof(folder / "job.ps", &reason);
        EXPECT_TRUE(proof) << reason;
        return proof.value_or(Proof{});
    }
    /// The colors of the job's sheets.
    std::string papers() const {
        std::string colors;
        for (const ProofSheet& sheet : readJob().sheets) {
            colors += sheet.value("MediaColor") + " ";
        }
        return colors;
    }

    /// Runs a script of the documentation with the command in its head, in a folder that holds what that names. The job
    /// leaves out what one sentence tells of.
    void runExample(const std::string& name, const std::string& leftOut = {}) const {
        const Run done = runJobExample(name);
        EXPECT_EQ(done.output + done.errors,
                  leftOut.empty()
                      ? ""
                      : "notice: The printer will not do all that you have chosen.\n        " + leftOut + "\n");
    }
    /// The same for one that has other notices.
    Run runJobExample(const std::string& name) const {
        const fs::path place = folder.path();
        constexpr auto kOver = fs::copy_options::recursive | fs::copy_options::overwrite_existing;
        fs::copy(sourcePath("docs/examples"), place, kOver);
        fs::copy(sourcePath("resources/ppd"), place, kOver);
        fs::copy(sourcePath("resources/sample/welcome.pdf"), place / "DOCUMENT.pdf", kOver);
        const std::string text = contentOf(place / (name + ".tavro-script"));
        std::smatch head;
        EXPECT_TRUE(std::regex_search(text, head, std::regex("\n#   (tavro-print (?:[^\n]*\\\\\n)?[^\n]*)\n"))) << name;
        const std::string command =
            "cd " + place.string() + " && " + std::regex_replace(head.str(1), std::regex("\\\\\n#"), "");
        Run done =
            start("/bin/sh", {"-c", command}, {"PATH=" + stagePath("bin") + ":/usr/bin:/bin", "QT_QPA_PLATFORM="});
        EXPECT_EQ(done.status, 0) << name << "\n" << done.errors;
        for (const char* file : {"settings.plist", "job.ps"}) {
            fs::rename(place / "out" / file, place / file);
        }
        return done;
    }

    bool wroteNothing() const { return !fs::exists(folder / "settings.plist") && !fs::exists(folder / "job.ps"); }
};

class Examples : public Program, public testing::WithParamInterface<std::string> {
public:
    static Words names() {
        Words found;
        for (const fs::directory_entry& entry : fs::directory_iterator(sourcePath("docs/examples"))) {
            if (entry.path().extension() == ".tavro-script") {
                found.push_back(entry.path().stem());
            }
        }
        return found;
    }
};

/// Its libraries find what they call by themselves otherwise, past a proxy or an allocator.
TEST_F(Program, CallsWhatIsLoadedBeforeIt) {
    // Sanitizers want to be first themselves.
    const Run result =
        run({"--list-printers"}, {"LD_PRELOAD=" PRELOADED_CONNECTION, "ASAN_OPTIONS=verify_asan_link_order=0"});
    EXPECT_NE(result.errors.find("preloaded\n"), std::string::npos) << result.errors;
}

}  // namespace

TEST_P(Examples, PassWithTheSampleDocument) {
    runJobExample(GetParam());
}

INSTANTIATE_TEST_SUITE_P(All, Examples, testing::ValuesIn(Examples::names()), [](const auto& example) {
    std::string name = example.param;
    std::ranges::replace(name, '-', '_');
    return name;
});

TEST_F(Program, TellsAboutItself) {
    const Run help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    for (const char* word : {"--ppd FILE", "--printer QUEUE", "--installed", "--ticket-in FILE", "--ticket-out FILE",
                             "--job-out FILE", "--script FILE", "--shots DIR", "--list-controls", "--version"}) {
        EXPECT_NE(help.output.find(word), std::string::npos) << word;
    }
    EXPECT_EQ(run({"--version"}).output.substr(0, 12), "tavro-print ");
}

TEST_F(Program, RunsTheExampleOfTheDocumentation) {
    runExample("advanced");
    EXPECT_TRUE(jobHas("TRRotate180", "True"));
    EXPECT_NE(job().find("@PJL SET TRBANNER=ON"), std::string::npos);
    EXPECT_TRUE(hasPair(settings(), "com.tavro.print.AdvancedRotateImage180", "<integer>1</integer>"));
    EXPECT_TRUE(hasPair(settings(), "JCLBanner", "<string>True</string>"));
    EXPECT_EQ(fs::status(folder / "settings.plist").permissions(), fs::perms(0600));
    EXPECT_EQ(contentOf(folder / "out/advanced-after.png").substr(1, 3), "PNG");
}

TEST_F(Program, RunsTheExampleOfImageOptions) {
    runExample("image-options");
    EXPECT_TRUE(jobHas("TRNegativePrint", "True"));
    EXPECT_TRUE(jobHas("Resolution", "1200dpi"));
    EXPECT_TRUE(jobHas("TRImageQuality", "Lightest"));
    EXPECT_TRUE(jobHas("TREconomode", "True"));
    EXPECT_TRUE(hasPair(settings(), "Resolution", "<string>1200dpi</string>"));
    EXPECT_TRUE(hasPair(settings(), "TRImageQuality", "<string>Lightest</string>"));
    EXPECT_TRUE(hasPair(settings(), "TREconomode", "<string>True</string>"));
    EXPECT_TRUE(hasPair(settings(), "com.tavro.print.InvertImageOptions",
                        "<dict><key>NegativeImage</key><integer>1</integer>"
                        "<key>MirrorImage</key><integer>0</integer></dict>"));
    EXPECT_NE(contentOf(folder / "out/image-options-before.png"), contentOf(folder / "out/image-options-after.png"));
}

TEST_F(Program, RunsTheExampleOfABooklet) {
    runExample("booklet", "A cover will be blank, because there is no page left for it.");
    EXPECT_TRUE(jobHas("Duplex", "DuplexTumble"));
    EXPECT_TRUE(jobHas("TRFoldOptions", "BookletFoldStapleOpt"));
    const Proof proof = readJob();
    ASSERT_EQ(proof.sheets.size(), 1U);  // of a document of two pages: its cover
    EXPECT_EQ(proof.sheets[0].value("MediaColor"), "Blue");
    EXPECT_TRUE(proof.sheets[0].isTumbled && !proof.sheets[0].side1.isBlank && !proof.sheets[0].side2.isBlank);
    EXPECT_TRUE(hasPair(settings(), "com.tavro.print.BookletLayout", "<true/>"));
    EXPECT_TRUE(hasPair(settings(), "com.tavro.print.BookletDrawOutlines", "<integer>1</integer>"));
    EXPECT_TRUE(hasPair(settings(), "com.apple.print.PrintSettings.PMDuplexing", "<integer>3</integer>"));
    EXPECT_TRUE(hasPair(settings(), "com.tavro.print.FinishingDuplex", "<integer>3</integer>"));
    EXPECT_TRUE(hasPair(settings(), "Duplex", "<string>DuplexTumble</string>"));
    EXPECT_TRUE(hasPair(settings(), "TRFoldOptions", "<string>BookletFoldStapleOpt</string>"));
    EXPECT_EQ(contentOf(folder / "out/booklet-finishing.png").substr(1, 3), "PNG");

    // The settings are a booklet's from the start of the next dialog on; a printer that cannot fold has no button, and
    // its fold is a conflict.
    fs::rename(folder / "settings.plist", folder / "before.plist");
    Words more = outputs();
    more.insert(more.end(), {"--ticket-in", folder / "before.plist", "--installed", "Option2=LCSS"});
    const Run second = script(
        "panel Layout\nexpect Tshl:6004 value 2\nexpect Tshl:6011 value 1\nchoose Tshl:6004 \"Off\"\n"
        "expect conflicts 1\nclick Host:72\nok",
        more);
    EXPECT_EQ(second.status, 0) << second.errors;
    EXPECT_TRUE(jobHas("Duplex", "DuplexNoTumble"));
    EXPECT_TRUE(jobHas("TRFoldOptions", "None"));
    EXPECT_TRUE(hasPair(settings(), "com.tavro.print.BookletLayout", "<false/>"));
    const Run third = script("panel Layout\nclick Tshl:6013", {"--installed", "Option2=LCSS"});
    EXPECT_EQ(third.status, 3) << "no folder, no button";
}

TEST_F(Program, OffersTheTraysOfTheFinisherByTheirNames) {
    const struct {
        const char* finisher;
        const char* tray;
        const char* option;
    } rows[] = {
        {"None", "Side Tray", "Side"},           {"OCT", "Offset Catch Tray", "Side"},
        {"LCSS", "Stacker Tray", "Stacker"},     {"HCSS", "Stacker Tray 1", "Stacker"},
        {"HCSS", "Upper Stacker Tray", "Upper"}, {"HCSS_BK", "Booklet Maker Tray", "Booklet"},
    };
    for (const auto& row : rows) {
        Words more = outputs();
        more.insert(more.end(), {"--installed", "Option2=" + std::string(row.finisher)});
        const Run done =
            script("panel \"Paper and Output\"\nchoose Tshl:110 \"" + std::string(row.tray) + "\"\nok", more);
        EXPECT_EQ(done.status, 0) << row.tray << done.errors;
        EXPECT_TRUE(jobHas("OutputBin", row.option)) << row.tray;
    }
}

TEST_F(Program, RunsTheExampleOfEditedWatermarks) {
    const Run done = runJobExample("edit-watermarks");
    EXPECT_EQ(done.errors, "");
    EXPECT_EQ(done.output,
              "notice: A deleted watermark cannot be brought back.\n"
              "        Do you want to delete the watermark \u201CConfidential\u201D?\n");
    EXPECT_TRUE(hasPair(settings(), "com.tavro.print.watermark.Watermark", "<string>Internal</string>"));
    const std::string store = contentOf(folder / ".local/share/tavro/Tavro/com.tavro.printing.watermarks.plist");
    EXPECT_TRUE(hasPair(store, "WatermarkListEntries",
                        "<array><string>First Draft</string><string>Copy</string><string>Internal</string></array>"));
    EXPECT_EQ(store.find("<key>Draft</key>"), std::string::npos);
    EXPECT_EQ(store.find("<key>Confidential</key>"), std::string::npos);
    EXPECT_TRUE(hasPair(store, "fontName", "<string>DejaVuSans-Bold</string>"));
}

TEST_F(Program, RunsTheExampleOfPaperAndOutput) {
    runExample("paper-output");
    EXPECT_TRUE(jobHas("MediaColor", "Blue"));
    EXPECT_TRUE(jobHas("MediaType", "ExtraHeavyweight"));
    EXPECT_TRUE(jobHas("Duplex", "DuplexNoTumble"));
    EXPECT_TRUE(jobHas("Collate", "True"));
    EXPECT_TRUE(jobHas("StapleLocation", "2Staples"));
    EXPECT_TRUE(hasPair(settings(), "com.tavro.print.FinishingCollateStaple", "<integer>4</integer>"));
    EXPECT_TRUE(hasPair(settings(), "com.tavro.print.FinishingOptions", "<integer>0</integer>"));
}

TEST_F(Program, RunsTheExampleOfABookletFromPaperAndOutput) {
    runExample("paper-output-booklet");
    EXPECT_TRUE(jobHas("Duplex", "DuplexTumble"));
    EXPECT_TRUE(jobHas("TRFoldOptions", "BookletFoldStapleOpt"));
    EXPECT_TRUE(jobHas("StapleLocation", "None"));
    EXPECT_TRUE(hasPair(settings(), "com.tavro.print.BookletLayout", "<true/>"));
    EXPECT_TRUE(hasPair(settings(), "com.tavro.print.BookletFoldStaple", "<integer>8</integer>"));
}

TEST_F(Program, RunsTheExampleOfSecurePrint) {
    const Run done = runJobExample("secure-print");
    const std::size_t first = done.output.find("notice: ");
    EXPECT_NE(first, std::string::npos) << done.output;
    EXPECT_NE(done.output.find("notice: ", first + 1), std::string::npos) << done.output;
    EXPECT_EQ((done.output + done.errors).find("24"), std::string::npos) << "a passcode was told";
    EXPECT_TRUE(hasPair(settings(), "JobType", "<integer>6</integer>"));
    EXPECT_TRUE(hasPair(settings(), "SecurePrintPassword", "<string>2468</string>"));
    EXPECT_FALSE(hasPair(settings(), "JCLPasscode", "<string>Custom.2468</string>"));
    EXPECT_NE(job().find("@PJL SET HOLDKEY=\"2468\"\n"), std::string::npos);
    EXPECT_EQ(fs::status(folder / "settings.plist").permissions(), fs::perms(0600));
}

TEST_F(Program, RunsTheExampleOfDelayedPrint) {
    runExample("delayed-print", "The job will be written to its file now, not at 00:00.");
    EXPECT_TRUE(hasPair(settings(), "JobType", "<integer>7</integer>"));
    const std::string text = settings();
    const std::string key = "<key>DelayedPrintTime</key>";
    const std::size_t at = text.find("<integer>", text.find(key));
    ASSERT_NE(at, std::string::npos);
    // Midnight of tomorrow, on the clock on the wall: seconds since 1904, every day having 86400.
    const std::time_t now = std::time(nullptr);
    const std::int64_t today = now + std::localtime(&now)->tm_gmtoff + 2082844800;
    const std::int64_t time = std::stoll(text.substr(at + 9));
    EXPECT_EQ(time % 86400, 0);
    EXPECT_GT(time, today - 60);
    EXPECT_LE(time, today + 86400);
}

TEST_F(Program, RunsTheExampleOfAFax) {
    runExample("fax");
    EXPECT_NE(job().find("@PJL COMMENT TPIF tavro-job-kind=fax\n"), std::string::npos);
    EXPECT_TRUE(hasPair(settings(), "JobType", "<integer>5</integer>"));
    EXPECT_TRUE(hasPair(settings(), "FaxNumber", "<string>442079460018</string>"));
}

TEST_F(Program, ASecondPressOfPrintDoesNotSendAFaxToNobody) {
    const Run run = script(
        "panel 1\nchoose Tshl:102 \"Fax\"\nok\nexpect window \"Fax\"\ncommand not!\nexpect window Print\nok\n"
        "expect window \"Fax\"\ncommand not!",
        outputs());
    EXPECT_EQ(run.status, 1) << run.errors;
    EXPECT_TRUE(wroteNothing());
}

TEST_F(Program, RunsTheExamplesOfCovers) {
    runExample("covers", "A cover will be blank, because there is no page left for it.");
    EXPECT_EQ(papers(), "Blue Blue ");
    EXPECT_TRUE(
        hasPair(settings(), "com.tavro.print.SpecialPages.BackCover",
                "<dict><key>StartPage</key><integer>0</integer><key>Stock</key><dict>"
                "<key>Type</key><integer>1</integer>"
                "<key>Color</key><integer>2</integer></dict><key>SidesImaged</key><integer>4</integer></dict>"));

    runExample("different-covers");
    EXPECT_EQ(papers(), "Blue Green ");
    EXPECT_TRUE(
        hasPair(settings(), "com.tavro.print.SpecialPages.BackCover",
                "<dict><key>StartPage</key><integer>0</integer><key>Stock</key><dict>"
                "<key>Size</key><integer>1</integer><key>Type</key><integer>1</integer>"
                "<key>Color</key><integer>4</integer></dict><key>SidesImaged</key><integer>1</integer></dict>"));

    runJobExample("delete-special-pages");
    EXPECT_EQ(papers(), "White White ");
    EXPECT_EQ(settings().find("com.tavro.print.SpecialPages"), std::string::npos);
}

TEST_F(Program, RunsTheExampleOfInsertsAndExceptions) {
    runJobExample("special-pages");
    EXPECT_TRUE(hasPair(settings(), "X1", "<integer>13</integer>"));
    EXPECT_TRUE(hasPair(settings(), "EndPage", "<integer>9</integer>"));
    EXPECT_TRUE(hasPair(settings(), "Size", "<integer>75</integer>"));

    runJobExample("production");
    EXPECT_EQ(papers(), "Blue Green White Pink Goldenrod Yellow ");

    runJobExample("tabs");
    const Proof tabs = readJob();
    ASSERT_EQ(tabs.sheets.size(), 1U);
    EXPECT_EQ(tabs.sheets[0].value("MediaType"), "TabStock");
    EXPECT_EQ(tabs.instruction("overrides"),
              Words{"{pages=1-2 media-type=TabStock x-side1-image-shift=-600 x-side2-image-shift=600}"});
    runExample("transparencies");
    EXPECT_EQ(papers(), "Clear Yellow Clear Yellow ");
}

TEST_F(Program, RunsTheExampleOfTheSummary) {
    const Run done = runJobExample("summary");
    EXPECT_EQ(done.errors, "");
    EXPECT_EQ(std::ranges::count(done.output, '\n'), 4) << done.output;
    EXPECT_TRUE(jobHas("MediaColor", "Blue"));
}

TEST_F(Program, RunsTheExampleOfAWatermark) {
    runExample("watermark");
    EXPECT_TRUE(hasPair(settings(), "com.tavro.print.watermark.Watermark", "<string>Draft</string>"));
    EXPECT_TRUE(hasPair(settings(), "com.tavro.print.watermark.FirstPageOnly", "<integer>1</integer>"));
    EXPECT_TRUE(hasPair(settings(), "com.tavro.print.watermark.Option", "<integer>2</integer>"));
    const std::string store = contentOf(folder / ".local/share/tavro/Tavro/com.tavro.printing.watermarks.plist");
    for (const char* key : {"<key>Draft</key>", "<key>Confidential</key>", "<key>Copy</key>", "<key>ArialMT</key>"}) {
        EXPECT_NE(store.find(key), std::string::npos) << key;
    }
}

TEST_F(Program, OffersThePageThatTheUserLooksAt) {
    auto options = outputs();
    options.insert(options.end(), {"--current-page", "4"});
    const Run run = script("expect Host:35 enabled\nset Host:30 3\nok", options);
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_TRUE(hasPair(settings(), "com.apple.print.PrintSettings.PMPageRange", "<string>4</string>"));
    EXPECT_EQ(script("expect Host:35 hidden\ncancel", {"--current-page", "11"}).status, 1) << "ten pages";
    EXPECT_EQ(script("cancel", {"--current-page", "0"}).status, 2);
}

TEST_F(Program, WritesItsOwnSettingsAndStartsFromThem) {
    const Run first = script(
        "set Host:20 3\nclick Host:21\nexpect Host:21 value 0\nset Host:41 2\nchoose Host:40 \"A4 (210 x 297 mm)\"\n"
        "type Host:31 \"7, 2-3\"\nexpect Host:30 value 2\nok",
        outputs());
    EXPECT_EQ(first.status, 0) << first.errors;
    const std::string written = settings();
    EXPECT_TRUE(hasPair(written, "com.apple.print.PrintSettings.PMCopies", "<integer>3</integer>"));
    EXPECT_TRUE(hasPair(written, "com.apple.print.PrintSettings.PMPageRange", "<string>2-3,7</string>"));
    EXPECT_TRUE(hasPair(written, "com.apple.print.PageFormat.PMOrientation", "<integer>2</integer>"));
    EXPECT_TRUE(hasPair(written, "Collate", "<string>False</string>"));
    EXPECT_TRUE(hasPair(written, "PageSize", "<string>A4</string>"));
    EXPECT_NE(job().find("%%Pages: 3"), std::string::npos);

    fs::rename(folder / "settings.plist", folder / "before.plist");
    Words more = outputs();
    more.insert(more.end(), {"--ticket-in", folder / "before.plist"});
    const Run second = script(
        "expect Host:20 value 3\nexpect Host:21 value 0\nexpect Host:31 text \"2-3,7\"\nexpect Host:41 value 2\n"
        "expect Host:40 text \"A4 (210 x 297 mm)\"\nok",
        more);
    EXPECT_EQ(second.status, 0) << second.errors;
    EXPECT_EQ(settings(), written);
}

TEST_F(Program, AsksForAPaperSizeOfTheUsersOwn) {
    const Run run = script(
        "choose Host:40 \"Custom Size…\"\nexpect window \"Custom Paper Size\"\n"
        "choose Host:134 \"Millimeters\"\nexpect Host:130 text \"215.9\"\nexpect Host:132 text \"101.6 to 330.2 mm\"\n"
        "type Host:130 \"101.5\"\nexpect Host:135 disabled\n"
        "expect Host:132 text \"Too small. Use 101.6 to 330.2 mm.\"\ntype Host:131 \"1e2\"\n"
        "expect Host:133 text \"This is no number. Use 152.4 to 482.6 mm.\"\n"
        "type Host:130 \"205.5\"\ntype Host:131 \"300\"\nchoose Host:134 \"Inches\"\n"
        "expect Host:130 text \"8.09\"\nchoose Host:134 \"Points\"\nexpect Host:132 text \"288 to 936 pt\"\n"
        "type Host:130 \"600\"\nclick Host:136\nexpect Host:40 text \"Letter (8.5 x 11 in)\"\n"
        "choose Host:40 \"Custom Size…\"\nchoose Host:134 \"Millimeters\"\ntype Host:130 \"205.5\"\n"
        "type Host:131 \"300\"\nclick Host:135\nexpect Host:40 text \"205.5 × 300 mm\"\n"
        "expect Host:70 text \"Paper Size: 205.5 × 300 mm\\n10 pages on 10 sheets\"\nok",
        outputs());
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_TRUE(hasPair(settings(), "PageSize", "<string>Custom.205.5x300mm</string>")) << settings();
    EXPECT_TRUE(wordsOf(readJob()).starts_with("583x850[")) << wordsOf(readJob());
    fs::rename(folder / "settings.plist", folder / "before.plist");
    Words again = outputs();
    again.insert(again.end(), {"--ppd", kZR420, "--ticket-in", folder / "before.plist", "--print", kTenPages});
    EXPECT_EQ(ProgramTest::run(again).status, 0);
    EXPECT_TRUE(wordsOf(readJob()).starts_with("583x850[")) << wordsOf(readJob());
}

TEST_F(Program, BeginsWithThePaperOfTheDocument) {
    const TestPage page{.keys = "/MediaBox[0 0 841.89 595.28]"};
    const std::string document = add("plan.pdf", pdfOf({page}));
    const auto drive = [&](const std::string& lines, const Words& more = {}) {
        Words words{"--ppd", kZR420, "--script", add("script", lines), document};
        words.insert(words.end(), more.begin(), more.end());
        const Run done = run(words);
        EXPECT_EQ(done.errors, "");
    };
    const std::string unchanged = "\nexpect Host:12 text \"Printer's Defaults\"\n";
    drive("expect Host:40 text \"A4 (210 x 297 mm)\"" + unchanged + "ok", outputs());
    EXPECT_EQ(wordsOf(readJob()), "595x842[P1]");
    drive("choose Host:40 \"Legal (8.5 x 14 in)\"\nok", outputs());
    fs::rename(folder / "settings.plist", folder / "before.plist");
    drive(
        "expect Host:40 text \"Legal (8.5 x 14 in)\"\nchoose Host:12 \"Printer's Defaults\"\n"
        "expect Host:40 text \"A4 (210 x 297 mm)\"\ncancel",
        {"--ticket-in", folder / "before.plist"});
}

TEST_F(Program, SaysAtTheRangeWhatCannotBePrinted) {
    const Run run = script(
        "type Host:31 \"8-12\"\nexpect Host:34 text \"The document has the pages 1 to 10.\"\nexpect Host:60 disabled\n"
        "expect Host:62 disabled\ncommand \"ok  \"\nexpect window Print\ntype Host:31 \"7-3\"\n"
        "expect Host:34 text \"Type the lower page first, like 3-7.\"\ntype Host:31 \"3-7\"\nexpect Host:34 text \"\"\n"
        "expect Host:60 enabled\ntype Host:31 \"\"\nexpect Host:60 disabled\nset Host:30 1\nexpect Host:60 enabled\n"
        "cancel",
        outputs());
    EXPECT_EQ(run.status, 1) << run.errors;
    EXPECT_TRUE(wroteNothing());
}

TEST_F(Program, WritesNothingUnlessItEndsWithPrint) {
    constexpr const char* kChanges = "set Host:20 3\npanel Advanced\nset Tshl:632 2\n";
    EXPECT_EQ(script(std::string(kChanges) + "cancel", outputs()).status, 1);
    EXPECT_EQ(script(std::string(kChanges) + "command \"not!\"", outputs()).status, 1);
    EXPECT_EQ(script(kChanges, outputs()).status, 1);
    const Run failed = script(std::string(kChanges) + "expect Host:20 value 4\nok", outputs());
    EXPECT_EQ(failed.status, 3);
    EXPECT_EQ(failed.errors, folder / "script" + ":4: Host:20 has the value 3, not 4\n");
    EXPECT_TRUE(wroteNothing());
}

TEST_F(Program, SaysSoWhenTheJobCannotBeSent) {
    const Run noQueue = script("ok", {"--ticket-out", folder / "settings.plist"});
    EXPECT_EQ(noQueue.status, 5);
    EXPECT_NE(noQueue.errors.find("Tavro ZR420: "), std::string::npos) << noQueue.errors;
    EXPECT_NE(noQueue.output.find("notice: "), std::string::npos);
    EXPECT_TRUE(hasPair(settings(), "Collate", "<string>True</string>"));  // not lost
    const Run noFolder = script("ok", {"--job-out", folder / "none/job.ps"});
    EXPECT_EQ(noFolder.status, 5);
    EXPECT_NE(noFolder.errors.find("none/job.ps"), std::string::npos) << noFolder.errors;
}

TEST_F(Program, PrintsOnOtherMakersPrintersWithoutTheMakersPanels) {
    std::string ppd = contentOf(kZR420);
    for (std::size_t at = 0; (at = ppd.find("Tavro", at)) != std::string::npos;) {
        ppd.replace(at, 5, "Other");
    }
    Words arguments{"--ppd", add("other.ppd", ppd), "--script",
                    add("script", "expect Host:50 hidden\nexpect Host:51 visible\nset Host:20 2\nok"), kTenPages};
    for (const std::string& word : outputs()) {
        arguments.push_back(word);
    }
    const Run run = ProgramTest::run(arguments);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_NE(job().find("%!PS-Adobe"), std::string::npos);
    EXPECT_TRUE(hasPair(settings(), "com.apple.print.PrintSettings.PMCopies", "<integer>2</integer>"));
}

TEST_F(Program, LaysPagesOutAsTheDialogSays) {
    const std::string settings = folder / "settings.plist";
    const Run done = script(
        "choose Host:42 \"Tray 2\"\nchoose Host:44 \"Per Cent\"\nset Host:45 50\nchoose Host:46 "
        "\"4\"\nexpect Host:44 disabled\nset Host:33 1\nchoose Host:32 \"Even only\"\nok\n",
        {"--ticket-out", settings, "--job-out", folder / "job.ps"});
    EXPECT_EQ(done.status, 0) << done.errors;
    EXPECT_NE(run({"--proof", folder / "job.ps"}).output.find("Page 10"), std::string::npos);
    EXPECT_EQ(run({"--proof", folder / "job.ps"}).output.find("Page 9"), std::string::npos);
    const Run again = script(
        "expect Host:42 text \"Tray 2\"\nexpect Host:45 value 50\nexpect Host:46 text \"4\"\n"
        "expect Host:33 value 1\nexpect Host:32 text \"Even only\"\nset Host:33 0\nchoose Host:32 "
        "\"Odd and even\"\nchoose Host:46 \"1\"\nchoose Host:44 \"Shrink If Too Large\"\n"
        "choose Host:42 \"Automatic\"\nexpect Host:45 hidden\nexpect Host:70 text \"All settings "
        "are the printer's defaults.\\n10 pages on 10 sheets\"\ncancel\n",
        {"--ticket-in", settings});
    EXPECT_EQ(again.status, 1) << again.errors;
}

TEST_F(Program, SavesThePagesAsAPDF) {
    const std::string booklet = "panel Layout\nchoose Tshl:6004 \"On\"\n";
    const std::string file = folder / "pages.pdf";
    const Run done = script(booklet + "file pages.pdf\nclick Host:62\n", {"--ticket-out", folder / "settings.plist"});
    EXPECT_EQ(done.status, 0) << done.errors;
    EXPECT_EQ(outputOfCommand("pdftotext -f 1 -l 1 '" + file + "' - | tr -s '[:space:]' ' '"), "Page 1 ");
    EXPECT_EQ(outputOfCommand("pdfinfo '" + file + "' | sed -n 's/^Pages: *//p'"), "6\n");

    // The same without a window; with nobody who names a file there is none.
    const std::string again = folder / "again.pdf";
    EXPECT_EQ(run({"--ppd", kZR420, "--print", "--ticket-in", folder / "settings.plist", "--pdf-out", again, kTenPages})
                  .status,
              0);
    EXPECT_EQ(outputOfCommand("pdftotext '" + again + "' -"), outputOfCommand("pdftotext '" + file + "' -"));
    EXPECT_EQ(script("click Host:62\nexpect window \"Print\"\ncancel\n").status, 1);
    const Run full = run({"--ppd", kZR420, "--print", "--pdf-out", "/dev/full", kTenPages});
    EXPECT_EQ(full.status, 5);
    EXPECT_EQ(full.errors, "tavro-print: /dev/full: Invalid argument\n");
}

TEST_F(Program, PutsTheCoverSheetInFrontOfAFax) {
    const auto fax = [this](const char* coverSheet) {
        return add("fax.plist", std::string(R"(<plist version="1.0"><dict><key>PMPrintSettingsTicket</key><dict>
            <key>com.tavro.print.JobType</key><dict><key>JobType</key><integer>5</integer></dict>
            <key>com.tavro.print.FaxRecipientList</key><array><dict>
              <key>LastName</key><string>Example</string><key>FaxNumber</key><string>5550199</string>
            </dict></array>
            <key>com.tavro.print.FaxOptions</key><dict>
              <key>CoverSheetNotes</key><string>Call me.</string><key>ImageName</key><string>logo.png</string>
              <key>CoverSheet</key><)") +
                                    coverSheet + "/></dict></dict></dict></plist>");
    };
    const auto pages = [this] {
        const std::string text = job();
        const std::size_t at = text.rfind("%%Pages: ");
        return at == std::string::npos ? -1 : std::stoi(text.substr(at + 9));
    };
    Words arguments = outputs();
    arguments.insert(arguments.end(), {"--ticket-in", fax("true")});
    const Run sent = script("type Host:31 \"2-3\"\nanswer other\nok", arguments);
    EXPECT_EQ(sent.status, 0) << sent.errors;
    EXPECT_EQ(sent.errors, "tavro-print: cover sheet: logo.png: is not stored\n");
    EXPECT_EQ(pages(), 3);
    EXPECT_TRUE(hasPair(settings(), "com.apple.print.PrintSettings.PMPageRange", "<string>2-3</string>"));
    fax("false");
    EXPECT_EQ(script("type Host:31 \"2-3\"\nanswer other\nok", arguments).errors, "");
    EXPECT_EQ(pages(), 2);
}
