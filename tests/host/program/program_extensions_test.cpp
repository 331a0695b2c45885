// Extensions of the plug-in beside the maker's panels, on a printer that has one: the job notes.
#include "tests/host/program/program_fixture.h"

namespace {

class ProgramExtensions : public ProgramTest {
protected:
    static inline const std::string kZR840 = sourcePath("resources/ppd/Tavro-ZR840.ppd");

    Run drive(const std::string& text, const Words& more = {}) const {
        Words arguments{"--ppd", kZR840, "--script", add("script", text), kTenPages};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments);
    }
};

}  // namespace

TEST_F(ProgramExtensions, AreShownOneAtATime) {
    const Run done = drive(R"script(
        expect Host:52 value 1
        expect Tshl:2004 disabled
        cancel
    )script");
    EXPECT_EQ(done.status, 3) << "what has not been shown has no controls yet";
    const Run shown = drive(R"script(
        set Host:52 2
        expect Tshl:16 hidden
        expect Host:12 text "Printer's Defaults"
        type Tshl:2004 "Third floor"
        expect Host:12 text "Printer's Defaults (changed)"
        expect Host:70 text "Job Notes\n10 pages on 10 sheets"

        # The keys go on to the shell's first panel, and back.
        command TFup
        expect Host:52 value 1
        expect Tshl:16 value 1
        command TFdn
        expect Tshl:2004 text "Third floor"
        expect Tshl:2004 visible
        command TFdn
        expect Tshl:16 value 8
        command TFdn
        expect Tshl:16 value 7
        expect Host:52 value 1
        panel "Job Notes"
        panel Advanced
        expect Tshl:2004 hidden
        choose Tshl:632 "On"
        panel 9
        expect Tshl:2004 visible

        # A preset brings the texts back where somebody looks at them.
        choose Host:13 "Save as Preset…"
        type Host:100 "Notes"
        click Host:101
        choose Host:12 "Printer's Defaults"
        expect Tshl:2004 visible
        expect Tshl:2004 text ""
        choose Host:12 "Notes"
        expect Tshl:2004 text "Third floor"
        expect Host:12 text "Notes"
        ok
    )script",
                            {"--job-out", folder / "job.ps", "--ticket-out", folder / "settings.plist"});
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_NE(contentOf(folder / "job.ps").find("\n@PJL COMMENT TPIF job-sheet-message=Third floor\n"),
              std::string::npos);

    // Nobody has opened them: the settings' own stay as they are.
    const Run unopened = drive("ok", {"--ticket-in", folder / "settings.plist", "--ticket-out", folder / "again.plist",
                                      "--job-out", folder / "again.ps"});
    EXPECT_EQ(unopened.status, 0) << unopened.errors;
    EXPECT_NE(contentOf(folder / "again.plist").find("<string>Third floor</string>"), std::string::npos);
    const Run other = script("expect Host:52 hidden\npanel 8\n");
    EXPECT_EQ(other.status, 3);
    EXPECT_NE(other.errors.find("there is no panel"), std::string::npos) << other.errors;
}

TEST_F(ProgramExtensions, ListTheirControls) {
    const Run list = run({"--ppd", kZR840, "--list-controls"});
    EXPECT_EQ(list.status, 0) << list.errors;
    const std::size_t panel = list.output.find("\npanel 9 \"Job Notes\"\n");
    ASSERT_NE(panel, std::string::npos);
    EXPECT_NE(list.output.find("editText Tshl:2001", panel), std::string::npos);
    EXPECT_EQ(list.output.find("Tshl:2001"), list.output.find("Tshl:2001", panel)) << "once";
}

TEST_F(ProgramExtensions, NameTheDocumentThatIsPrinted) {
    const std::string other = folder / "other.pdf";
    std::filesystem::copy(kTenPages, other);
    const Run done = drive(
        "panel \"Job Notes\"\nexpect Tshl:2001 text \"ten-pages.pdf\"\nchoose Host:3 \"other.pdf\"\n"
        "expect Tshl:2001 text \"other.pdf\"\ncancel\n",
        {other});
    EXPECT_EQ(done.status, 1) << done.errors;
}
