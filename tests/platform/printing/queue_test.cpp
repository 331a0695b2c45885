// Queues, on a print server that each test starts for itself.
#include "platform/files/pending_file.h"
#include "platform/printing/CompiledPPD.h"
#include "platform/printing/server_connection.h"
#include "tests/platform/printing/printing_fixture.h"
#include "tests/support/print_server.h"
#include "tests/support/unruly_server.h"

#include <cups/cups.h>
#include <gtest/gtest.h>

#include <array>
#include <ctime>
#include <thread>
#include <vector>

namespace {

void useServer(const std::string& address) {
    setenv("CUPS_SERVER", address.c_str(), 1);  // for lpadmin and its kin
    cupsSetServer(address.c_str());             // the library reads the environment only once
}

std::vector<std::string> queues(UInt32 timeout = 3000, OSStatus expected = noErr) {
    PMPrinterList list = nullptr;
    EXPECT_EQ(PMPrinterListBegin(timeout, &list), noErr);
    CFArrayRef names = nullptr;
    EXPECT_EQ(PMPrinterListCopyPrinterIDs(list, &names), expected);
    EXPECT_TRUE(PMPrinterListIsComplete(list));
    PMPrinterListRelease(list);
    const auto owned = CFRef<CFArrayRef>::adopt(names);
    std::vector<std::string> made;
    for (CFIndex i = 0; i < CFArrayGetCount(names); ++i) {
        made.push_back(text(CFArrayGetValueAtIndex(names, i)));
    }
    return made;
}

class Queues : public testing::Test {
protected:
    // The library asks for the home folder only once.
    static void SetUpTestSuite() { setenv("HOME", (home() / "").c_str(), 1); }
    static const TemporaryFolder& home() {
        static const TemporaryFolder folder;
        return folder;
    }

    void SetUp() override {
        std::filesystem::create_directory(folder / "tmp");
        setenv("TMPDIR", (folder / "tmp").c_str(), 1);
        useServer(server.address());
        server.addQueue("tavro", kZR420);
    }

    void TearDown() override {
        unsetenv("TMPDIR");
        std::filesystem::remove_all(home() / ".cups");
    }

    /// What the user has saved, as lpoptions keeps it.
    static void saveOptions(const std::string& lines) {
        std::filesystem::create_directory(home() / ".cups");
        home().add(".cups/lpoptions", lines);
    }

    static std::size_t countOf(const std::string& text, const std::string& part) {
        std::size_t count = 0;
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
            ++count;
        }
        return count;
    }

    /// The priority of a job that the server has or had; 0 for no job.
    static int jobPriority(SInt32 id) {
        cups_job_t* jobs = nullptr;
        const int count = cupsGetJobs2(CUPS_HTTP_DEFAULT, &jobs, "tavro", 0, CUPS_WHICHJOBS_ALL);
        int priority = 0;
        for (int i = 0; i < count; ++i) {
            priority = jobs[i].id == id ? jobs[i].priority : priority;
        }
        cupsFreeJobs(count, jobs);
        return priority;
    }

    TemporaryFolder folder;
    PrintServer server{folder / "server"};
};

TEST_F(Queues, AreListedTheDefaultFirst) {
    server.admin("lpadmin -p another -E -v file:/dev/null -P '" + kZR410.string() + "'");
    EXPECT_EQ(queues(), (std::vector<std::string>{"another", "tavro"}));
    server.admin("lpadmin -d tavro");
    EXPECT_EQ(queues(), (std::vector<std::string>{"tavro", "another"}));
}

