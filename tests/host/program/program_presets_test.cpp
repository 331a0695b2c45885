// Settings that last: presets, the last used ones, the defaults of a queue, from one run of the program to the next.
#include "host/settings/preset_content.h"
#include "host/settings/presets.h"
#include "tests/host/program/program_fixture.h"
#include "tests/support/places.h"
#include "tests/support/print_server.h"

namespace fs = std::filesystem;

namespace {

/// Something in every panel.
constexpr const char* kEveryPanel = R"script(
set Host:20 3
choose Host:41 "Landscape"
choose Host:40 "A4 (210 x 297 mm)"
panel "Paper and Output"
item Tshl:104 Sclr 2
item Tshl:104 Styp 27
choose Tshl:113 "2-Sided, Flip on Long Edge"
choose Tshl:111 "Collated, 2 Staples"
choose Tshl:102 "Delayed Print"
click Tshl:103
type TPDE:21001 "00:00"
command "ok  "
panel "Special Pages"
click TSPg:100
choose TSPg:2000 "Front Cover Only"
item TSPg:2110 Sclr 2
command "ok  "
click TSPg:200
type TSPg:3003 "2, 5"
item TSPg:3020 Sclr 3
command "ok  "
click TSPg:300
type TSPg:5001 "4-6"
set TSPg:5010 2
choose TSPg:5040 "1-Sided"
command "ok  "
panel "Image Options"
choose Tshl:941 "1200 dpi"
set Tshl:983 -3
click Tshl:988
click Tshl:911
panel Watermark
rows TVRw:100 2
click TVRw:200
panel Advanced
choose Tshl:632 "On"
choose Tshl:621 "180 degrees"
)script";

constexpr const char* kSaveAs = "\nchoose Host:13 \"Save as Preset…\"\ntype Host:100 \"Mine\"\nclick Host:101\n";

class ProgramPresets : public ProgramTest {
protected:
    Run print(const std::string& lines, const Words& more = {}, const Words& environment = {}) const {
        Words arguments{"--ticket-out", folder / "settings.plist", "--job-out", folder / "job.ps"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        Run done = script(lines, arguments, environment);
        EXPECT_EQ(done.status, 0) << lines << done.output << done.errors;
        return done;
    }
    JobSettings settings() const {
        auto read = readSettingsFile(folder / "settings.plist");
        EXPECT_TRUE(read);
        return read ? *read : JobSettings{};
    }
    std::string settingsText() const { return contentOf(folder / "settings.plist"); }
    std::string job() const { return contentOf(folder / "job.ps"); }
    fs::path configuration() const { return folder.path() / ".config/tavro"; }

    /// All that the program keeps for other runs.
    std::string kept() const {
        std::string all;
        for (const auto& entry : fs::recursive_directory_iterator(configuration())) {
            all += entry.is_regular_file() ? contentOf(entry.path()) : "";
        }
        return all;
    }
};

}  // namespace

TEST_F(ProgramPresets, HoldTheSettingsOfEveryPanel) {
    print(kEveryPanel + std::string("answer other\nok"));
    const JobSettings chosen = settings();
    const auto jobOf = [this] { return job().substr(job().find("%%BeginSetup")); };
    const std::string printed = jobOf();

    // All panels follow, those that were shown and those that were not, and showing them changes nothing.
    print(kEveryPanel + std::string(kSaveAs) + R"script(
choose Host:12 "Printer's Defaults"
expect Host:20 value 1
expect Host:41 value 1
panel "Paper and Output"
expect Tshl:102 text "Normal Print"
expect Tshl:111 text "Collated"
panel "Special Pages"
expect TSPg:1000 rows 0
panel Watermark
expect TVRw:200 disabled
panel Advanced
expect Tshl:632 text "Off"
expect Host:12 text "Printer's Defaults"
choose Host:12 "Mine"
expect Host:20 value 3
expect Host:41 value 2
expect Tshl:632 text "On"
expect Tshl:621 text "180 degrees"
panel "Paper and Output"
expect Tshl:102 text "Delayed Print"
expect Tshl:111 text "Collated, 2 Staples"
panel "Special Pages"
expect TSPg:1000 rows 4
panel "Image Options"
expect Tshl:941 text "1200 dpi"
expect Tshl:988 value 1
expect Tshl:911 value 1
panel Layout
panel Watermark
expect TVRw:300 text "In front of the page"
expect TVRw:200 value 1
panel About
expect Host:12 text "Mine"
answer other
ok)script");
    EXPECT_TRUE(isSamePreset(settings(), chosen)) << settingsText();
    EXPECT_EQ(jobOf(), printed);

    print("expect Host:12 text \"Mine\"\nanswer other\nok", {"--preset", "Mine"});
    EXPECT_TRUE(isSamePreset(settings(), chosen)) << settingsText();
    EXPECT_EQ(jobOf(), printed);

    // And without the dialog; but a script begins with the printer's defaults.
    const Run atOnce = run({"--ppd", kZR420, "--preset", "Mine", "--print", "--job-out", folder / "job.ps", kTenPages});
    EXPECT_EQ(atOnce.status, 0) << atOnce.errors;
    EXPECT_NE(job().find("%%BeginFeature: *StapleLocation 2Staples\n"), std::string::npos);
    print("expect Host:12 text \"Printer's Defaults\"\nexpect Host:20 value 1\nok");
    EXPECT_FALSE(isSamePreset(settings(), chosen));
}

