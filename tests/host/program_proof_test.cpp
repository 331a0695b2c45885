// Jobs in files, told in words.
#include "tests/host/program_fixture.h"

namespace {

class TellsJobs : public ProgramTest {
protected:
    std::string made(const std::string& items) const {
        const std::string settings = add("settings.plist",
                                         "<plist version=\"1.0\"><dict><key>PMPrintSettingsTicket"
                                         "</key><dict>" +
                                             items + "</dict></dict></plist>");
        EXPECT_EQ(run({"--ppd", kZR420, "--print", "--ticket-in", settings, "--job-out", folder / "job.ps", kTenPages})
                      .status,
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