TEST_F(Queues, KeepTheirOwnConfiguration) {
    server.admin("lpadmin -p tavro -o Option2=HCSS -o Option1=False -o Duplex=DuplexNoTumble");
    saveOptions("Dest tavro Jog=EndOfSet Resolution=None PageSize=Custom.400x500\n");
    {
        const Printer printer(std::string("tavro"));
        ASSERT_EQ(printer.status(), noErr) << text(PMGetLastErrorText());
        EXPECT_EQ(text(PMPrinterGetName(printer.get())), "tavro");
        EXPECT_EQ(text(PMPrinterGetID(printer.get())), "tavro");
        EXPECT_EQ(text(PMPrinterGetMaker(printer.get())), "Tavro");
        EXPECT_GT(PMPrinterCountPapers(printer.get()), 10);

        const Ticket settings;
        const Ticket format;
        ASSERT_EQ(PMPrinterWriteDefaultSettings(printer.get(), settings.get(), format.get()), noErr);
        EXPECT_EQ(get(settings.ppd(), "Duplex"), "DuplexNoTumble");  // the queue's
        EXPECT_EQ(get(settings.ppd(), "Jog"), "EndOfSet");           // the user's
        EXPECT_EQ(get(settings.ppd(), "Resolution"), "600dpi");      // no choice of the PPD
        EXPECT_EQ(get(settings.ppd(), "PageSize"), "Custom.400x500");
        EXPECT_EQ(get(settings.ppd(), "Option2"), "(null)");
        EXPECT_EQ(get(settings.ppd(), "job-sheets"), "(null)");

        const Ticket info;
        ASSERT_EQ(PMPrinterWriteInfoTicket(printer.get(), nullptr, info.get()), noErr);
        PPDContext ppd = nullptr;
        ASSERT_EQ(ppdOpenCompiledPPDFromTicket(info.get(), &ppd), noErr);
        UInt32 finisher = 0;
        ASSERT_EQ(ppdGetMainIndex(ppd, reinterpret_cast<ConstPPDString>("\7Option2"), &finisher), noErr);
        PPDUIOption option{};
        ASSERT_EQ(ppdGetIndUIOption(ppd, finisher, 4, &option), noErr);
        EXPECT_EQ(option.isChosen, 1);
        ppdCloseCompiledPPDFromTicket(ppd);
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder / "tmp"));  // the copy of the PPD went with the printer
}

TEST_F(Queues, AreListedWithTheUsersInstances) {
    server.addQueue("another", kZR410);
    saveOptions(
        "Dest tavro number-up=2\nDefault tavro/draft Duplex=DuplexTumble\nDest tavro/book\nDest gone/draft copies=2\n");
    EXPECT_EQ(queues(), (std::vector<std::string>{"tavro/draft", "another", "tavro", "tavro/book"}));
    setenv("LPDEST", "another", 1);
    EXPECT_EQ(queues().front(), "another");
    CFStringRef name = nullptr;
    EXPECT_EQ(PMServerCopyDefaultPrinterID(3000, &name), noErr);
    EXPECT_EQ(text(CFRef<CFStringRef>::adopt(name).get()), "another");
    unsetenv("LPDEST");
    setenv("PRINTER", "lp", 1);  // as some systems set it for everybody
    EXPECT_EQ(PMServerCopyDefaultPrinterID(3000, &name), noErr);
    EXPECT_EQ(text(CFRef<CFStringRef>::adopt(name).get()), "tavro/draft");
    unsetenv("PRINTER");
    saveOptions("");
    EXPECT_EQ(PMServerCopyDefaultPrinterID(3000, &name), kPMNoDefaultPrinter);
}

TEST_F(Queues, AreAskedForAhead) {
    server.addQueue("another", kZR410);
    saveOptions("Default tavro/draft copies=3\n");
    PMServerAskAhead(nullptr, 3000);
    CFStringRef name = nullptr;
    ASSERT_EQ(PMServerCopyDefaultPrinterID(3000, &name), noErr);
    const auto owner = CFRef<CFStringRef>::adopt(name);
    EXPECT_EQ(text(name), "tavro/draft");
    const auto opened = [](CFStringRef queue) {
        PMPrinter printer = nullptr;
        const OSStatus status = PMPrinterCreateFromPrinterID(queue, &printer);
        const std::string title = status == noErr ? text(PMPrinterGetID(printer)) : std::to_string(status);
        PMPrinterRelease(printer);
        return title;
    };
    EXPECT_EQ(opened(name), "tavro/draft");
    EXPECT_EQ(opened(name), "tavro/draft") << "asked for anew";
    PMServerAskAhead(CFSTR("tavro"), 3000);
    EXPECT_EQ(opened(CFSTR("another")), "another") << "another one than was asked for";
    PMServerAskAhead(CFSTR("gone"), 3000);
    EXPECT_EQ(opened(CFSTR("gone")), std::to_string(kPMNoSuchPrinter));
    PMServerAskAhead(nullptr, 3000);  // nobody comes for the answer
}

