// Documents of all kinds, as people give them to the program.
#include "tests/host/program/program_fixture.h"
#include "tests/support/print_server.h"

#include <pty.h>
#include <sys/ioctl.h>

namespace fs = std::filesystem;

namespace {

class Documents : public ProgramTest {
protected:
    Documents() {
        fs::create_directory(temporary);
        fs::create_directories(folder / "server/filter");
    }

    Run print(const Words& documents, const Words& environment = {}, const std::string& way = "--print") const {
        Words words{"--ppd", kZR420, way, "--pdf-out", folder / "out.pdf"};
        words.insert(words.end(), documents.begin(), documents.end());
        return run(words, environment);
    }
    int pages() const { return pagesOf(folder / "out.pdf"); }
    static int pagesOf(const std::string& path) {
        std::FILE* const pipe = popen(("qpdf --show-npages '" + path + "'").c_str(), "r");
        int count = 0;
        EXPECT_EQ(std::fscanf(pipe, "%d", &count), 1);
        pclose(pipe);
        return count;
    }

    /// The ten pages behind a password.
    std::string locked() const {
        const std::string path = folder / "locked.pdf";
        EXPECT_EQ(std::system(("qpdf --encrypt 's3cret' owner 256 -- '" + kTenPages + "' '" + path + "'").c_str()), 0);
        return path;
    }

    /// Prints on a terminal of its own, where somebody types these passwords.
    Run printTyping(const Words& passwords) const {
        int terminal = -1;
        Run done{};
        const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
        if (child == 0) {
            execl(kProgram.c_str(), kProgram.c_str(), "--ppd", kZR420.c_str(), "--print", "--pdf-out",
                  (folder / "out.pdf").c_str(), locked_.c_str(), nullptr);
            _exit(127);
        }
        std::size_t typed = 0;
        char bytes[4096];
        for (ssize_t count = 0; (count = read(terminal, bytes, sizeof bytes)) > 0;) {
            done.output.append(bytes, static_cast<std::size_t>(count));
            // It is asked, and what is typed is not shown any more.
            if (done.output.ends_with(": ") && typed < passwords.size()) {
                const std::string line = passwords[typed++] + "\n";
                EXPECT_EQ(write(terminal, line.data(), line.size()), static_cast<ssize_t>(line.size()));
            }
        }
        int status = 0;
        waitpid(child, &status, 0);
        close(terminal);
        done.status = WEXITSTATUS(status);
        return done;
    }

    const std::string temporary = folder / "tmp";
    std::string locked_ = locked();
};

}  // namespace

TEST_F(Documents, AreWhatTheFiltersMakeThem) {
    const std::string text = add("notes.txt", "one\n\ftwo\n\fthree\n");
    EXPECT_EQ(print({text}).errors, "");
    EXPECT_EQ(pages(), 3);
    const Run film = print({add("holiday.mp4", std::string("\0\0\0\x18"
                                                           "ftypmp42\0\0\0\0mp42isom",
                                                           24))});
    EXPECT_EQ(film.status, 4);
    EXPECT_EQ(film.errors, "tavro-print: " + (folder / "holiday.mp4") + ": is a film, and cannot be printed\n");

    // What comes through standard input is of any kind.
    for (const auto& [path, count] : {std::pair{text, 3}, {kTenPages, 10}}) {
        const Run piped = start("/bin/sh", {"-c", "cat '" + path + "' | " + kProgram + " --print --ppd " + kZR420 +
                                                      " --pdf-out " + (folder / "out.pdf") + " -"});
        EXPECT_EQ(piped.errors, "");
        EXPECT_EQ(pages(), count);
    }
    const Run empty = start("/bin/sh", {"-c", kProgram + " --print --ppd " + kZR420 + " - </dev/null"});
    EXPECT_EQ(empty.errors, "tavro-print: Standard input: is empty, and cannot be printed\n");
}

