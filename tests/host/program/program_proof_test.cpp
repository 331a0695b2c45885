// Jobs in files, told in words.
#include "tests/host/program/program_fixture.h"

namespace {

class TellsJobs : public ProgramTest {
protected:
    std::string made(const std::string& items, const std::string& ppd = kZR420) const {
        const std::string settings = add("settings.plist",
                                         "<plist version=\"1.0\"><dict><key>PMPrintSettingsTicket"
                                         "</key><dict>" +
                                             items + "</dict></dict></plist>");
        EXPECT_EQ(
            run({"--ppd", ppd, "--print", "--ticket-in", settings, "--job-out", folder / "job.ps", kTenPages}).status,
            0);
        return folder / "job.ps";
    }
    static bool has(const std::string& text, const std::string& line) {
        return ("\n" + text).find("\n" + line + "\n") != std::string::npos;
    }
};

}  // namespace

TEST_F(TellsJobs, SheetBySheet) {
    const Run told =
        run({"--proof", made("<key>PPDDict</key><dict><key>Duplex</key><string>DuplexTumble</string><key>MediaColor"
                             "</key><string>Blue</string><key>MediaType</key><string>CardStock</string>"
                             "<key>StapleLocation</key><string>2Staples</string><key>TRFoldOptions</key><string>"
                             "3HolePunch</string><key>JCLPasscode</key><string>Custom.4711</string></dict>"
                             "<key>com.apple.print.PrintSettings.PMCopies</key><integer>3</integer>"
                             "<key>com.apple.print.PrintSettings.PMPageRange</key><string>2-4</string>")});
    EXPECT_EQ(told.status, 0) << told.errors;
    for (const char* line :
         {"Command: TRBANNER = OFF", "Command: HOLDKEY = (not shown)", "Copies: 3, collated",
          "Sheet 1: Letter (8.5 x 11 in), Blue, Card Stock; side 1: “Page 2”; side 2, flipped on the short edge: “Page "
          "3”",
          "Sheet 2: Letter (8.5 x 11 in), Blue, Card Stock; side 1: “Page 4”; side 2, flipped on the short edge: blank",
          "Finishing: staples: 2", "Finishing: holes: 3"}) {
        EXPECT_TRUE(has(told.output, line)) << line << "\n" << told.output;
    }
    EXPECT_EQ(told.output.find("4711"), std::string::npos);
}

// Each fold and place has words of its own: those of the PPD are told as they stand there.
TEST_F(TellsJobs, AndWhatIsDoneToEachSet) {
    const std::string ppd = sourcePath("resources/ppd/Tavro-ZR840.ppd");
    const auto finishing = [&](const std::string& options) {
        std::string pairs;
        std::istringstream words(options);
        for (std::string keyword, option; words >> keyword >> option;) {
            pairs.append("<key>").append(keyword).append("</key><string>").append(option).append("</string>");
        }
        const Run told = run({"--proof", made("<key>com.tavro.print.EmitTPIF</key><integer>0</integer><key>com.apple."
                                              "print.PrintSettings.PMPageRange</key><string>1</string>"
                                              "<key>PPDDict</key><dict>" +
                                                  pairs + "</dict>",
                                              ppd)});
        const std::size_t at = told.output.find("Finishing: ");
        return at == std::string::npos ? told.output + told.errors : told.output.substr(at);
    };
    EXPECT_EQ(finishing("TRStaple 1StapleTL TRPunch 4HolePunchL TRFold ZFoldHalfLeft"),
              "Finishing: stapled at the top left\nFinishing: 4 holes at the left\n"
              "Finishing: folded: Z Fold of half sheets, at the left\n");
    EXPECT_EQ(finishing("TRStaple 2StaplesB"), "Finishing: 2 staples at the bottom\n");
    EXPECT_EQ(finishing("TRStaple 1StapleR"), "Finishing: stapled at the middle of the right\n");
    EXPECT_EQ(finishing("TRBind BindLeft"), "Finishing: bound at the left\n");
    EXPECT_EQ(finishing("TRBooklet SquareFold"), "Finishing: folded square, and trimmed\n");
}

TEST_F(TellsJobs, AndHowColorsComeOut) {
    const std::string ppd = sourcePath("resources/ppd/Tavro-ZR840.ppd");
    const auto told = [&](const std::string& record) {
        return run({"--proof", made("<key>com.apple.print.PrintSettings.PMPageRange</key><string>1</string>"
                                    "<key>com.tavro.print.FullColorOptions</key><dict>" +
                                        record + "</dict>",
                                    ppd)})
            .output;
    };
    const std::string contrast = told("<key>FCContrast</key><integer>-100</integer>");
    EXPECT_NE(contrast.find("side 1: “Page 1” (light of 25, 50 and 75% comes out as 35, 50 and 65%)\n"),
              std::string::npos)
        << contrast;
    const std::string cast = told(
        "<key>FCColorCast</key><dict><key>FCCyanRed</key><integer>0</integer><key>"
        "FCMagentaGreen</key><integer>0</integer><key>FCYellowBlue</key><integer>100"
        "</integer></dict><key>FCTrapping</key><integer>2</integer>");
    EXPECT_NE(cast.find("(light of 25, 50 and 75% comes out as 25, 50 and 75% of red, 25, 50 and 75% of green, 38, 61 "
                        "and 82% of blue and 25, 50 and 75% of gray)\n"),
              std::string::npos)
        << cast;
    EXPECT_TRUE(has(cast, "Command: TRTRAPPING = NORMAL")) << cast;
}

TEST_F(TellsJobs, OrWhyNot) {
    const Run none = run({"--proof", kTenPages});
    EXPECT_EQ(none.status, 4);
    EXPECT_EQ(none.errors, "tavro-print: " + kTenPages + ": is no job for a PostScript printer\n");
    const Run broken = run({"--proof", add("broken.ps",
                                           "%!PS\n<</PageSize[100 200]>>setpagedevice\n"
                                           "/Courier findfont 9 scalefont setfont 9 9 moveto\n"
                                           "(a\x1b[31mb) show showpage oops\n")});
    EXPECT_EQ(broken.status, 4);
    EXPECT_TRUE(broken.output.starts_with("Sheet 1: 100 × 200 points; side 1: “a")) << broken.output;
    EXPECT_EQ(broken.output.find('\x1b'), std::string::npos);
    EXPECT_NE(broken.errors.find("/undefined in oops"), std::string::npos) << broken.errors;
    EXPECT_EQ(run({"--proof", kTenPages, kTenPages}).status, 2);
}