TEST_F(Queues, BeginWithWhatIsSavedForThem) {
    server.admin("lpadmin -p tavro -o copies-default=4 -o sides-default=two-sided-short-edge");
    saveOptions(
        "Dest tavro media=iso_a4_210x297mm,Lower outputbin=sTACKER copies=3 page-ranges=2-3 landscape=true\n"
        "Dest tavro/draft copies=100000 multiple-document-handling=separate-documents-uncollated-copies "
        "sides=two-sided-long-edge orientation-requested=5 page-ranges=two\n");
    const auto startOf = [](const std::string& name, const Ticket& settings, const Ticket& format) {
        const Printer printer(name);
        ASSERT_EQ(printer.status(), noErr) << text(PMGetLastErrorText());
        EXPECT_EQ(text(PMPrinterGetName(printer.get())), name);
        EXPECT_EQ(text(PMPrinterGetID(printer.get())), name);
        ASSERT_EQ(PMPrinterWriteDefaultSettings(printer.get(), settings.get(), format.get()), noErr);
    };
    const Ticket plain;
    const Ticket plainFormat;
    startOf("tavro", plain, plainFormat);
    EXPECT_EQ(get(plain.ppd(), "PageSize"), "A4");
    EXPECT_EQ(get(plain.ppd(), "OutputBin"), "Stacker");
    EXPECT_EQ(get(plain.ppd(), "Duplex"), "DuplexTumble");
    EXPECT_EQ(get(plain.ppd(), "Collate"), "True");
    EXPECT_EQ(plain.number(kPMCopiesKey), 3);
    EXPECT_EQ(plain.string(kPMPageRangeKey), "2-3");
    EXPECT_EQ(plainFormat.number(kPMOrientationKey), 2);

    const Ticket draft;
    const Ticket draftFormat;
    startOf("tavro/draft", draft, draftFormat);
    EXPECT_EQ(get(draft.ppd(), "PageSize"), "A4");  // the queue's own holds for its instances
    EXPECT_EQ(get(draft.ppd(), "Duplex"), "DuplexNoTumble");
    EXPECT_EQ(get(draft.ppd(), "Collate"), "False");
    EXPECT_EQ(draft.number(kPMCopiesKey), std::nullopt);
    EXPECT_EQ(draft.string(kPMPageRangeKey), "(null)");
    EXPECT_EQ(draftFormat.number(kPMOrientationKey), 3);

    const Ticket chosen;
    const Ticket chosenFormat;
    chosen.setNumber(kPMCopiesKey, 7);
    chosenFormat.setNumber(kPMOrientationKey, 1);
    set(chosen.ppd(), "OutputBin", "Side");
    startOf("tavro", chosen, chosenFormat);
    EXPECT_EQ(chosen.number(kPMCopiesKey), 7);
    EXPECT_EQ(chosen.string(kPMPageRangeKey), "(null)");  // all pages were chosen
    EXPECT_EQ(chosenFormat.number(kPMOrientationKey), 1);
    EXPECT_EQ(get(chosen.ppd(), "OutputBin"), "Side");
    EXPECT_EQ(get(chosen.ppd(), "PageSize"), "A4");

    const Printer unknown(std::string("tavro/none"));
    EXPECT_EQ(unknown.status(), kPMNoSuchPrinter);
    EXPECT_TRUE(text(PMGetLastErrorText()).starts_with("tavro/none: ")) << text(PMGetLastErrorText());
}