TEST_F(ProgramPresets, AreNamedReplacedAndDeletedByTheUser) {
    const std::string example = sourcePath("docs/examples/presets.tavro-script");
    const Run documented = run({"--ppd", kZR420, "--script", example, "--shots", folder / "shots", "--ticket-out",
                                folder / "settings.plist", "--job-out", folder / "job.ps", kTenPages});
    EXPECT_EQ(documented.status, 0) << documented.errors;
    EXPECT_EQ(documented.output + documented.errors, "");
    EXPECT_NE(job().find("%%BeginFeature: *StapleLocation 2Staples\n"), std::string::npos);

    std::string longName;
    for (int i = 0; i < 300; ++i) {
        longName += "ö";
    }
    const Run done = print(
        "set Host:20 4\nchoose Host:13 \"Save as Preset…\"\ntype Host:100 \"  a/b & c \"\nclick Host:101\n"
        "expect Host:12 text \"a/b & c\"\n"
        // In use already: the user may go back, or replace it.
        "set Host:20 5\nchoose Host:13 \"Save as Preset…\"\ntype Host:100 \"Handouts\"\nanswer alternate\n"
        "click Host:101\nexpect window \"Save as Preset\"\nclick Host:101\nexpect Host:12 text \"Handouts\"\n"
        "choose Host:12 \"a/b & c\"\nexpect Host:20 value 4\n"
        "choose Host:12 \"Handouts\"\nexpect Host:20 value 5\n"
        // Another one that differs in case only; its own name again is no other one's.
        "choose Host:13 \"Rename…\"\nexpect window \"Rename Preset\"\nclick Host:101\n"
        "choose Host:13 \"Save as Preset…\"\ntype Host:100 \"handouts\"\nclick Host:101\n"
        "choose Host:13 \"Rename…\"\ntype Host:100 \"" +
        longName +
        "\"\nclick Host:101\nexpect window \"Print\"\nexpect Host:20 value 5\n"
        "choose Host:13 \"Delete…\"\nexpect Host:12 text \"Unsaved Settings\"\nexpect Host:20 value 5\n"
        "choose Host:12 \"Handouts\"\nanswer alternate\nchoose Host:13 \"Delete…\"\nexpect Host:12 text \"Handouts\"\n"
        "choose Host:13 \"Save as Preset…\"\nclick Host:102\nexpect Host:12 text \"Handouts\"\n"
        // What the document alone has stays with it.
        "type Host:31 \"2-3\"\nchoose Host:12 \"a/b & c\"\nexpect Host:30 value 2\nexpect Host:31 text \"2-3\"\nok");
    EXPECT_EQ(done.errors, "");
    std::size_t notices = 0;
    for (std::size_t at = 0; (at = done.output.find("notice: Do you want", at)) != std::string::npos; ++at) {
        ++notices;
    }
    EXPECT_EQ(notices, 4U) << done.output;
    EXPECT_NE(settingsText().find("<string>2-3</string>"), std::string::npos);
    EXPECT_EQ(kept().find("<string>2-3</string>"), std::string::npos);
    EXPECT_EQ(std::distance(fs::directory_iterator(configuration() / "presets"), {}), 2);
}

TEST_F(ProgramPresets, NeverHoldAPasscode) {
    const std::string secure = R"script(panel "Paper and Output"
choose Tshl:102 "Secure Print"
click Tshl:103
type TPDE:20001 "97531"
type TPDE:20003 "97531"
command "ok  "
)script";
    print(secure + kSaveAs + "ok");
    EXPECT_NE(settingsText().find("97531"), std::string::npos);
    EXPECT_NE(kept().find("<key>JobType</key>"), std::string::npos);
    EXPECT_EQ(kept().find("97531"), std::string::npos);

    // So who prints with it is asked for one, and after a secure job the next one is none by itself.
    const Run again = print("ok\n" + secure + "ok", {"--preset", "Mine"});
    EXPECT_NE(again.output.find("notice: "), std::string::npos);
    print("choose Host:12 \"Last Used\"\npanel \"Paper and Output\"\nexpect Tshl:102 text \"Normal Print\"\nok");
    EXPECT_EQ(settingsText().find("97531"), std::string::npos);
}

