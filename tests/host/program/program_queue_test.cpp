// The program and real queues: what a job begins with, what comes out of the printer, and what is said when nothing
// does.
#include "driver/proof/proof.h"
#include "tests/driver/pages/pdf_maker.h"
#include "tests/driver/proof/proof_words.h"
#include "tests/host/program/watermark_fixture.h"
#include "tests/support/places.h"
#include "tests/support/print_server.h"
#include "tests/support/unruly_server.h"

#include <sys/stat.h>
#include <algorithm>

namespace fs = std::filesystem;

namespace {

const std::string kZR410 = sourcePath("resources/ppd/Tavro-ZR410.ppd");

class ProgramWithQueues : public ProgramTest {
protected:
    explicit ProgramWithQueues(const std::string& configuration = {})
        : server(folder.path() / "server", configuration) {
        server.addQueue("tavro", kZR420);
    }

    Words environment() const { return {"CUPS_SERVER=" + server.address(), "TMPDIR=" + folder.path().string()}; }
    Run print(const std::string& queue, const std::string& text = "ok\n", const Words& more = {}) const {
        Words arguments{"--printer", queue, "--script", add("script", text), "--ticket-out", settingsFile()};
        arguments.insert(arguments.end(), more.begin(), more.end());
        if (std::ranges::none_of(more, [](const std::string& word) { return word.ends_with(".pdf"); })) {
            arguments.push_back(kTenPages);
        }
        return run(arguments, environment());
    }
    std::string settingsFile() const { return folder / "settings.plist"; }

    /// Prints and waits for what comes out, which must be one job.
    std::string printed(const std::string& queue, const std::string& text = "ok\n", const Words& more = {}) const {
        const std::string name = queue.substr(0, queue.find('/'));
        fs::remove(server.printedBy(name));
        const Run done = print(queue, text, more);
        EXPECT_EQ(done.status, 0) << done.errors;
        EXPECT_EQ(done.errors, "");
        EXPECT_EQ(done.output.find(name + "-"), 0U) << done.output;
        EXPECT_EQ(std::ranges::count(done.output, '\n'), 1) << done.output;
        EXPECT_TRUE(server.hasCompleted(done.output.substr(0, done.output.find('\n')))) << server.log();
        return contentOf(server.printedBy(name));
    }

    /// What the user has saved, as lpoptions keeps it.
    void saveOptions(const std::string& lines) const {
        fs::create_directory(folder.path() / ".cups");
        add(".cups/lpoptions", lines);
    }

    /// A size of paper goes with its tray.
    static std::string feature(const std::string& option) {
        const std::string keyword = option.substr(0, option.find('='));
        return "%%BeginFeature: *" + (keyword == "PageSize" ? "PageRegion" : keyword) + " " +
               option.substr(option.find('=') + 1) + "\n";
    }
    static bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }
    bool hasSettings() const { return has(contentOf(settingsFile()), "PMPrintSettingsTicket"); }

    /// A run that could not hand its job over: one line that names the queue and the reason, and the settings are
    /// there.
    void expectNotSent(const Run& run, const std::string& queue, const std::string& reason) const {
        EXPECT_EQ(run.status, 5) << run.errors;
        EXPECT_EQ(run.errors.find("tavro-print: " + queue + ": "), 0U) << run.errors;
        EXPECT_TRUE(has(run.errors, reason)) << run.errors;
        EXPECT_EQ(std::ranges::count(run.errors, '\n'), 1) << run.errors;
        EXPECT_FALSE(has(run.output, queue + "-")) << run.output;
        EXPECT_TRUE(hasSettings());
        fs::remove(settingsFile());
    }

    /// A document with so many bytes on its page that sending it takes a while.
    std::string largeDocument(std::size_t bytes) const {
        return add("large.pdf", pdfOf({{.content = "%" + std::string(bytes, '-')}}));
    }

    PrintServer server;
};