/// What is saved for a queue is in its jobs, but nothing of it is done to their pages again, whoever makes their
/// PostScript.
TEST_F(Queues, GiveTheirOwnOptionsToEachJobOnce) {
    const Listener device;
    server.admin("lpadmin -p tavro -v 'socket://" + device.address() +
                 "/?snmp=false&waiteof=false' -o copies-default=3 -o orientation-requested-default=4 "
                 "-o number-up-default=5 -o page-border-default=double");
    saveOptions("Dest tavro number-up=2 job-priority=77 Duplex=DuplexTumble fit-to-page=true outputorder=reverse\n");
    const Printer printer(std::string("tavro"));
    const Ticket format;
    const Ticket settings;
    ASSERT_EQ(PMPrinterWriteDefaultSettings(printer.get(), settings.get(), format.get()), noErr);
    CFDictionaryRef options = nullptr;
    ASSERT_EQ(PMTicketGetCFDictionary(settings.get(), kPMTopLevel, kPMTopLevel, kPMPageOptionsKey, &options), noErr);
    EXPECT_EQ(get(options, "number-up"), "2");
    EXPECT_EQ(get(options, "page-border"), "double");
    EXPECT_EQ(get(options, "job-priority"), "(null)");
    settings.setNumber(kPMCopiesKey, 2);

    PendingFile postScript(folder / "pages.ps");
    ASSERT_EQ(PMWritePostScript(OpenPages().get()->file, makeFileURL(kTenPages).get(), CFSTR("600dpi"), &postScript),
              noErr);
    ASSERT_TRUE(postScript.commit());
    for (const auto& pages : {kTenPages, folder.path() / "pages.ps"}) {
        SInt32 job = 0;
        ASSERT_EQ(PMPrinterSendJob(printer.get(), settings.get(), OpenPages(pages).get(), &job, nullptr), noErr)
            << text(PMGetLastErrorText());
        const std::string sent = device.receive();
        const std::string file = folder.add("job.ps", sent);
        ASSERT_EQ(PMPrinterWriteJobToURL(printer.get(), settings.get(), OpenPages(pages).get(),
                                         makeFileURL(folder / "file.ps").get()),
                  noErr);
        for (const std::string& each : {sent, readFile(folder / "file.ps")}) {
            EXPECT_EQ(countOf(each, "*NumCopies 2\n"), 1U);
            EXPECT_EQ(countOf(each, "%!PS-Adobe"), 1U);
            EXPECT_EQ(countOf(each, "*Duplex DuplexTumble"), 1U);
            EXPECT_LT(each.find("(Page 1)"), each.find("(Page 10)"));
        }
        EXPECT_EQ(countPages(file), 10U);
        EXPECT_EQ(countPages(folder / "file.ps"), 10U);
        EXPECT_EQ(jobPriority(job), 77);
        EXPECT_FALSE(device.hasMore());
    }
}

TEST_F(Queues, PrintTheJobAsAFileWouldHaveIt) {
    const Printer printer(std::string("tavro"));
    const Ticket settings;
    const Ticket format;
    set(settings.ppd(), "StapleLocation", "1Staple");
    set(settings.ppd(), "JCLPrintQuality", "Enhanced");
    set(settings.ppd(), "Note", "two words 'quoted'");
    settings.setNumber(kPMCopiesKey, 2);
    settings.setString(kPMJobNameKey, "Minutes");
    SInt32 job = 0;
    ASSERT_EQ(PMPrinterSendJob(printer.get(), settings.get(), OpenPages().get(), &job, nullptr), noErr)
        << text(PMGetLastErrorText());
    EXPECT_GT(job, 0);
    ASSERT_TRUE(server.hasCompleted("tavro-" + std::to_string(job))) << server.log();
    ASSERT_EQ(
        PMPrinterWriteJobToURL(printer.get(), settings.get(), OpenPages().get(), makeFileURL(folder / "file.ps").get()),
        noErr);
    for (const auto& path : {server.printedBy("tavro"), folder.path() / "file.ps"}) {
        const std::string sent = readFile(path);
        for (const char* line : {"%%BeginFeature: *StapleLocation 1Staple\n", "@PJL SET TRPRINTQUALITY=ENHANCED\n",
                                 "*NumCopies 2\n", "@PJL JOB NAME = \"Minutes\""}) {
            EXPECT_NE(sent.find(line), std::string::npos) << path << line;
        }
        EXPECT_EQ(countPages(path), 10U) << path;
    }
}

