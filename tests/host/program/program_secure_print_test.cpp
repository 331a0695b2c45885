// Where the passcode of a secure print job, and the card number of a fax, get to, and where not.
#include "tests/host/program/program_fixture.h"

namespace fs = std::filesystem;

namespace {

class SecurePrint : public ProgramTest {
protected:
    /// Prints a secure job with the passcode into a file.
    Run print(const std::string& passcode, const std::string& ppd = kZR420, const Words& environment = {}) const {
        return printWith(
            "<key>com.tavro.print.JobType</key><dict><key>JobType</key><integer>6</integer>" + passcode + "</dict>",
            ppd, environment);
    }
    Run printWith(const std::string& items, const std::string& ppd, const Words& environment) const {
        const std::string ticket =
            add("ticket.plist", "<plist version=\"1.0\"><dict><key>PMPrintSettingsTicket</key><dict>" + items +
                                    "</dict></dict></plist>");
        return run({"--ppd", ppd, "--script", add("script", "ok\n"), "--ticket-in", ticket, "--job-out",
                    folder / "job.ps", kTenPages},
                   environment);
    }
    static std::string element(const std::string& passcode) {
        return "<key>SecurePrintPassword</key><string>" + passcode + "</string>";
    }
    std::string job() const { return contentOf(folder / "job.ps"); }
};

}  // namespace

TEST_F(SecurePrint, TellsThePrinterAndNobodyElse) {
    fs::create_directories(folder / "cups/filter");
    fs::create_directory(folder / "tmp");
    const std::string log = folder / "log";
    for (const std::string name : {"pdftopdf", "pdftops", "pstops"}) {
        const std::string filter =
            add(("cups/filter/" + name).c_str(), "#!/bin/sh\nprintf '%s\\n' \"$0\" \"$@\" >>'" + log + "'\nenv >>'" +
                                                     log + "'\nls '" + (folder / "tmp") + "' >>'" + log +
                                                     "'\nexec /usr/lib/cups/filter/" + name + " \"$@\"\n");
        fs::permissions(filter, fs::perms(0700));
    }
    const std::string temporary = folder / "tmp";
    const Words environment{"CUPS_SERVERBIN=" + (folder / "cups"), "TMPDIR=" + temporary};
    for (const char* passcode : {"8642", "8642864286"}) {
        const Run done = print(element(passcode), kZR420, environment);
        EXPECT_EQ(done.status, 0) << done.errors;
        EXPECT_EQ(done.output + done.errors, "");
        EXPECT_NE(job().find("@PJL SET HOLD=STORE\n@PJL SET HOLDTYPE=PRIVATE\n@PJL SET HOLDKEY=\"" +
                             std::string(passcode) + "\"\n"),
                  std::string::npos);
        EXPECT_EQ(fs::status(folder / "job.ps").permissions(), fs::perms(0600));
        EXPECT_TRUE(fs::is_empty(temporary));
    }
    const Run fax = printWith(
        "<key>com.tavro.print.JobType</key><dict><key>JobType</key><integer>5</integer></dict>"
        "<key>com.tavro.print.FaxRecipientList</key><array><dict><key>FaxNumber</key>"
        "<string>5550</string></dict></array><key>com.tavro.print.FaxOptions</key><dict>"
        "<key>CreditCard</key><string>86428642</string></dict>",
        kZR420, environment);
    EXPECT_EQ(fax.status, 0) << fax.errors;
    EXPECT_NE(job().find("@PJL COMMENT TPIF fax-credit-card=86428642\n"), std::string::npos);
    const std::string told = run({"--proof", folder / "job.ps"}).output;
    EXPECT_NE(told.find("5550"), std::string::npos) << told;
    EXPECT_EQ((fax.output + told).find("8642"), std::string::npos) << told;
    const std::string seen = contentOf(log);
    EXPECT_NE(seen.find("cups/filter/pdftops\n"), std::string::npos);
    EXPECT_NE(seen.find("Duplex="), std::string::npos);
    EXPECT_EQ(seen.find("8642"), std::string::npos) << "a command line or a file's name holds a secret";
}

TEST_F(SecurePrint, RefusesWhatIsNoPasscode) {
    for (const char* passcode : {"864", "86428642864", "86 42", "8642\n@PJL SET TRBANNER=ON", "8642&quot;", "86a2x",
                                 "\u0668\u0666\u0664\u0662", "+8642"}) {
        const Run done = print(element(passcode));
        EXPECT_EQ(done.status, 5) << passcode << "\n" << done.errors;
        EXPECT_EQ(done.errors, "tavro-print: secure print: a passcode has 4 to 10 digits\n") << passcode;
        EXPECT_EQ(done.output.find("86"), std::string::npos) << done.output;
        EXPECT_FALSE(fs::exists(folder / "job.ps")) << passcode;
    }
}

TEST_F(SecurePrint, IsNotPrintedOpenlyByAPrinterThatCannotHoldIt) {
    std::string ppd = contentOf(kZR420);
    for (const char* keyword : {"\n*CustomJCLPasscode", "\n*ParamCustomJCLPasscode"}) {
        const std::size_t at = ppd.find(keyword);
        ASSERT_NE(at, std::string::npos);
        ppd.erase(at, ppd.find('\n', at + 1) - at);
    }
    const Run done = print(element("8642"), add("other.ppd", ppd));
    EXPECT_EQ(done.status, 5) << done.errors;
    EXPECT_EQ(done.errors, "tavro-print: secure print: the printer cannot hold a job for a passcode\n");
    EXPECT_FALSE(fs::exists(folder / "job.ps"));
}