/// Jobs that the server could not make by itself.
class ReadyJobs : public WatermarkJobs {
protected:
    std::string print(const Words& how, const Words& more = {}) const {
        Words arguments{"--printer", "tavro", "--shots", folder.path().string(), kTenPages};
        arguments.insert(arguments.end(), how.begin(), how.end());
        arguments.insert(arguments.end(), more.begin(), more.end());
        const Run done = run(arguments, {"CUPS_SERVER=" + server.address(), "XDG_DATA_HOME=" + folder.path().string()});
        EXPECT_EQ(done.status, 0) << done.errors;
        return done.output;
    }
    /// Prints to the queue and waits for what comes out.
    void send(const Words& how) const {
        std::filesystem::remove(server.printedBy("tavro"));
        const std::string output = print(how);
        const std::size_t name = output.rfind("tavro-");
        EXPECT_NE(name, std::string::npos) << output;
        EXPECT_TRUE(server.hasCompleted(output.substr(name, output.find('\n', name) - name))) << server.log();
    }
    /// Prints to the queue and into a file. The job has so many pages, each of two sets of its own.
    std::string expectSameOnBothWays(const Words& how, int pages) const {
        send(how);
        print(how, {"--job-out", folder / "job.ps"});
        const Proof proof = proofOf(server.printedBy("tavro"));
        EXPECT_EQ(wordsOf(proof), wordsOf(proofOf(folder / "job.ps")));
        EXPECT_EQ(proof.copies, 2);
        EXPECT_EQ(proof.sheets.size(), static_cast<std::size_t>(pages));
        return contentOf(server.printedBy("tavro"));
    }
    static bool has(const std::string& text, const std::string& part) { return text.find(part) != text.npos; }
    static Proof proofOf(const std::string& path) {
        std::string reason;
        const auto proof = readProof(path, &reason);
        EXPECT_TRUE(proof) << reason;
        return proof.value_or(Proof{});
    }
    /// What the printer makes of the job.
    static std::string wordsOf(const Proof& proof) {
        std::string words = proof.isCollated ? "collated\n" : "uncollated\n";
        for (const auto& [name, value] : proof.instructions) {
            words += name + "=" + value + "\n";
        }
        for (const ProofSheet& sheet : proof.sheets) {
            for (const auto& [key, value] : sheet.device) {
                words += key + "=" + value + " ";
            }
            words += sheet.side1.text + "|" + sheet.side2.text + "\n";
        }
        return words;
    }
    std::string expectSameOnBothWays(const std::string& items, int pages) const {
        const std::string ticket = add("ticket.plist",
                                       "<plist version=\"1.0\"><dict><key>PMPrintSettingsTicket</key><dict>"
                                       "<key>com.apple.print.PrintSettings.PMCopies</key><integer>2</integer>"
                                       "<key>com.apple.print.PrintSettings.PMPageRange</key><string>2-3</string>" +
                                           items + "</dict></dict></plist>");
        return expectSameOnBothWays(Words{"--print", "--ticket-in", ticket}, pages);
    }
    static std::string jobType(int type, const std::string& more = {}) {
        return "<key>com.tavro.print.JobType</key><dict><key>JobType</key><integer>" + std::to_string(type) +
               "</integer>" + more + "</dict>";
    }

    static std::string withoutDates(const std::string& job) {
        std::istringstream lines(job);
        std::string text;
        for (std::string line; std::getline(lines, line);) {
            text += line.find("Date") == std::string::npos ? line + "\n" : "";
        }
        return text;
    }

    PrintServer server{folder.path() / "server"};
};

class ProgramWithSmallServer : public ProgramWithQueues {
protected:
    ProgramWithSmallServer() : ProgramWithQueues("LimitRequestBody 1m\nMaxJobs 2\n") {}
};

}  // namespace

