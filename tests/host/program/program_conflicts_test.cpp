// Conflicts in the dialog: told where they are, ended with one click, and gone for good. And what changes by itself.
#include "host/script/script_parser.h"
#include "host/settings/setting_place.h"
#include "host/settings/texts.h"
#include "platform/foundation/text.h"
#include "tests/host/program/program_fixture.h"
#include "tests/support/places.h"

#include <regex>

namespace {

class ProgramConflicts : public ProgramTest {
protected:
    std::string settings() const { return folder / "settings.plist"; }

    /// Runs the script, visits all panels, prints, and looks at what was kept.
    void expectEnded(const std::string& text, const Words& more = {}) const {
        Words arguments{"--ticket-out", settings(), "--job-out", folder / "job.ps"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const Run done = script(text +
                                    "expect no conflicts\npanel Layout\npanel Advanced\npanel \"Special Pages\"\n"
                                    "panel \"Paper and Output\"\nexpect no conflicts\nok\n",
                                arguments);
        EXPECT_EQ(done.status, 0) << text << done.errors;
        EXPECT_EQ(done.output + done.errors, "") << text;
        Words check{"--ppd", kZR420, "--check", "--ticket-in", settings()};
        for (std::size_t i = 0; i + 1 < more.size(); ++i) {
            if (more[i] == "--installed") {
                check.insert(check.end(), {more[i], more[i + 1]});
            }
        }
        EXPECT_EQ(run(check).status, 0) << text;
    }

    bool kept(const std::string& mainKeyword, const std::string& option) const {
        std::string plist = contentOf(settings());
        std::erase_if(plist, [](char c) { return c == '\n' || c == '\t'; });
        return plist.find("<key>" + mainKeyword + "</key><string>" + option + "</string>") != std::string::npos;
    }

    /// Settings with pairs of the PPD dictionary, already in XML.
    std::string ticket(const std::string& pairs) const {
        return add("in.plist",
                   "<plist version=\"1.0\"><dict><key>PMPrintSettingsTicket</key><dict>"
                   "<key>com.tavro.print.JobLevelStock</key><dict/><key>PPDDict</key><dict>" +
                       pairs + "</dict></dict></dict></plist>");
    }
};

}  // namespace

TEST_F(ProgramConflicts, RunTheExampleOfTheDocumentation) {
    const Run done = run({"--ppd", kZR420, "--script", sourcePath("docs/examples/conflict.tavro-script"), "--shots",
                          folder / "shots", "--ticket-out", settings(), "--job-out", folder / "job.ps", kTenPages});
    EXPECT_EQ(done.status, 0) << done.errors;
    EXPECT_EQ(done.output.find("notice: Some of the settings cannot be used together."), 0u) << done.output;
    EXPECT_TRUE(kept("Duplex", "DuplexNoTumble"));
    EXPECT_TRUE(kept("MediaType", "SystemDefault"));
}

TEST_F(ProgramConflicts, EndWithTheSettingThatWasNotChosenLast) {
    expectEnded(
        "panel \"Paper and Output\"\nchoose Tshl:111 \"Collated, 2 Staples\"\nchoose Tshl:110 \"Top Tray\"\n"
        "expect conflicts 1\nexpect Host:72 text \"Remove the Staples\"\nclick Host:72\n"
        "expect Tshl:111 text \"Collated\"\n");
    EXPECT_TRUE(kept("StapleLocation", "None") && kept("OutputBin", "Top"));
    expectEnded(
        "panel \"Paper and Output\"\nchoose Tshl:110 \"Top Tray\"\nchoose Tshl:111 \"Collated, 2 Staples\"\n"
        "expect Host:72 text \"Change Output Tray to Automatic\"\nclick Host:72\nexpect Tshl:110 text \"Automatic\"\n");
    EXPECT_TRUE(kept("StapleLocation", "2Staples") && kept("OutputBin", "Auto"));
}

TEST_F(ProgramConflicts, BetweenPanelsEndInBoth) {
    expectEnded(
        "panel Advanced\nchoose Tshl:634 \"Offset Each Set\"\npanel \"Paper and Output\"\n"
        "choose Tshl:110 \"Top Tray\"\npanel Advanced\nclick Host:72\nexpect Tshl:634 text \"No Offset\"\n");
    EXPECT_TRUE(kept("Jog", "None"));
    // A folded booklet takes no staples of the sets', whichever came first.
    const std::string booklet =
        "panel Layout\nchoose Tshl:6004 \"On\"\nclick Tshl:6013\nset Tshl:1000 3\ncommand \"ok  \"\n";
    const std::string staples = "panel \"Paper and Output\"\nchoose Tshl:111 \"Collated, 2 Staples\"\n";
    const Run done = script(staples + booklet +
                                "expect conflicts 1\nexpect Host:72 text \"Remove the Staples\"\n"
                                "panel \"Paper and Output\"\nexpect conflicts 1\nclick Host:72\n"
                                "expect Tshl:111 text \"Collated\"\nexpect no conflicts\nanswer other\nok\n",
                            {"--ticket-out", settings(), "--job-out", folder / "job.ps"});
    EXPECT_EQ(done.status, 0) << done.errors;
    EXPECT_TRUE(kept("StapleLocation", "None") && kept("TRFoldOptions", "BookletFoldStapleOpt"));
    // A folded booklet cannot be one of transparencies: neither are its sides.
    expectEnded(
        "panel Layout\nchoose Tshl:6004 \"On\"\nclick Tshl:6013\nset Tshl:1000 3\ncommand \"ok  \"\n"
        "panel \"Paper and Output\"\nitem Tshl:104 Styp 2\nexpect conflicts 2\n"
        "expect Host:72 text \"Print on One Side\"\nclick Host:72\nexpect conflicts 1\n"
        "expect Host:72 text \"Remove Folds and Holes\"\nclick Host:72\npanel Layout\nexpect Tshl:6004 text \"Off\"\n");
    EXPECT_TRUE(kept("Duplex", "None") && kept("TRFoldOptions", "None") && kept("MediaType", "Transparency"));
}

TEST_F(ProgramConflicts, OfSettingsFilesAndMissingPartsEndToo) {
    expectEnded(
        "expect conflicts 2\nexpect Host:40 items 40\nclick Host:72\nclick Host:72\nexpect Host:40 items 40\n"
        "choose Host:40 \"A4 (210 x 297 mm)\"\nset Host:40 39\n",
        {"--ticket-in", ticket("<key>PageSize</key><string>Custom.1400x800</string><key>MediaType</key>"
                               "<string>Envelopes</string><key>InputSlot</key><string>Tray2</string>")});
    EXPECT_TRUE(kept("PageSize", "Custom.800x1368pt") || kept("PageSize", "Custom.936x800pt"));
    EXPECT_TRUE(kept("InputSlot", "AutoSelect") && kept("MediaType", "Envelopes"));

    // The panel leaves a staple of the settings to the dialog, though it cannot offer one.
    expectEnded(
        "panel \"Paper and Output\"\nexpect Tshl:111 text \"\"\nexpect conflicts 1\nclick Host:72\n"
        "expect Tshl:111 text \"Collated\"\n",
        {"--installed", "Option2=None", "--ticket-in",
         add("staple.plist",
             "<plist version=\"1.0\"><dict><key>PMPrintSettingsTicket</key><dict>"
             "<key>com.tavro.print.FinishingCollateStaple</key><integer>4</integer>"
             "<key>PPDDict</key><dict><key>StapleLocation</key><string>2Staples</string></dict>"
             "</dict></dict></plist>")});

    const Words noDisk{"--installed", "Option4=False"};
    expectEnded(
        "panel \"Paper and Output\"\nchoose Tshl:102 \"Secure Print\"\nclick Tshl:103\ntype TPDE:20001 \"2468\"\n"
        "type TPDE:20003 \"2468\"\ncommand \"ok  \"\nexpect conflicts 1\nclick Host:72\n"
        "expect Tshl:102 text \"Normal Print\"\n",
        noDisk);
}

TEST_F(ProgramConflicts, OfTheFinishingMenuEndThere) {
    const auto play = [&](const std::string& text) {
        return run({"--ppd", sourcePath("resources/ppd/Tavro-ZR840.ppd"), "--script", add("script", text), "--job-out",
                    folder / "job.ps", "--ticket-out", settings(), kTenPages});
    };
    const Run done = play(
        // Two menus may want staples; the one that was used last has them.
        "panel \"Paper and Output\"\nchoose Tshl:111 \"Collated, 2 Staples\"\nitem Tshl:108 Stp1 0\n"
        "command \"ok  \"\nexpect conflicts 1\nexpect Host:72 text \"Remove the Staples\"\nclick Host:72\n"
        "expect Tshl:111 text \"Collated\"\nexpect Tshl:109 text \"1 Staple: Top Left\"\nexpect no conflicts\n"
        // Ten sheets can be bound, and five cannot.
        "item Tshl:108 Bind 0\ncommand \"ok  \"\nexpect no conflicts\n"
        "choose Tshl:113 \"2-Sided, Flip on Long Edge\"\nexpect conflicts 1\n"
        "expect Host:71 text \"“Bind: Bind, Left” (Paper and Output) takes at least 10 sheets; this job has 5.\"\n"
        "expect Host:72 text \"Remove the Binding\"\nclick Host:72\nexpect Tshl:109 text \"Printer Default\"\n"
        // One offset, in two panels.
        "item Tshl:108 Ofsb 0\nset TPDE:1000 2\ncommand \"ok  \"\nexpect Host:71 hidden\npanel Advanced\n"
        "expect Tshl:634 text \"Offset Each Set\"\nchoose Tshl:634 \"No Offset\"\npanel \"Paper and Output\"\n"
        "expect Tshl:109 text \"Printer Default\"\nitem Tshl:108 FSBM 0\nok\n");
    EXPECT_EQ(done.status, 3) << "the printer has no maker of signatures: " << done.errors;
    EXPECT_NE(done.errors.find("FSBM"), std::string::npos) << done.errors;

    const Run printed = play(
        "panel \"Paper and Output\"\nitem Tshl:108 Hpn3 0\nchoose TPDE:1001 \"Top\"\ncommand \"ok  \"\n"
        "item Tshl:108 Spsh 0\nexpect no conflicts\nok\n");
    EXPECT_EQ(printed.status, 0) << printed.errors;
    EXPECT_TRUE(kept("TRPunch", "3HolePunchT") && kept("TRStaple", "None"));
    const std::string job = contentOf(folder / "job.ps");
    EXPECT_NE(job.find("%%BeginFeature: *TRPunch 3HolePunchT"), std::string::npos);
    EXPECT_NE(job.find("%%BeginFeature: *InputSlot Inserter"), std::string::npos) << "the slip sheet's";
    run({"--ppd", sourcePath("resources/ppd/Tavro-ZR840.ppd"), "--installed", "Option12=False", "--print",
         "--ticket-in", settings(), "--job-out", folder / "job.ps", kTenPages});
    EXPECT_EQ(contentOf(folder / "job.ps").find("*InputSlot Inserter"), std::string::npos) << "which is not there";
}

TEST_F(ProgramConflicts, AreAskedAboutBeforePrinting) {
    const std::string conflict =
        "panel \"Paper and Output\"\nitem Tshl:104 Styp 2\nchoose Tshl:113 \"2-Sided, Flip on Long Edge\"\n";
    const Words out{"--job-out", folder / "job.ps"};
    EXPECT_EQ(script(conflict + "ok\n", out).status, 1);
    EXPECT_EQ(contentOf(folder / "job.ps"), "");
    EXPECT_EQ(script(conflict + "answer other\nok\n", out).status, 0);
    EXPECT_NE(contentOf(folder / "job.ps").find("%%BeginFeature: *Duplex DuplexNoTumble"), std::string::npos);
    // Or changed first, by a button that says how.
    const Run changed = script(conflict + "answer alternate\nok\n", out);
    EXPECT_EQ(changed.status, 0);
    EXPECT_NE(changed.output.find("“Change Paper Type to Printer Default” changes this, and prints:"),
              std::string::npos)
        << changed.output;
    const std::string job = contentOf(folder / "job.ps");
    EXPECT_NE(job.find("%%BeginFeature: *MediaType SystemDefault"), std::string::npos);
    EXPECT_NE(job.find("%%BeginFeature: *Duplex DuplexNoTumble"), std::string::npos);

    const Run wrong = script(conflict + "expect no conflicts\n", out);
    EXPECT_EQ(wrong.status, 3);
    EXPECT_NE(wrong.errors.find("the number of conflicts is 1, not 0; “2-Sided Printing"), std::string::npos)
        << wrong.errors;
}

TEST_F(ProgramConflicts, GrayWhatCannotBeChosen) {
    const std::string large = "choose Host:40 \"SRA3 (320 x 450 mm)\"\n";
    EXPECT_EQ(script(large).status, 1);  // the script ends with the dialog open
    EXPECT_EQ(script(large, {"--installed", "Option1=False"}).status, 3);
    EXPECT_EQ(script("choose Host:40 \"A3 (297 x 420 mm)\"\n", {"--installed", "Option1=False"}).status, 1);
}

TEST_F(ProgramConflicts, HavePlacesInTheDialog) {
    std::string controls;
    std::string panel = "\n";  // of the dialog's left side
    std::istringstream lines(run({"--ppd", kZR420, "--installed", "Option2=HCSS_BK", "--list-controls"}).output +
                             run({"--ppd", sourcePath("resources/ppd/Tavro-ZR840.ppd"), "--list-controls"}).output);
    for (std::string line; std::getline(lines, line);) {
        panel = line.starts_with("panel ") ? line.substr(line.find('"')) + "\n" : panel;
        controls += panel + line.substr(0, line.find(" value")) + " \n";
    }
    const auto texts =
        CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, makeFileURL(stagePath("TavroPrint.bundle"), true).get()));
    for (const SettingPlace& place : settingPlaces()) {
        const std::string title =
            place.panel == nullptr
                ? ""
                : "\"" + utf8Text(localized(texts.get(), CFStringMakeConstant(place.panel)).get()) + "\"";
        const std::string name = script::controlNameText({place.signature, place.number, {}});
        const std::regex row(title + "\n[^\n]* " + name + " ");
        EXPECT_TRUE(std::regex_search(controls, row)) << place.mainKeyword << " " << name << " in " << title;
    }
}

