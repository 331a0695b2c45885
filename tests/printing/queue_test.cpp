// Queues, on a print server that each test starts for itself.
#include "platform/printing/CompiledPPD.h"
#include "tests/printing/printing_fixture.h"

#include <cups/cups.h>
#include <gtest/gtest.h>

#include <csignal>
#include <ctime>
#include <thread>
#include <vector>

#include <arpa/inet.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// A listening socket on a free port of this machine.
class Listener {
public:
    Listener() {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        if (bind(socket_, reinterpret_cast<sockaddr*>(&address), length) == 0 && listen(socket_, 5) == 0) {
            getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &length);
            port_ = ntohs(address.sin_port);
        }
    }
    ~Listener() { close(socket_); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// All that the next connection sends; nothing when there is none for a while.
    [[nodiscard]] std::string receive() const {
        const timeval patience{20, 0};
        setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        const int connection = accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC);
        std::string received;
        char bytes[4096];
        for (ssize_t count = 0; (count = read(connection, bytes, sizeof bytes)) > 0;) {
            received.append(bytes, static_cast<std::size_t>(count));
        }
        close(connection);
        return received;
    }

    [[nodiscard]] std::string address() const { return "127.0.0.1:" + std::to_string(port_); }

private:
    int socket_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    int port_ = 0;
};

void useServer(const std::string& address) {
    setenv("CUPS_SERVER", address.c_str(), 1);  // for lpadmin and its kin
    cupsSetServer(address.c_str());             // the library reads the environment only once
}