TEST_F(Documents, EndTheirFiltersWithTheProgram) {
    const std::string started = folder / "started";
    fs::permissions(add("server/filter/texttopdf", "#!/bin/sh\necho $$ >'" + started + "'\nsleep 100 & wait\n"),
                    fs::perms(0700));
    const Words environment{"TMPDIR=" + temporary, "CUPS_SERVERBIN=" + (folder / "server"),
                            "QT_QPA_PLATFORM=offscreen"};
    const std::string text = add("notes.txt", "one\n");
    // Without a window, and while the dialog is open.
    for (const char* way : {"--print", "--ticket-out=/dev/null"}) {
        for (const int signal : {SIGTERM, SIGKILL}) {
            fs::remove(started);
            int filter = 0;
            whileRunning = [&](pid_t program) {
                EXPECT_TRUE(eventually([&] { return std::ifstream(started) >> filter && filter > 0; }));
                kill(program, signal);
            };
            EXPECT_EQ(print({text}, environment, way).status, -signal);
            EXPECT_TRUE(eventually([&] { return kill(-filter, 0) != 0; })) << way << " " << signal;
            EXPECT_TRUE(eventually([&] { return fs::is_empty(temporary); })) << way << " " << signal;
        }
    }
}

TEST_F(Documents, BehindAPasswordAreAskedFor) {
    // Without a terminal there is nobody to ask.
    const Run alone = start("/usr/bin/setsid", {"--wait", kProgram, "--ppd", kZR420, "--print", locked_});
    EXPECT_EQ(alone.status, 4);
    EXPECT_EQ(alone.errors,
              "tavro-print: " + locked_ + ": is protected by a password, and there is no terminal to ask for it\n");

    const Run second = printTyping({"wrong", "s3cret"});
    EXPECT_EQ(second.status, 0) << second.output;
    EXPECT_EQ(second.output.find("s3cret"), std::string::npos);
    EXPECT_EQ(pages(), 10);
    const Run none = printTyping({"a", "b", "c", "s3cret"});
    EXPECT_EQ(none.status, 4);
    EXPECT_NE(none.output.find("is protected by another password"), std::string::npos) << none.output;
}

TEST_F(Documents, AreAJobEach) {
    PrintServer server(folder.path() / "server-of-its-own");
    server.addQueue("tavro", kZR420);
    const Words environment{"CUPS_SERVER=" + server.address()};
    const std::string text = add("notes.txt", "one\n");
    const std::string broken = add("broken.pdf", "no pdf");
    const Words several{"--printer", "tavro", text, broken, kTenPages};
    Words words = several;
    words.emplace_back("--print");
    const Run done = run(words, environment);
    EXPECT_EQ(done.status, 4);
    EXPECT_EQ(std::ranges::count(done.errors, '\n'), 1) << done.errors;
    EXPECT_NE(done.errors.find(broken), std::string::npos);
    EXPECT_EQ(done.output, "tavro-1\ntavro-2\n");

    // Nothing is printed where one of them is not there.
    words.emplace_back(folder / "none.pdf");
    const Run missing = run(words, environment);
    EXPECT_EQ(missing.status, 4);
    EXPECT_EQ(missing.output, "");

    words = several;
    words.insert(words.end(), {"--script", add("script",
                                               "expect Host:1 hidden\nexpect Host:3 items 3\n"
                                               "expect Host:2 text \"1 page; 3 documents will be printed\"\n"
                                               "choose Host:3 \"ten-pages.pdf\"\n"
                                               "expect Host:2 text \"10 pages; 3 documents will be printed\"\n"
                                               "expect Host:88 text \"10 pages on 10 sheets\"\nok\n")});
    const Run dialog = run(words, environment);
    EXPECT_EQ(dialog.status, 5) << dialog.errors;
    EXPECT_NE(dialog.output.find("tavro-3\ntavro-4\n"), std::string::npos) << dialog.output;
    EXPECT_NE(dialog.errors.find(broken), std::string::npos) << dialog.errors;
    const std::string jobs = server.admin("lpstat -W all -o");
    EXPECT_NE(jobs.find("tavro-4"), std::string::npos) << jobs;
}