TEST_F(ProgramWithQueues, PrintsWithTheDefaultsOfTheQueue) {
    const Words ofQueue{"Duplex=DuplexTumble", "MediaType=Recycled", "TREconomode=True", "JCLPrintQuality=Enhanced"};
    const Words saved{"PageSize=A4",        "MediaColor=Blue", "OutputBin=Stacker", "StapleLocation=2Staples",
                      "Resolution=1200dpi", "Jog=EndOfSet"};
    std::string command = "lpadmin -p tavro";
    for (const std::string& option : ofQueue) {
        command += " -o " + option;
    }
    server.admin(command);
    std::string line = "Dest tavro copies=3";
    for (const std::string& option : saved) {
        line += " " + option;
    }
    saveOptions(line + "\nDest tavro/stacks StapleLocation=None Collate=False TRFoldOptions=2HolePunch number-up=2\n");
    const std::string job = printed("tavro");
    for (const Words* words : {&ofQueue, &saved}) {
        for (const std::string& option : *words) {
            EXPECT_TRUE(has(job, option.starts_with("JCL") ? "@PJL SET TRPRINTQUALITY=ENHANCED" : feature(option)))
                << option;
        }
    }
    EXPECT_TRUE(has(job, "*NumCopies 3\n"));
    EXPECT_TRUE(has(job, feature("Collate=True")));

    const std::string stacks = printed("tavro/stacks");
    for (const char* option :
         {"Collate=False", "StapleLocation=None", "TRFoldOptions=2HolePunch", "OutputBin=Stacker"}) {
        EXPECT_TRUE(has(stacks, feature(option))) << option;
    }
    EXPECT_TRUE(has(stacks, "%%Pages: 5\n"));

    // Settings that are given win.
    const std::string before = add("before.plist", contentOf(settingsFile()));
    saveOptions("Dest tavro copies=2 Collate=True StapleLocation=1Staple OutputBin=Side\n");
    const std::string again = printed("tavro", "ok\n", {"--ticket-in", before});
    for (const char* option : {"Collate=False", "StapleLocation=None", "OutputBin=Stacker"}) {
        EXPECT_TRUE(has(again, feature(option))) << option;
    }
    EXPECT_TRUE(has(again, "*NumCopies 3\n"));
}

TEST_F(ProgramWithQueues, ListsThemWithTheirInstances) {
    server.addQueue("office", kZR410);
    saveOptions("Dest office/draft Duplex=DuplexTumble\nDefault office\n");
    const std::string job = printed("tavro",
                                    "expect Host:10 items 3\n"
                                    "choose Host:10 \"office\"\n"
                                    "choose Host:10 \"office/draft\"\n"
                                    "choose Host:10 \"tavro\"\nok\n");
    EXPECT_TRUE(has(job, feature("PageSize=Letter")));
    // The default queue without being asked for.
    const Run done = run({"--script", add("script", "expect Host:10 text \"office\"\nok\n"), kTenPages}, environment());
    EXPECT_EQ(done.status, 0) << done.errors;
    EXPECT_EQ(done.output, "office-2\n");
}

TEST_F(ProgramWithQueues, SendsThePagesOfTheDocumentThatWereChosen) {
    saveOptions("Dest tavro number-up=2\n");
    EXPECT_TRUE(has(printed("tavro", "type Host:31 \"3-9\"\nok\n"), "%%Pages: 4\n"));
}

TEST_F(ProgramWithQueues, HaveAllPagesCounted) {
    printed("tavro");
    EXPECT_EQ(server.countedPages(1), 10);
    saveOptions("Dest tavro copies=3\n");
    printed("tavro");
    EXPECT_EQ(server.countedPages(2), 30);
}

TEST_F(ProgramWithQueues, SaysWhenTheyTakeNoJobs) {
    server.admin("cupsreject -r 'being moved' tavro");
    expectNotSent(print("tavro"), "tavro", "being moved");
    server.admin("cupsaccept tavro");
    server.admin("lpadmin -p tavro -o job-quota-period=3600 -o job-k-limit=1");
    EXPECT_EQ(print("tavro").status, 0);
    ASSERT_TRUE(server.hasCompleted("tavro-1"));
    expectNotSent(print("tavro"), "tavro", "uota");
}