TEST_F(ProgramPresets, LastUsedOnesAreHowThePrinterPrints) {
    const std::string lastUsed = "choose Host:12 \"Last Used\"\n";
    EXPECT_EQ(script(lastUsed).status, 3);  // there are none yet
    EXPECT_EQ(script(kEveryPanel + std::string("cancel")).status, 1);
    EXPECT_FALSE(fs::exists(configuration() / "last-used")) << "nothing was printed";
    print(kEveryPanel + std::string("answer other\nok"));

    // The next document begins as the printer is; copies and orientation stay what its user has chosen.
    print("expect Host:20 value 1\nset Host:20 2\nchoose Host:41 \"Reverse Landscape\"\n" + lastUsed +
          R"script(
expect Host:12 text "Last Used"
expect Host:20 value 2
expect Host:41 value 3
expect Host:40 text "A4 (210 x 297 mm)"
panel "Paper and Output"
expect Tshl:111 text "Collated, 2 Staples"
expect Tshl:102 text "Normal Print"
panel "Special Pages"
expect TSPg:1000 rows 0
panel Watermark
expect TVRw:200 disabled
panel Advanced
expect Tshl:632 text "On"
answer other
ok)script");
    // Another PPD is another printer.
    EXPECT_EQ(
        run({"--ppd", sourcePath("resources/ppd/Tavro-ZR410.ppd"), "--script", add("script", lastUsed), kTenPages})
            .status,
        3);
}

TEST_F(ProgramPresets, ThatCannotBeReadAreSaidByName) {
    const Run unknown = run({"--ppd", kZR420, "--preset", "Nobody", "--script", add("script", "ok"), kTenPages});
    EXPECT_EQ(unknown.status, 4);
    EXPECT_EQ(unknown.errors, "tavro-print: preset \"Nobody\": there is none of that name; none is kept\n");
    const Run both = run({"--ppd", kZR420, "--preset", "Nobody", "--ticket-in", "x", kTenPages});
    EXPECT_EQ(both.status, 2) << both.errors;

    print("set Host:20 2" + std::string(kSaveAs) + "ok");
    fs::path file;
    for (const auto& entry : fs::directory_iterator(configuration() / "presets")) {
        file = entry.path();
    }
    std::ofstream(file) << "<plist version=\"1.0\"><dict>";
    std::ofstream(configuration() / "presets/sound.plist") << "<plist version=\"1.0\"><dict/></plist>";
    const Run damaged = print("choose Host:12 \"sound\"\nexpect Host:12 text \"sound\"\ncontrols\nok");
    EXPECT_TRUE(damaged.errors.starts_with("tavro-print: " + file.string() + ": line ")) << damaged.errors;
    EXPECT_NE(damaged.output.find("(cannot be read)\" (disabled)"), std::string::npos) << damaged.output;
    EXPECT_EQ(contentOf(file).size(), 27U);
}

TEST_F(ProgramPresets, BecomeTheDefaultsOfAQueueForEveryProgram) {
    const PrintServer server(folder.path() / "server");
    server.addQueue("tavro", kZR420);
    const auto drive = [&](const std::string& lines) {
        const Run done = run({"--printer", "tavro", "--script", add("script", lines), kTenPages},
                             {"CUPS_SERVER=" + server.address()});
        EXPECT_EQ(done.status, 1) << done.output << done.errors;
        return done;
    };
    const Run done = drive(R"script(
set Host:20 2
panel "Paper and Output"
choose Tshl:111 "Collated, 2 Staples"
answer alternate
choose Host:13 "Use as This Printer's Defaults…"
expect Host:12 text "Printer's Defaults (changed)"
choose Host:13 "Use as This Printer's Defaults…"
expect Host:12 text "Printer's Defaults"
expect Tshl:111 text "Collated, 2 Staples"
panel "Special Pages"
click TSPg:200
type TSPg:3003 "2"
item TSPg:3020 Sclr 3
command "ok  "
choose Host:13 "Use as This Printer's Defaults…"
expect Host:12 text "Printer's Defaults (changed)"
expect TSPg:1000 rows 1
)script");
    EXPECT_NE(done.output.find("notice: Do you want to use these settings as the defaults of tavro?"),
              std::string::npos);
    const std::string saved = contentOf(folder.path() / ".cups/lpoptions");
    EXPECT_EQ(saved, "Dest tavro copies=2 StapleLocation=2Staples\n");

    drive(
        "expect Host:20 value 2\npanel \"Paper and Output\"\nexpect Tshl:111 text \"Collated, 2 Staples\"\n"
        "expect Host:12 text \"Printer's Defaults\"");
    // To another printer go the same preset or its own defaults, but what the user has changed goes along.
    print(
        "choose Host:10 \"tavro\"\nexpect Host:12 text \"Printer's Defaults\"\nexpect Host:20 value 2\n"
        "choose Host:10 \"Tavro ZR420\"\nexpect Host:20 value 1\nset Host:20 9" +
            std::string(kSaveAs) +
            "choose Host:10 \"tavro\"\nexpect Host:12 text \"Mine\"\nexpect Host:20 value 9\nset Host:20 8\n"
            "choose Host:10 \"Tavro ZR420\"\nexpect Host:12 text \"From tavro\"\nexpect Host:20 value 8\nok",
        {}, {"CUPS_SERVER=" + server.address()});
    server.admin("HOME='" + folder.path().string() + "' lp -d tavro '" + kTenPages + "'");
    ASSERT_TRUE(server.hasCompleted("tavro-1")) << server.log();
    EXPECT_NE(contentOf(server.printedBy("tavro")).find("%%BeginFeature: *StapleLocation 2Staples\n"),
              std::string::npos);
}