TEST_F(Queues, PrintWithTheUsersDefaultsFromEveryProgram) {
    saveOptions("Dest elsewhere a=b\nDest tavro jog=EndOfSet number-up=1 sides=two-sided-long-edge\n");
    server.admin("lpadmin -p tavro -o TREconomode=True");
    const Printer printer(std::string("tavro"));
    const Ticket settings;
    const Ticket format;
    ASSERT_EQ(PMPrinterWriteDefaultSettings(printer.get(), settings.get(), format.get()), noErr);
    set(settings.ppd(), "StapleLocation", "1Staple");
    set(settings.ppd(), "JCLPrintQuality", "Enhanced");
    set(settings.ppd(), "Jog", "None");  // as the queue has it
    EXPECT_EQ(get(settings.ppd(), "Duplex"), "DuplexNoTumble");
    set(settings.ppd(), "Duplex", "None");  // "sides" says otherwise
    set(settings.ppd(), "JCLPasscode", "Custom.8642");
    set(settings.ppd(), "Fragrance", "Rose");
    settings.setString(kPMPageRangeKey, "1-4");
    settings.setNumber(kPMCopiesKey, 2);
    format.setNumber(kPMOrientationKey, 2);
    const auto save = [&] { return PMPrinterSaveDefaultSettings(printer.get(), settings.get(), format.get()); };
    ASSERT_EQ(save(), noErr) << text(PMGetLastErrorText());
    const auto file = home() / ".cups/lpoptions";
    EXPECT_EQ(readFile(file),
              "Dest elsewhere a=b\n"
              "Dest tavro number-up=1 StapleLocation=1Staple JCLPrintQuality=Enhanced orientation-requested=4 "
              "pdfAutorotate=false print-scaling=fit copies=2\n");
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0600));

    ASSERT_EQ(run("lp -d tavro '" + kTenPages.string() + "'").second, 0);
    ASSERT_TRUE(server.hasCompleted("tavro-1")) << readFile(folder / "error_log");
    const std::string sent = readFile(server.printedBy("tavro"));
    for (const char* line : {"%%BeginFeature: *StapleLocation 1Staple\n", "@PJL SET TRPRINTQUALITY=ENHANCED\n",
                             "%%BeginFeature: *TREconomode True\n", "*NumCopies 2\n"}) {
        EXPECT_NE(sent.find(line), std::string::npos) << line;
    }
    EXPECT_EQ(countPages(server.printedBy("tavro")), 10U);

    // The next dialog begins with them, and back at the queue's own they are forgotten.
    const Ticket again;
    ASSERT_EQ(PMPrinterWriteDefaultSettings(Printer(std::string("tavro")).get(), again.get(), again.get()), noErr);
    EXPECT_EQ(get(again.ppd(), "StapleLocation"), "1Staple");
    EXPECT_EQ(get(again.ppd(), "Jog"), "None");
    set(settings.ppd(), "StapleLocation", "None");
    set(settings.ppd(), "JCLPrintQuality", "Standard");
    settings.setNumber(kPMCopiesKey, 1);
    format.setNumber(kPMOrientationKey, 1);
    ASSERT_EQ(save(), noErr) << text(PMGetLastErrorText());
    EXPECT_EQ(readFile(file), "Dest elsewhere a=b\nDest tavro number-up=1\n");

    // An instance has what differs from its queue.
    saveOptions("Dest tavro Jog=EndOfSet\nDest tavro/draft Duplex=DuplexTumble\n");
    const Printer draft(std::string("tavro/draft"));
    set(settings.ppd(), "StapleLocation", "1Staple");
    ASSERT_EQ(PMPrinterSaveDefaultSettings(draft.get(), settings.get(), format.get()), noErr);
    EXPECT_EQ(readFile(file), "Dest tavro Jog=EndOfSet\nDest tavro/draft StapleLocation=1Staple Jog=None\n");
}

TEST_F(Queues, KeepNoDefaultsWhereTheyCannot) {
    const Ticket settings;
    const Printer withoutQueue(kZR420);
    EXPECT_EQ(PMPrinterSaveDefaultSettings(withoutQueue.get(), settings.get(), settings.get()), kPMNoSuchPrinter);
    EXPECT_EQ(text(PMGetLastErrorText()), "Tavro ZR420: only a queue has defaults of its own");
    home().add(".cups", "a file where the folder would be");
    const Printer printer(std::string("tavro"));
    EXPECT_EQ(PMPrinterSaveDefaultSettings(printer.get(), settings.get(), settings.get()), kPMCannotWriteOutput);
    EXPECT_NE(text(PMGetLastErrorText()).find(".cups/lpoptions: "), std::string::npos) << text(PMGetLastErrorText());
}

