// Jobs whose making ends before its time: what is left of them, and what is said.
#include "tests/host/program/program_fixture.h"
#include "tests/support/print_server.h"
#include "tests/support/small_disk.h"

#include <sys/resource.h>

namespace fs = std::filesystem;

namespace {

class Endings : public ProgramTest {
protected:
    Endings() {
        fs::create_directories(folder / "cups/filter");
        fs::create_directory(temporary);
        fs::create_directory(jobs);
        fs::create_directory(folder / "run");
        fs::permissions(folder / "run", fs::perms::owner_all);
    }

    /// A secure print job, into a file unless it is said otherwise.
    Run print(const Words& environment = {}, const Words& how = {}) const {
        const std::string ticket =
            add("ticket.plist",
                "<plist version=\"1.0\"><dict><key>PMPrintSettingsTicket</key><dict><key>PPDDict</key><dict>"
                "<key>JCLPasscode</key><string>Custom.8642</string></dict></dict></dict></plist>");
        Words arguments{"--print", "--ticket-in", ticket, kTenPages};
        const Words& more = how.empty() ? Words{"--ppd", kZR420, "--job-out", jobs + "/job.ps"} : how;
        arguments.insert(arguments.end(), more.begin(), more.end());
        Words variables{"TMPDIR=" + temporary, "XDG_RUNTIME_DIR=" + (folder / "run")};
        variables.insert(variables.end(), environment.begin(), environment.end());
        return run(arguments, variables);
    }
    static bool isEmpty(const fs::path& place) { return fs::is_empty(place); }

    const std::string temporary = folder / "tmp";
    const std::string jobs = folder / "jobs";
};

/// With a filter that keeps something in the folder for temporary files and does not end.
class Interruptions : public Endings {
protected:
    Interruptions() {
        for (const char* name : {"pdftops", "pstops", "pdftopdf"}) {
            fs::permissions(
                add((std::string("cups/filter/") + name).c_str(), "#!/bin/sh\necho $$ >$TMPDIR/8642\nexec sleep 30\n"),
                fs::perms(0700));
        }
    }
    Run printUntil(int signal) {
        whileRunning = [this, signal](pid_t program) {
            EXPECT_TRUE(eventually([this] { return !filterFile().empty(); }));
            kill(program, signal);
        };
        return print({"CUPS_SERVERBIN=" + (folder / "cups")});
    }
    /// What the filter has written.
    std::string filterFile() const {
        for (const auto& entry : fs::recursive_directory_iterator(temporary)) {
            if (entry.path().filename() == "8642") {
                return contentOf(entry.path());
            }
        }
        return {};
    }
};

}  // namespace

TEST_F(Endings, ByAFullDiskLeaveNoPartOfAJob) {
    const SmallDisk disk(jobs, 100 << 10);
    if (!disk.fault().empty()) {
        GTEST_SKIP() << "NO SMALL DISK CAN BE MADE HERE: " << disk.fault();
    }
    std::ofstream(jobs + "/job.ps") << "the old job";
    const Run done = print();
    EXPECT_EQ(done.status, 5);
    EXPECT_EQ(done.errors, "tavro-print: " + jobs + "/job.ps: No space left on device\n");
    EXPECT_EQ(contentOf(jobs + "/job.ps"), "the old job");
    EXPECT_EQ(std::distance(fs::directory_iterator(jobs), {}), 1);
    EXPECT_TRUE(isEmpty(temporary));
}

TEST_F(Endings, ByAFullFolderForTemporaryFilesSendNoPartOfAJob) {
    PrintServer server(folder.path() / "server");
    server.addQueue("tavro", kZR420);
    // There is no room for the pages on their way, and none for what a filter makes of them.
    for (const std::size_t room : {4 << 10, 20 << 10}) {
        const SmallDisk disk(temporary, room);
        if (!disk.fault().empty()) {
            GTEST_SKIP() << "NO SMALL DISK CAN BE MADE HERE: " << disk.fault();
        }
        for (const Words& how : {Words{}, Words{"--printer", "tavro"}}) {
            const Run done = print({"CUPS_SERVER=" + server.address()}, how);
            EXPECT_EQ(done.status, 5);
            EXPECT_NE(done.errors.find(temporary), std::string::npos) << done.errors;
            EXPECT_TRUE(isEmpty(temporary));
        }
    }
    EXPECT_TRUE(isEmpty(jobs));
    EXPECT_EQ(server.admin("lpstat -W all -o"), "");
}

TEST_F(Interruptions, TakeAllAwayThatWasBegun) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        EXPECT_EQ(printUntil(signal).status, -signal);
        EXPECT_TRUE(isEmpty(jobs)) << signal;
        EXPECT_TRUE(isEmpty(temporary)) << signal;
    }
    // Nobody can tidy up after a kill but the next one.
    EXPECT_EQ(printUntil(SIGKILL).status, -SIGKILL);
    EXPECT_TRUE(isEmpty(jobs));
    kill(std::stoi(filterFile()), SIGKILL);
    for (const auto& entry : fs::directory_iterator(temporary)) {
        fs::last_write_time(entry, fs::file_time_type::clock::now() - std::chrono::minutes(2));
    }
    whileRunning = nullptr;
    EXPECT_EQ(print().status, 0);
    EXPECT_TRUE(isEmpty(temporary));
}

TEST_F(Endings, EndTheLookAtADocument) {
    const std::string endless = add("endless.pdf", "%PDF-1.6\n");
    fs::resize_file(endless, std::uintmax_t{5} << 30);
    for (const int signal : {SIGINT, SIGKILL}) {
        std::string reader;
        whileRunning = [&](pid_t program) {
            const std::string process = "/proc/" + std::to_string(program);
            EXPECT_TRUE(eventually([&] {
                std::istringstream(contentOf(process + "/task/" + std::to_string(program) + "/children")) >> reader;
                return contentOf("/proc/" + reader + "/comm") == "tavro-look\n";
            }));
            kill(program, signal);
        };
        EXPECT_EQ(run({"--print", "--ppd", kZR420, "--job-out", jobs + "/job.ps", endless}).status, -signal);
        EXPECT_TRUE(eventually([&] { return contentOf("/proc/" + reader + "/cmdline").empty(); }));
    }
}

TEST_F(Interruptions, LeaveNoCoreFileWithAPasscode) {
    rlimit limit{};
    getrlimit(RLIMIT_CORE, &limit);
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_CORE, &limit);
    setenv("ASAN_OPTIONS", "handle_segv=0", 0);  // a sanitizer would take the signal for a fault of its own
    EXPECT_EQ(printUntil(SIGSEGV).status, -SIGSEGV);
    EXPECT_FALSE(hasLeftCore);
    kill(std::stoi(filterFile()), SIGKILL);
}