TEST_F(ProgramConflicts, LeadToTheirSettings) {
    const std::string conflict =
        "panel Advanced\nchoose Tshl:634 \"Offset Each Set\"\npanel \"Paper and Output\"\n"
        "choose Tshl:110 \"Top Tray\"\npanel Layout\n";
    for (const char* way : {"click Host:71\n", "click Host:73\n"}) {
        EXPECT_EQ(script(conflict + way + "expect Tshl:16 text \"Advanced\"\n").status, 1) << way;
    }
    // The other side may give way as well.
    expectEnded(conflict + "expect Host:72 text \"Remove the Offset\"\nclick Host:74\nexpect Host:73 hidden\n");
    EXPECT_TRUE(kept("Jog", "EndOfSet") && kept("OutputBin", "Auto"));
}

TEST_F(ProgramConflicts, AreNotTheOnlyThingThatIsTold) {
    const std::string changed =
        "expect Host:71 text \"This also changed “Staple” from “2 Staples” to “No Staples”.\"\n";
    const std::string shown =
        "expect Host:71 text \"Showing Layout changed “2-Sided Printing” from “2-Sided, Flip on Short Edge” to "
        "“2-Sided, "
        "Flip on Long Edge”.\"\n";
    const Run done = script(
        // What stands at one control may change all of it.
        "panel \"Paper and Output\"\nchoose Tshl:111 \"Hole Punch\"\nchoose Tshl:111 \"Collated, 2 Staples\"\n"
        "item Tshl:104 Styp 2\nexpect Host:71 hidden\nchoose Tshl:104 \"Default Paper\"\n"
        // Undo brings both back, and what the user does next ends it.
        "set Host:21 0\n" +
            changed + "click Host:75\nexpect Host:21 value 1\nexpect Tshl:111 text \"Collated, 2 Staples\"\n" +
            "expect Host:75 hidden\nexpect Host:71 hidden\nset Host:21 0\n" + changed +
            "set Host:20 3\nexpect Host:75 hidden\n" +
            // A panel that changes what is shown elsewhere is left again, or it would do so once more.
            "choose Tshl:113 \"2-Sided, Flip on Short Edge\"\nexpect Host:75 hidden\npanel Layout\n" + shown +
            "panel Advanced\npanel Layout\n" + shown +
            "click Host:75\nexpect Tshl:16 text \"Paper and Output\"\n"
            "expect Tshl:113 text \"2-Sided, Flip on Short Edge\"\nexpect Host:20 value 3\npanel Advanced\n"
            "expect Host:71 hidden\nok\n",
        {"--job-out", folder / "job.ps"});
    EXPECT_EQ(done.status, 0) << done.errors;
}