TEST_F(Queues, HandAPasscodeToThePrinterAndSeeNoneThemselves) {
    const Listener device;
    server.admin("lpadmin -p tavro -v 'socket://" + device.address() + "/?snmp=false&waiteof=false'");
    const Printer printer(std::string("tavro"));
    const Ticket settings;
    const Ticket format;
    set(settings.ppd(), "Duplex", "DuplexTumble");
    set(settings.ppd(), "JCLPasscode", "None");
    settings.setString(kPMJobPasscodeKey, "8642864286");
    settings.setNumber(kPMCopiesKey, 2);
    settings.setString(kPMJobNameKey, "Minutes");
    SInt32 job = 0;
    ASSERT_EQ(PMPrinterSendJob(printer.get(), settings.get(), OpenPages().get(), &job, nullptr), noErr)
        << text(PMGetLastErrorText());
    const std::string sent = device.receive();
    for (const char* line :
         {"@PJL SET HOLDKEY=\"8642864286\"\n", "%%BeginFeature: *Duplex DuplexTumble\n", "*NumCopies 2\n"}) {
        EXPECT_NE(sent.find(line), std::string::npos) << line;
    }
    folder.add("job.ps", sent);
    EXPECT_EQ(countPages(folder / "job.ps"), 10U);
    const std::string log = server.log();  // with the command lines of the server's programs
    EXPECT_NE(log.find("argv[5]="), std::string::npos);
    EXPECT_EQ(log.find("864286"), std::string::npos);  // fewer digits may be a port's
}

TEST_F(Queues, HoldAJobUntilItsTime) {
    const Printer printer(std::string("tavro"));
    const Ticket settings;
    const std::time_t then = std::time(nullptr) + 2 * 3600;
    char time[8];
    std::strftime(time, sizeof time, "%H:%M", std::gmtime(&then));
    settings.setString(kPMJobHoldUntilTimeKey, time);
    SInt32 job = 0;
    ASSERT_EQ(PMPrinterSendJob(printer.get(), settings.get(), OpenPages().get(), &job, nullptr), noErr)
        << text(PMGetLastErrorText());
    cups_job_t* waiting = nullptr;
    const int count = cupsGetJobs2(CUPS_HTTP_DEFAULT, &waiting, "tavro", 0, CUPS_WHICHJOBS_ACTIVE);
    ASSERT_EQ(count, 1);
    EXPECT_EQ(waiting[0].id, job);
    EXPECT_EQ(waiting[0].state, IPP_JSTATE_HELD);
    cupsFreeJobs(count, waiting);
    EXPECT_FALSE(std::filesystem::exists(server.printedBy("tavro")));

    // More than a day ahead, as on a day of 25 hours.
    const std::time_t midnight = std::time(nullptr) / 86400 * 86400;
    settings.setString(kPMJobHoldUntilTimeKey, "47:30");
    ASSERT_EQ(PMPrinterSendJob(printer.get(), settings.get(), OpenPages().get(), &job, nullptr), noErr);
    server.stop(SIGTERM);
    const std::string kept = readFile(folder / "server/cache/job.cache");
    EXPECT_NE(kept.find("HoldUntil " + std::to_string(midnight + 47 * 3600 + 1800) + "\n"), std::string::npos) << kept;
}

TEST_F(Queues, SayWhyTheyCannotBeUsed) {
    server.admin("lpadmin -p raw -E -v file:/dev/null");
    const Printer raw(std::string("raw"));
    EXPECT_EQ(raw.status(), kPMUnusableDescription);
    EXPECT_TRUE(text(PMGetLastErrorText()).starts_with("raw: ")) << text(PMGetLastErrorText());
    for (const char* name : {"absent", "", "../admin", "a b"}) {
        const Printer printer{std::string(name)};
        EXPECT_EQ(printer.status(), kPMNoSuchPrinter) << name;
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder / "tmp"));

    const Printer printer(std::string("tavro"));
    ASSERT_EQ(printer.status(), noErr);
    const Ticket settings;
    SInt32 job = 0;
    server.admin("cupsreject tavro");
    EXPECT_NE(PMPrinterSendJob(printer.get(), settings.get(), OpenPages().get(), &job, nullptr), noErr);
    EXPECT_TRUE(text(PMGetLastErrorText()).starts_with("tavro: ")) << text(PMGetLastErrorText());
    EXPECT_EQ(job, 0);
    const Printer withoutQueue(kZR420);
    EXPECT_EQ(PMPrinterSendJob(withoutQueue.get(), settings.get(), OpenPages().get(), &job, nullptr), kPMNoSuchPrinter);
}