TEST_F(ProgramWithQueues, SaysWhenAJobWaits) {
    server.admin("cupsdisable -r 'out of toner' tavro");
    const Run done = run({"--printer", "tavro", "--print", kTenPages}, environment());
    EXPECT_EQ(done.status, 0);
    EXPECT_EQ(done.output, "tavro-1\n");
    EXPECT_EQ(done.errors, "tavro-print: tavro-1: waits, the queue is stopped (out of toner)\n");
    const Run inDialog = print("tavro");
    EXPECT_EQ(inDialog.status, 0);
    EXPECT_TRUE(has(inDialog.output, "notice: The document is not printed yet.\n")) << inDialog.output;
    EXPECT_TRUE(has(inDialog.output, "tavro-2\n")) << inDialog.output;
}

TEST_F(ProgramWithQueues, DoesNotPrintOnAPrinterThatHasChanged) {
    // While the program starts, somebody takes the finisher with the booklet maker away.
    std::thread somebody([this] {
        EXPECT_TRUE(eventually([this] { return has(server.log(), "GET /printers/tavro.ppd"); }));
        server.admin("lpadmin -p tavro -o Option2=LCSS");
    });
    std::string text;
    for (int i = 0; i < 5; ++i) {
        text += "panel 1\npanel 2\npanel 3\npanel 4\n";
    }
    const Run done = print("tavro", text + "ok\n");
    somebody.join();
    expectNotSent(done, "tavro", "changed");
    EXPECT_EQ(print("tavro").status, 0);
}

TEST_F(ProgramWithSmallServer, SaysWhenItsSpoolIsFull) {
    expectNotSent(print("tavro", "ok\n", {largeDocument(4 << 20)}), "tavro", "Large");
    server.admin("cupsdisable tavro");
    EXPECT_EQ(print("tavro").status, 0);
    EXPECT_EQ(print("tavro").status, 0);
    fs::remove(settingsFile());
    expectNotSent(print("tavro"), "tavro", "oo many");
}

TEST_F(ProgramWithQueues, SaysWhenTheServerGoesAwayInTheMiddleOfAJob) {
    const std::string document = largeDocument(256 << 20);
    std::thread killer([this] {
        const fs::path spool = folder.path() / "server/spool";
        EXPECT_TRUE(eventually([&] {
            return std::ranges::any_of(fs::recursive_directory_iterator(spool), [](const auto& entry) {
                std::error_code ignored;
                return entry.is_regular_file(ignored) && entry.file_size(ignored) > (1 << 20);
            });
        }));
        server.stop(SIGKILL);
    });
    const Run done = print("tavro", "ok\n", {document});
    killer.join();
    expectNotSent(done, "tavro", "the print server " + server.address() + " went away");
}

TEST_F(ProgramWithQueues, AsksForThePasswordThatAServerWants) {
    UnrulyServer unruly(server.address());
    unruly.behave(IPP_OP_CREATE_JOB, UnrulyServer::Manner::wantsPassword);
    const Words environment{"CUPS_SERVER=" + unruly.address(), "CUPS_USER=ann"};
    const Run refused = run({"--printer", "tavro", "--print", kTenPages}, environment);
    EXPECT_EQ(refused.status, 5);
    EXPECT_EQ(refused.errors, "tavro-print: tavro: the print server " + unruly.address() +
                                  " wants a user name and a password, and was given none\n");

    const std::string typed = "expect Host:111 text \"ann\"\ntype Host:112 \"secret\"\ncontrols\nshot password\n";
    const Run inDialog =
        run({"--printer", "tavro", "--shots", folder.path().string(), "--script",
             add("script", "ok\ntype Host:112 \"wrong\"\nclick Host:113\n" + typed + "click Host:113\n"), kTenPages},
            environment);
    EXPECT_EQ(inDialog.status, 0) << inDialog.errors;
    EXPECT_TRUE(has(inDialog.output, "has not accepted this name and password")) << inDialog.output;
    EXPECT_TRUE(has(inDialog.output, "tavro-1\n")) << inDialog.output;
    EXPECT_FALSE(has(inDialog.output, "secret"));
    EXPECT_EQ(
        run({"--printer", "tavro", "--script", add("script", "ok\nclick Host:114\ncancel\n"), kTenPages}, environment)
            .status,
        5);

    // On a terminal, which shows what is typed as long as it is not told otherwise.
    const std::string keyboard = folder / "keyboard";
    ASSERT_EQ(mkfifo(keyboard.c_str(), 0600), 0);
    whileRunning = [&](pid_t) {
        std::ofstream keys(keyboard);
        EXPECT_TRUE(eventually([&] { return has(contentOf(folder / "stdout"), "assword"); }));
        keys << "secret\n" << std::flush;
        EXPECT_TRUE(eventually([&] { return has(contentOf(folder / "stdout"), "tavro-2"); }));
    };
    const std::string command = kProgram + " --printer tavro --print " + kTenPages;
    const Run onTerminal =
        start("/bin/sh", {"-c", "exec script -qec '" + command + "' /dev/null <'" + keyboard + "'"}, environment);
    EXPECT_EQ(onTerminal.status, 0) << onTerminal.output;
    EXPECT_FALSE(has(onTerminal.output, "secret")) << onTerminal.output;
}