std::vector<std::string> queues(UInt32 timeout = 3000) {
    CFArrayRef names = nullptr;
    EXPECT_EQ(PMServerCopyPrinterIDs(timeout, &names), noErr);
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
        std::string address = Listener().address();  // free again when the server takes it
        for (const char* name : {"root", "cache", "state", "spool", "spool/tmp", "tmp"}) {
            std::filesystem::create_directories(folder / name);
        }
        std::filesystem::permissions(folder / "", std::filesystem::perms(0755));  // the filters run as another user
        folder.add("cupsd.conf", "Listen " + address + R"(
Browsing Off
LogLevel debug
DefaultAuthType None
WebInterface No
<Location />
Order allow,deny
Allow all
</Location>
<Policy default>
<Limit All>
Order deny,allow
</Limit>
</Policy>
)");
        const auto place = [&](const std::string& key, const std::string& name) {
            return key + " " + (folder / name).string() + "\n";
        };
        folder.add("cups-files.conf", "FileDevice Yes\nSystemGroup root\nGroup nogroup\n" +
                                          place("ServerRoot", "root") + place("CacheDir", "cache") +
                                          place("StateDir", "state") + place("RequestRoot", "spool") +
                                          place("TempDir", "spool/tmp") + place("ErrorLog", "error_log") +
                                          place("AccessLog", "access_log") + place("PageLog", "page_log"));
        setenv("TMPDIR", (folder / "tmp").c_str(), 1);
        const std::string configuration = folder / "cupsd.conf";
        const std::string files = folder / "cups-files.conf";
        const char* const arguments[] = {"cupsd", "-f", "-c", configuration.c_str(), "-s", files.c_str(), nullptr};
        ASSERT_EQ(posix_spawn(&server, "/usr/sbin/cupsd", nullptr, nullptr, const_cast<char**>(arguments), environ), 0);
        useServer(address);
        ASSERT_TRUE(eventually([] { return run("lpstat -r").first.find("is running") != std::string::npos; }))
            << readFile(folder / "error_log");
        admin("-p tavro -E -v 'file:" + (folder / "out.prn").string() + "' -P '" + kZR420.string() + "'");
    }

    void TearDown() override {
        if (server > 0) {
            kill(server, SIGTERM);
            waitpid(server, nullptr, 0);
        }
        unsetenv("TMPDIR");
        std::filesystem::remove_all(home() / ".cups");
    }

    static void admin(const std::string& arguments) {
        const auto [output, status] = run("/usr/sbin/lpadmin " + arguments);
        ASSERT_EQ(status, 0) << output;
    }

    template <typename Condition>
    static bool eventually(Condition condition) {
        for (int i = 0; i < 1000; ++i) {
            if (condition()) {
                return true;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        return false;
    }

    TemporaryFolder folder;
    pid_t server = -1;
};

TEST_F(Queues, AreListedTheDefaultFirst) {
    admin("-p another -E -v file:/dev/null -P '" + kZR410.string() + "'");
    EXPECT_EQ(queues(), (std::vector<std::string>{"another", "tavro"}));
    admin("-d tavro");
    EXPECT_EQ(queues(), (std::vector<std::string>{"tavro", "another"}));
}

TEST_F(Queues, KeepTheirOwnConfiguration) {
    admin("-p tavro -o Option2=HCSS -o Option1=False -o Duplex=DuplexNoTumble");
    std::filesystem::create_directory(home() / ".cups");
    home().add(".cups/lpoptions", "Dest tavro Jog=EndOfSet Resolution=None PageSize=Custom.400x500\n");
    {
        const Printer printer(std::string("tavro"));
        ASSERT_EQ(printer.status(), noErr) << text(PMGetLastErrorText());
        EXPECT_EQ(text(PMPrinterGetName(printer.get())), "tavro");
        EXPECT_EQ(text(PMPrinterGetID(printer.get())), "tavro");
        EXPECT_EQ(text(PMPrinterGetMaker(printer.get())), "Tavro");
        EXPECT_GT(PMPrinterCountPapers(printer.get()), 10);

        const Ticket settings;
        ASSERT_EQ(PMPrinterWriteDefaultSettings(printer.get(), settings.get()), noErr);
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

TEST_F(Queues, PrintTheJobAsAFileWouldHaveIt) {
    const Printer printer(std::string("tavro"));
    const Ticket settings;
    const Ticket format;
    set(settings.ppd(), "StapleLocation", "1Staple");
    set(settings.ppd(), "JCLPrintQuality", "Enhanced");
    set(settings.ppd(), "Note", "two words 'quoted'");
    settings.setString(kPMPageRangeKey, "1-4");
    settings.setNumber(kPMCopiesKey, 2);
    settings.setString(kPMJobNameKey, "Minutes");
    SInt32 job = 0;
    ASSERT_EQ(PMPrinterPrintWithFile(printer.get(), settings.get(), format.get(), fileURL(kTenPages).get(), &job),
              noErr)
        << text(PMGetLastErrorText());
    EXPECT_GT(job, 0);
    const std::string completed = "tavro-" + std::to_string(job) + " ";
    ASSERT_TRUE(eventually([&] {
        return run("lpstat -W completed -o tavro").first.find(completed) != std::string::npos;
    })) << readFile(folder / "error_log");
    ASSERT_EQ(PMPrinterWritePostScriptToURL(printer.get(), settings.get(), format.get(), nullptr, nullptr,
                                            fileURL(kTenPages).get(), fileURL(folder / "file.ps").get()),
              noErr);
    for (const auto& path : {folder / "out.prn", folder / "file.ps"}) {
        const std::string sent = readFile(path);
        for (const char* line : {"%%BeginFeature: *StapleLocation 1Staple\n", "@PJL SET TRPRINTQUALITY=ENHANCED\n",
                                 "*NumCopies 2\n", "@PJL JOB NAME = \"Minutes\""}) {
            EXPECT_NE(sent.find(line), std::string::npos) << path << line;
        }
        EXPECT_EQ(countPages(path), 4U) << path;
    }
}

TEST_F(Queues, PrintWithTheUsersDefaultsFromEveryProgram) {
    std::filesystem::create_directory(home() / ".cups");
    home().add(".cups/lpoptions", "Dest elsewhere a=b\nDest tavro Jog=EndOfSet number-up=1\n");
    admin("-p tavro -o TREconomode=True");
    const Printer printer(std::string("tavro"));
    const Ticket settings;
    const Ticket format;
    ASSERT_EQ(PMPrinterWriteDefaultSettings(printer.get(), settings.get()), noErr);
    set(settings.ppd(), "StapleLocation", "1Staple");
    set(settings.ppd(), "JCLPrintQuality", "Enhanced");
    set(settings.ppd(), "Jog", "None");  // as the queue has it
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
    ASSERT_TRUE(eventually([] {
        return run("lpstat -W completed -o tavro").first.find("tavro-1 ") != std::string::npos;
    })) << readFile(folder / "error_log");
    const std::string sent = readFile(folder / "out.prn");
    for (const char* line : {"%%BeginFeature: *StapleLocation 1Staple\n", "@PJL SET TRPRINTQUALITY=ENHANCED\n",
                             "%%BeginFeature: *TREconomode True\n", "*NumCopies 2\n"}) {
        EXPECT_NE(sent.find(line), std::string::npos) << line;
    }
    EXPECT_EQ(countPages(folder / "out.prn"), 10U);

    // The next dialog begins with them, and back at the queue's own they are forgotten.
    const Ticket again;
    ASSERT_EQ(PMPrinterWriteDefaultSettings(Printer(std::string("tavro")).get(), again.get()), noErr);
    EXPECT_EQ(get(again.ppd(), "StapleLocation"), "1Staple");
    EXPECT_EQ(get(again.ppd(), "Jog"), "None");
    set(settings.ppd(), "StapleLocation", "None");
    set(settings.ppd(), "JCLPrintQuality", "Standard");
    settings.setNumber(kPMCopiesKey, 1);
    format.setNumber(kPMOrientationKey, 1);
    ASSERT_EQ(save(), noErr) << text(PMGetLastErrorText());
    EXPECT_EQ(readFile(file), "Dest elsewhere a=b\nDest tavro number-up=1\n");
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
    admin("-p tavro -v 'socket://" + device.address() + "/?snmp=false&waiteof=false'");
    const Printer printer(std::string("tavro"));
    const Ticket settings;
    const Ticket format;
    set(settings.ppd(), "Duplex", "DuplexTumble");
    set(settings.ppd(), "JCLPasscode", "None");
    settings.setString(kPMJobPasscodeKey, "8642864286");
    settings.setString(kPMPageRangeKey, "2-4");
    settings.setNumber(kPMCopiesKey, 2);
    settings.setString(kPMJobNameKey, "Minutes");
    SInt32 job = 0;
    ASSERT_EQ(PMPrinterPrintWithFile(printer.get(), settings.get(), format.get(), fileURL(kTenPages).get(), &job),
              noErr)
        << text(PMGetLastErrorText());
    const std::string sent = device.receive();
    for (const char* line :
         {"@PJL SET HOLDKEY=\"8642864286\"\n", "%%BeginFeature: *Duplex DuplexTumble\n", "*NumCopies 2\n"}) {
        EXPECT_NE(sent.find(line), std::string::npos) << line;
    }
    folder.add("job.ps", sent);
    EXPECT_EQ(countPages(folder / "job.ps"), 3U);
    const std::string log = readFile(folder / "error_log");  // with the command lines of the server's programs
    EXPECT_NE(log.find("argv[5]="), std::string::npos);
    EXPECT_EQ(log.find("8642"), std::string::npos);
}

TEST_F(Queues, HoldAJobUntilItsTime) {
    const Printer printer(std::string("tavro"));
    const Ticket settings;
    const std::time_t then = std::time(nullptr) + 2 * 3600;
    char time[8];
    std::strftime(time, sizeof time, "%H:%M", std::gmtime(&then));
    settings.setString(kPMJobHoldUntilTimeKey, time);
    SInt32 job = 0;
    ASSERT_EQ(PMPrinterPrintWithFile(printer.get(), settings.get(), settings.get(), fileURL(kTenPages).get(), &job),
              noErr)
        << text(PMGetLastErrorText());
    cups_job_t* waiting = nullptr;
    const int count = cupsGetJobs2(CUPS_HTTP_DEFAULT, &waiting, "tavro", 0, CUPS_WHICHJOBS_ACTIVE);
    ASSERT_EQ(count, 1);
    EXPECT_EQ(waiting[0].id, job);
    EXPECT_EQ(waiting[0].state, IPP_JSTATE_HELD);
    cupsFreeJobs(count, waiting);
    EXPECT_FALSE(std::filesystem::exists(folder / "out.prn"));
}

TEST_F(Queues, SayWhyTheyCannotBeUsed) {
    admin("-p raw -E -v file:/dev/null");
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
    ASSERT_EQ(run("/usr/sbin/cupsreject tavro").second, 0);
    EXPECT_NE(PMPrinterPrintWithFile(printer.get(), settings.get(), settings.get(), fileURL(kTenPages).get(), &job),
              noErr);
    EXPECT_TRUE(text(PMGetLastErrorText()).starts_with("tavro: ")) << text(PMGetLastErrorText());
    EXPECT_EQ(job, 0);
    const Printer withoutQueue(kZR420);
    EXPECT_EQ(
        PMPrinterPrintWithFile(withoutQueue.get(), settings.get(), settings.get(), fileURL(kTenPages).get(), &job),
        kPMNoSuchPrinter);
}

TEST(Servers, ThatDoNotAnswerAreGivenUp) {
    std::string closed = Listener().address();
    useServer(closed);
    EXPECT_TRUE(queues().empty());
    const Printer refused(std::string("tavro"));
    EXPECT_EQ(refused.status(), kPMServerNotResponding);
    EXPECT_TRUE(text(PMGetLastErrorText()).starts_with("tavro: ")) << text(PMGetLastErrorText());

    const Listener silent;  // takes connections and never says a word
    useServer(silent.address());
    EXPECT_TRUE(queues(200).empty());
    const Printer unanswered(std::string("tavro"));
    EXPECT_EQ(unanswered.status(), kPMServerNotResponding);
}

}  // namespace