/// A server that misbehaves, before the real one.
class UnrulyServers : public Queues {
protected:
    using Manner = UnrulyServer::Manner;

    void SetUp() override {
        Queues::SetUp();
        serverPatience() = {1000, 1000, 1 << 22};
        useServer(unruly.address());
    }
    void TearDown() override {
        serverPatience() = {};
        PMServerSetPasswordProc(nullptr, nullptr);
        Queues::TearDown();
    }

    OSStatus print(const Printer& printer, const std::filesystem::path& document = kTenPages) {
        return PMPrinterSendJob(printer.get(), settings.get(), OpenPages(document).get(), &job, nullptr);
    }
    /// The numbers of the jobs that the real server has or had.
    std::string jobs() const {
        const auto [output, status] = run("CUPS_SERVER=" + server.address() + " lpstat -W all -o");
        return output;
    }

    UnrulyServer unruly{server.address()};
    Ticket settings;
    SInt32 job = 0;
};

TEST_F(UnrulyServers, HoldNobodyWhoAsksThem) {
    for (const Manner manner : {Manner::drips, Manner::answersForever}) {
        unruly.behave(IPP_OP_CUPS_GET_PRINTERS, manner);
        EXPECT_TRUE(queues(1000, kPMServerNotResponding).empty());
    }
    const std::pair<int, Manner> rows[] = {
        {UnrulyServer::kGet, Manner::cuts},
        {UnrulyServer::kGet, Manner::drips},
        {UnrulyServer::kGet, Manner::answersForever},
        {IPP_OP_GET_PRINTER_ATTRIBUTES, Manner::drops},
        {IPP_OP_GET_PRINTER_ATTRIBUTES, Manner::talksGarbage},
        {IPP_OP_GET_PRINTER_ATTRIBUTES, Manner::continues},
        {IPP_OP_GET_PRINTER_ATTRIBUTES, Manner::evades},
    };
    for (const auto& [operation, manner] : rows) {
        unruly.behave(operation, manner);
        EXPECT_NE(Printer(std::string("tavro")).status(), noErr) << operation << " " << int(manner);
        EXPECT_TRUE(text(PMGetLastErrorText()).starts_with("tavro: ")) << text(PMGetLastErrorText());
        unruly.behave(operation, Manner::obeys);
    }
}