TEST_F(ProgramWithQueues, TakesAJobBackThatIsInterrupted) {
    UnrulyServer unruly(server.address());
    unruly.behave(IPP_OP_SEND_DOCUMENT, UnrulyServer::Manner::isSilent);
    whileRunning = [&](pid_t program) {
        EXPECT_TRUE(eventually([&] { return unruly.countOf(IPP_OP_SEND_DOCUMENT) > 0; }));
        kill(program, SIGTERM);
    };
    const Run done = run({"--printer", "tavro", "--print", kTenPages}, {"CUPS_SERVER=" + unruly.address()});
    EXPECT_EQ(done.status, -SIGTERM);
    EXPECT_EQ(server.admin("lpstat -W all -o"), "");
}

TEST_F(ProgramWithQueues, WaitsForNoServer) {
    server.freeze();
    const Run named = print("tavro");
    EXPECT_EQ(named.status, 4);
    EXPECT_EQ(named.errors, "tavro-print: tavro: the print server " + server.address() + " does not answer\n");
    // Without a name the sample printer is shown, and the menu says why there are no queues.
    const Run unnamed =
        run({"--script", add("script", "expect Host:10 items 2\ncontrols\ncancel\n"), kTenPages}, environment());
    EXPECT_EQ(unnamed.status, 1) << unnamed.errors;
    EXPECT_TRUE(has(unnamed.output, "The print server does not answer")) << unnamed.output;
    server.wake();
}

TEST_F(ReadyJobs, AreWhatAFileWouldGet) {
    server.addQueue("tavro", kZR420);
    const std::string uncollated =
        expectSameOnBothWays("<key>PPDDict</key><dict><key>Collate</key><string>False</string></dict>", 2);
    EXPECT_TRUE(has(uncollated, "%%BeginFeature: *Collate False\n"));
    EXPECT_FALSE(has(uncollated, "%%BeginFeature: *Collate True\n"));
    const std::string secure =
        expectSameOnBothWays(jobType(6, "<key>SecurePrintPassword</key><string>8642</string>"), 2);
    EXPECT_TRUE(has(secure, "@PJL SET HOLDKEY=\"8642\"\n"));
    expectSameOnBothWays(jobType(5) + "<key>com.tavro.print.FaxOptions</key><dict><key>CoverSheet</key><true/></dict>",
                         3);
    std::string script = contentOf(sourcePath("docs/examples/watermark.tavro-script"));
    script.insert(script.rfind("ok"), "set Host:20 2\n");
    expectSameOnBothWays(Words{"--script", add("script", script)}, 10);
}

