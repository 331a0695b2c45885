// Settings that are looked at and not printed.
#include "tests/host/program/program_fixture.h"

#include <regex>

namespace {

class ChecksSettings : public ProgramTest {
protected:
    Run check(const std::string& pairs, const Words& more = {}) const {
        Words arguments{"--ppd", kZR420, "--check", "--ticket-in", settingsWith(pairs)};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments);
    }
};

// As docs/models.md tells it: a PPD and a file, and nothing else.
TEST_F(ProgramTest, AModelIsAddedWithAPPDAndAFile) {
    const std::string ppd = folder / "MX900.ppd";
    std::ofstream(ppd) << std::regex_replace(contentOf(sourcePath("resources/ppd/Tavro-ZR840.ppd")),
                                             std::regex("ZR840"), "MX900");
    const std::string unknown = run({"--ppd", ppd, "--list-controls"}).output;
    EXPECT_NE(unknown.find("\"This printer is a MX900, a model that is not known here."), std::string::npos) << unknown;
    EXPECT_NE(unknown.find("panel 7 \"About\""), std::string::npos);

    const std::filesystem::path models = folder.path() / ".local/share/tavro/models";
    std::filesystem::create_directories(models);
    std::filesystem::copy_file(sourcePath("docs/examples/model/MX900.plist"), models / "MX900.plist");
    const Run listed = run({"--ppd", ppd, "--installed", "Option2=PSF", "--list-controls"});
    EXPECT_EQ(listed.errors, "");
    for (const char* line : {"panel 2 \"Layout\"", "panel 4 \"About\"", "panel 5 \"Job Notes\"",
                             "\"1 Staple…\" command Stp1", "\"Collated, 1 Staple\"", "\"Bind…\" command Bind"}) {
        EXPECT_NE(listed.output.find(line), std::string::npos) << line;
    }
    for (const char* line : {"panel 6", "\"2 Staples…\"", "a model that is not known", "Booklet Maker Tray"}) {
        EXPECT_EQ(listed.output.find(line), std::string::npos) << line;
    }
}

}  // namespace

TEST_F(ChecksSettings, ThatGoTogether) {
    for (const char* pairs : {"", "MediaType=Transparency Duplex=None", "PageSize=SRA3 StapleLocation=4Staples"}) {
        const Run good = check(pairs);
        EXPECT_EQ(good.status, 0) << pairs;
        EXPECT_EQ(good.output + good.errors, "") << pairs;
    }
}

TEST_F(ChecksSettings, ThatDoNot) {
    const Run bad = check("MediaType=Transparency Duplex=DuplexTumble StapleLocation=4Staples Jog=Sometimes",
                          {"--installed", "Option2=LCSS", kTenPages});
    EXPECT_EQ(bad.status, 4);
    EXPECT_EQ(bad.output,
              "“Staple: 4 Staples” (Paper and Output) cannot be used: the printer has “Finisher: Light Capacity "
              "Stapler Stacker”.\n"
              "“2-Sided Printing: 2-Sided, Flip on Short Edge” cannot be used with “Paper Type: Transparency” (both in "
              "Paper and Output).\n");
    EXPECT_EQ(bad.errors, "tavro-print: Jog=Sometimes: Tavro ZR420 does not offer it; its default is printed\n");
}

TEST_F(ChecksSettings, OfAsManySheetsAsTheDocumentHas) {
    const std::string zr840 = sourcePath("resources/ppd/Tavro-ZR840.ppd");
    const Words folded{"--ppd", zr840, "--check", "--ticket-in", settingsWith("TRFold=CFoldSingleInside"), kTenPages};
    const Run bad = run(folded);
    EXPECT_EQ(bad.status, 4);
    EXPECT_EQ(bad.output, "“Fold: C Fold, Print Inside” (Paper and Output) takes up to 5 sheets; this job has 10.\n");
    EXPECT_EQ(run({"--ppd", zr840, "--check", "--ticket-in",
                   settingsWith("TRFold=CFoldSingleInside Duplex=DuplexTumble"), kTenPages})
                  .status,
              0);
}

TEST_F(ChecksSettings, WhoseTextsForgeNoLines) {
    std::string ppd = contentOf(kZR420);
    for (const auto& [text, hostile] :
         {std::pair<std::string, std::string>{"*MediaType Transparency/Transparency:",
                                              "*MediaType Transparency/Clear<0A>forged<1B5B33316D>red:"},
          {"*ShortNickName: \"Tavro ZR420\"", "*ShortNickName: \"Tavro<0A>forged\""}}) {
        const std::size_t at = ppd.find(text);
        ASSERT_NE(at, std::string::npos) << text;
        ppd.replace(at, text.size(), hostile);
    }
    const std::string hostile = add("hostile.ppd", ppd);
    const Run checked =
        run({"--ppd", hostile, "--check", "--ticket-in",
             settingsWith("MediaType=Transparency Duplex=DuplexTumble Jog=Some&#10;forged&#x85;&#x202E;")});
    const Run listed = run({"--ppd", hostile, "--list-controls", kTenPages});
    for (const std::string& text : {checked.output, checked.errors, listed.output, listed.errors}) {
        EXPECT_EQ(text.find("\nforged"), std::string::npos) << text;
        EXPECT_EQ(text.find('\x1B'), std::string::npos) << text;
        EXPECT_EQ(text.find("\u202E"), std::string::npos) << text;
    }
    EXPECT_NE(checked.output.find("Clear forged [31mred"), std::string::npos) << checked.output;
    EXPECT_NE(checked.errors.find("Jog=Some forged"), std::string::npos) << checked.errors;
    EXPECT_NE(listed.output.find("[31mred"), std::string::npos);
}

TEST_F(ChecksSettings, AndPrintsNone) {
    const Run refused = check("", {"--print", kTenPages});
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(run({"--ppd", kZR420, "--check", "--ticket-in", folder / "none.plist"}).status, 4);

    // Printed without a window, the same settings are printed as they are, with a warning.
    const Run printed =
        run({"--ppd", kZR420, "--print", "--ticket-in", settingsWith("MediaType=Transparency Duplex=DuplexTumble"),
             "--job-out", folder / "job.ps", kTenPages});
    EXPECT_EQ(printed.status, 0);
    EXPECT_NE(printed.errors.find("cannot be used with “Paper Type: Transparency”"), std::string::npos);
    EXPECT_NE(contentOf(folder / "job.ps").find("%%BeginFeature: *Duplex DuplexTumble"), std::string::npos);
}