TEST_F(UnrulyServers, GetAJobOnceOrLeaveNone) {
    const Printer printer(std::string("tavro"));
    ASSERT_EQ(printer.status(), noErr);
    const std::pair<int, Manner> rows[] = {
        {IPP_OP_CREATE_JOB, Manner::drops},    {IPP_OP_CREATE_JOB, Manner::talksGarbage},
        {IPP_OP_CREATE_JOB, Manner::drips},    {IPP_OP_CREATE_JOB, Manner::loses},
        {IPP_OP_SEND_DOCUMENT, Manner::drops}, {IPP_OP_SEND_DOCUMENT, Manner::isSilent},
        {IPP_OP_SEND_DOCUMENT, Manner::drips}, {IPP_OP_SEND_DOCUMENT, Manner::takesSlowly},
    };
    const auto large = folder.add("large.pdf", readFile(kTenPages) + std::string(16 << 20, '\n'));
    for (const auto& [operation, manner] : rows) {
        unruly.behave(operation, manner);
        EXPECT_EQ(print(printer, manner == Manner::takesSlowly ? large : kTenPages), kPMJobNotTaken)
            << operation << " " << int(manner);
        EXPECT_EQ(jobs(), "") << operation << " " << int(manner);
        unruly.behave(operation, Manner::obeys);
    }

    const int waiting = cupsCreateJob(CUPS_HTTP_DEFAULT, "tavro", "Another program's", 0, nullptr);
    unruly.behave(IPP_OP_CREATE_JOB, Manner::loses);
    EXPECT_EQ(print(printer), kPMJobNotTaken);
    unruly.behave(IPP_OP_CREATE_JOB, Manner::obeys);
    EXPECT_NE(jobs().find("tavro-" + std::to_string(waiting)), std::string::npos) << "waits for its document";
    cupsCancelJob2(CUPS_HTTP_DEFAULT, "tavro", waiting, 1);

    // The answer is lost, the job is not: nobody shall print it again.
    for (const Manner manner : {Manner::loses, Manner::cuts}) {
        unruly.behave(IPP_OP_SEND_DOCUMENT, manner);
        ASSERT_EQ(print(printer), noErr) << text(PMGetLastErrorText());
        EXPECT_TRUE(server.hasCompleted("tavro-" + std::to_string(job)));
    }
    EXPECT_EQ(countOf(jobs(), "tavro-"), 2U) << jobs();
    // Not even that can be asked.
    unruly.behave(IPP_OP_GET_JOB_ATTRIBUTES, Manner::drops);
    unruly.behave(IPP_OP_CANCEL_JOB, Manner::drops);
    EXPECT_EQ(print(printer), kPMJobNotTaken);
    EXPECT_TRUE(text(PMGetLastErrorText()).ends_with(": look at the queue before you print it again"))
        << text(PMGetLastErrorText());
}

TEST_F(UnrulyServers, AreToldThePasswordThatTheUserGives) {
    struct Answers {
        std::vector<std::string> passwords;
        std::string asked;
    } answers;
    const auto give = [](CFStringRef host, CFStringRef proposal, Boolean isAgain, CFStringRef* user,
                         CFStringRef* password, void* context) -> Boolean {
        auto& given = *static_cast<Answers*>(context);
        given.asked += text(host) + (isAgain ? " again\n" : "\n");
        EXPECT_FALSE(text(proposal).empty());
        if (given.passwords.empty()) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1500));  // longer than any server may take
        *user = cf("ann").leak();
        *password = cf(given.passwords.front()).leak();
        given.passwords.erase(given.passwords.begin());
        return true;
    };
    PMServerSetPasswordProc(give, &answers);
    for (const int operation :
         {int{IPP_OP_GET_PRINTER_ATTRIBUTES}, int{IPP_OP_CREATE_JOB}, int{IPP_OP_SEND_DOCUMENT}}) {
        unruly.behave(operation, Manner::wantsPassword);
    }
    EXPECT_EQ(Printer(std::string("tavro")).status(), kPMServerNotResponding);
    EXPECT_EQ(text(PMGetLastErrorText()),
              "tavro: the print server " + unruly.address() + " wants a user name and a password, and was given none");
    answers = {{"wrong", "secret"}, {}};
    const Printer printer(std::string("tavro"));
    ASSERT_EQ(printer.status(), noErr) << text(PMGetLastErrorText());
    EXPECT_EQ(answers.asked, unruly.address() + "\n" + unruly.address() + " again\n");
    ASSERT_EQ(print(printer), noErr) << text(PMGetLastErrorText());  // without another question
    EXPECT_TRUE(server.hasCompleted("tavro-1"));
    EXPECT_EQ(answers.asked, unruly.address() + "\n" + unruly.address() + " again\n");
}

TEST(Servers, ThatDoNotAnswerAreGivenUp) {
    std::string closed = Listener().address();
    useServer(closed);
    EXPECT_TRUE(queues(3000, kPMServerNotResponding).empty());
    const Printer refused(std::string("tavro"));
    EXPECT_EQ(refused.status(), kPMServerNotResponding);
    EXPECT_TRUE(text(PMGetLastErrorText()).starts_with("tavro: ")) << text(PMGetLastErrorText());

    const Listener silent;  // takes connections and never says a word
    useServer(silent.address());
    EXPECT_TRUE(queues(200, kPMServerNotResponding).empty());
    const Printer unanswered(std::string("tavro"));
    EXPECT_EQ(unanswered.status(), kPMServerNotResponding);
}

}  // namespace