// What the production printer got, told by the program itself.
TEST_F(ReadyJobs, OfTheProductionPrinterArriveWithAllThatItDoes) {
    const std::string ppd = sourcePath("resources/ppd/Tavro-ZR840.ppd");
    server.addQueue("tavro", ppd);
    server.admin("lpadmin -p tavro -o Option10=True");  // the signature booklet maker
    const auto told = [&](const char* name) {
        const std::string script = contentOf(sourcePath("docs/examples/zr840-" + std::string(name) + ".tavro-script"));
        send(Words{"--script", add("script", script)});
        const Run proof = run({"--ppd", ppd, "--proof", server.printedBy("tavro")});
        EXPECT_EQ(proof.status, 0) << proof.errors;
        return "\n" + proof.output;
    };
    const auto expect = [&](const std::string& all, const Words& lines) {
        for (const std::string& line : lines) {
            EXPECT_TRUE(has(all, "\n" + line + "\n")) << line << all;
        }
    };
    expect(told("z-fold"),
           {"Sheet 1: Letter (8.5 x 11 in), White; side 1: “Page 1”",
            "Sheet 2: Tabloid (11 x 17 in), White; side 1: “Page 2”", "Finishing: stapled at the top left",
            "Finishing: folded: Z Fold of half sheets, at the right"});
    expect(told("signature-booklet"),
           {"Instruction: cover-front-media-key = Cover, 250 g gloss",
            "Sheet 1: Letter (8.5 x 11 in), White, Heavyweight Glossy, 250 g/m², Coated on Both Sides, Gloss; side 1: "
            "blank",
            "Sheet 2: Letter (8.5 x 11 in), White; side 1: “Page 1”", "Finishing: signature booklet"});
    expect(told("bound-book"), {"Sheet 3: Letter (8.5 x 11 in), White, Tab Stock; side 1: blank",
                                "Sheet 11: Letter (8.5 x 11 in), White; side 1: blank",
                                "Sheet 12: Letter (8.5 x 11 in), White; side 1: “Page 2”; side 2: “Page 3”",
                                "Finishing: bound at the left"});
    expect(told("holes"), {"Sheet 10: Letter (8.5 x 11 in), White; side 1: “Page 10”",
                           "Sheet 11: Letter (8.5 x 11 in), White, from Sheet Inserter; side 1: blank",
                           "Finishing: 4 holes at the left"});
    const std::string colors = told("color-and-notes");
    expect(colors, {"Command: TRCOLORCORRECTION = PRESSMATCH", "Command: TRBANNER = ON"});
    EXPECT_TRUE(has(colors, "(light of 25, 50 and 75% comes out as 28, 53 and 77% of red, 27, 52 and 76% of green,"))
        << colors;
}

TEST_F(ReadyJobs, HaveAllTheirSheetsOnTheirPapers) {
    server.addQueue("tavro", kZR420);
    const auto example = [](const char* name) {
        return "set Host:20 2\n" + contentOf(sourcePath("docs/examples/" + std::string(name) + ".tavro-script"));
    };
    std::string booklet = example("production");
    booklet.replace(booklet.rfind("ok "), std::string::npos, "answer other\nok\n");  // without its inserts
    const struct {
        std::string script;
        int sheets;
        std::string words;
        int sides;  // of both copies
    } rows[] = {
        {example("production"), 14,
         "Blue CardStock[-] Green[-] [Page 1|-] Pink[-] Goldenrod[Page 2] Goldenrod[Page 3] Goldenrod[Page 4] "
         "Goldenrod[Page 5] Goldenrod[Page 6] Goldenrod[Page 7] Goldenrod[Page 8] Goldenrod[Page 9] "
         "Goldenrod[Page 10] Yellow[-]",
         30},
        {booklet, 4,
         "Blue CardStock[-|-]s [Page 1|Page 2]s [Page 3 Page 10|Page 9 Page 4]s [Page 5 Page 8|Page 7 Page 6]s", 16},
        {"type Host:31 \"4-6\"\n" + example("transparencies"), 4,
         "Blue CardStock[-] Clear Transparency[Page 4] Yellow[Page 4] Yellow[Page 5|Page 6]", 10},
    };
    int job = 0;
    for (const auto& row : rows) {
        expectSameOnBothWays(Words{"--script", add("script", row.script), "--ticket-in",
                                   sourcePath("docs/examples/different-covers.plist")},
                             row.sheets);
        EXPECT_EQ(::wordsOf(proofOf(server.printedBy("tavro"))), row.words);
        EXPECT_EQ(server.countedPages(++job), row.sides);
    }
}
