// How the program refuses: its exit status, and one line that names the file and the reason.
#include "tests/host/program/program_fixture.h"
#include "tests/support/places.h"

#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>

namespace fs = std::filesystem;

namespace {

class Refusals : public ProgramTest {
protected:
    void expectRefusal(const Run& run, int status, const std::string& file, const std::string& reason = {}) const {
        EXPECT_EQ(run.status, status) << run.errors;
        EXPECT_EQ(std::ranges::count(run.errors, '\n'), 1) << run.errors;
        EXPECT_NE(run.errors.find(file), std::string::npos) << run.errors;
        EXPECT_NE(run.errors.find(reason), std::string::npos) << run.errors;
        EXPECT_EQ(run.output, "");
    }

    /// A copy of what is staged, to be broken: the programs, the bundle and the plug-in.
    std::string copyStage() const {
        const fs::path copy = folder.path() / "stage";
        for (const char* part :
             {"bin/tavro-print", "lib/tavro-convert", "lib/tavro-look", "TavroPrint.bundle", "plugins"}) {
            fs::create_directories((copy / part).parent_path());
            fs::copy(stagePath(part), copy / part, fs::copy_options::recursive);
        }
        return copy;
    }

    Run runCopy(const std::string& stage) const {
        const std::string command = "LD_LIBRARY_PATH=" + stagePath("lib") + " exec '" + stage +
                                    "/bin/tavro-print' --ppd '" + kZR420 + "' --script '" + add("script", "ok\n") +
                                    "' --job-out '" + (folder / "job.ps") + "' '" + kTenPages + "'";
        return runShell(command);
    }

private:
    Run runShell(const std::string& command) const {
        const std::string redirected = "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM sh -c \"" + command +
                                       "\" >'" + (folder / "stdout") + "' 2>'" + (folder / "stderr") + "'";
        const int status = std::system(redirected.c_str());
        return {WEXITSTATUS(status), contentOf(folder / "stdout"), contentOf(folder / "stderr")};
    }
};

}  // namespace

TEST_F(Refusals, Usage) {
    expectRefusal(run({}), 2, "document");
    expectRefusal(run({"--fast", kTenPages}), 2, "--fast");
    expectRefusal(run({kTenPages, "--ppd"}), 2, "--ppd");
    expectRefusal(run({"--ppd=", kTenPages}), 2, "--ppd");
    expectRefusal(run({"--ppd", kZR420, "--printer", "office", kTenPages}), 2, "--printer");
    expectRefusal(run({"--script", "a", "--script", "b", kTenPages}), 2, "--script", "twice");
    expectRefusal(run({"--help=all"}), 2, "--help");
    expectRefusal(run({kTenPages, kTenPages, "--job-out", "job.ps"}), 2, "2 documents");
    expectRefusal(run({"--check", "-", kTenPages}), 2, "one document");
    expectRefusal(run({"--ppd", kZR420, kTenPages}), 2, "display");
    expectRefusal(run({"--print", "--", "--ppd", kTenPages}), 4, "--ppd", "No such file");
    expectRefusal(script("ok", {"--installed", "Option2"}), 2, "Option2");
    expectRefusal(script("ok", {"--installed", "Option2=Many"}), 2, "Option2=Many", "Tavro ZR420");
}

TEST_F(Refusals, InputThatIsMissing) {
    const std::string none = folder / "none";
    expectRefusal(run({"--ppd", kZR420, "--script", add("script", "ok"), none}), 4, none, "No such file");
    expectRefusal(script("ok", {"--ticket-in", none}), 4, none, "No such file");
    expectRefusal(run({"--ppd", none, "--script", add("script", "ok"), kTenPages}), 4, none, "No such file");
    expectRefusal(run({"--printer", "office", "--script", add("script", "ok"), kTenPages}), 4, "office", "server");
    expectRefusal(run({"--ppd", kZR420, "--script", none, kTenPages}), 4, none, "No such file");
}

TEST_F(Refusals, InputThatNeverComesOrNeverEnds) {
    const std::string pipe = folder / "pipe";
    mkfifo(pipe.c_str(), 0600);
    const std::string large = add("large", "");
    fs::resize_file(large, std::uintmax_t{5} << 30);
    const std::string ok = add("ok", "ok");
    for (const std::string& file : {pipe, std::string("/dev/zero")}) {
        expectRefusal(run({"--ppd", kZR420, "--script", ok, file}), 4, file, "is not a plain file");
        expectRefusal(run({"--ppd", file, "--script", ok, kTenPages}), 4, file, "is not a plain file");
        expectRefusal(run({"--ppd", kZR420, "--script", file, kTenPages}), 4, file, "is not a plain file");
        expectRefusal(script("ok", {"--ticket-in", file}), 4, file, "is not a plain file");
    }
    expectRefusal(run({"--ppd", large, "--script", ok, kTenPages}), 4, large, "is larger than 8 MB");
    expectRefusal(run({"--ppd", kZR420, "--script", large, kTenPages}), 4, large, "is larger than 64 MB");
    expectRefusal(script("ok", {"--ticket-in", large}), 4, large, "is larger than 64 MB");

    // The user's own files, which a dialog does without.
    fs::create_directories(folder / ".cups");
    fs::create_directories(folder / ".local/share/tavro/Tavro");
    fs::create_directories(folder / ".config/tavro");
    for (const char* kept : {".cups/lpoptions", ".local/share/tavro/contacts.vcf",
                             ".local/share/tavro/Tavro/com.tavro.printing.watermarks.plist",
                             ".config/tavro/com.tavro.print.dialog.plist"}) {
        ASSERT_EQ(mkfifo((folder / kept).c_str(), 0600), 0);
    }
    const Run run = script("panel Watermark\nok", {"--job-out", folder / "job.ps"});
    EXPECT_EQ(run.status, 0) << run.errors;
}

TEST_F(Refusals, InputThatIsBroken) {
    const std::string cut = add("cut.pdf", contentOf(kTenPages).substr(0, 300));
    expectRefusal(run({"--ppd", kZR420, "--script", add("script", "ok"), cut}), 4, cut, "damaged");
    expectRefusal(run({"--ppd", kTenPages, "--script", add("script", "ok"), kTenPages}), 4, kTenPages, "line 1");
    const std::string plist = add("broken.plist", "<plist version=\"1.0\"><dict>\n  <key>a</key><intger/></dict>");
    expectRefusal(script("ok", {"--ticket-in", plist}), 4, plist, "line 2, column");
    const std::string binary = add("binary.plist", std::string("bplist00\xD0\x08\0\0", 12));
    expectRefusal(script("ok", {"--ticket-in", binary}), 4, binary, "binary property list");
    const std::string list = add("list.plist", "<plist version=\"1.0\"><array/></plist>");
    expectRefusal(script("ok", {"--ticket-in", list}), 4, list, "dictionary");
}

TEST_F(Refusals, PartsThatAreMissingOrBroken) {
    expectRefusal(script("ok", {}, {"TAVRO_PLUGIN_DIR=" + folder.path().string()}), 4, "TavroFeatures.plugin");

    const std::string stage = copyStage();
    const std::string pageReader = stage + "/lib/tavro-look";
    fs::rename(pageReader, folder / "kept");
    expectRefusal(runCopy(stage), 4, kTenPages + ": cannot be looked at: ", "lib/tavro-look: No such file");
    fs::rename(folder / "kept", pageReader);
    const std::string nib = stage + "/TavroPrint.bundle/Contents/Resources/PrintDialog.nib";
    std::ofstream(nib + "/PrintDialog.window") << "TVNW";
    expectRefusal(runCopy(stage), 4, "PrintDialog.window", "no window of this version");
    fs::remove_all(nib);
    expectRefusal(runCopy(stage), 4, "TavroPrint.bundle", "nib");
    std::ofstream(stage + "/plugins/TavroFeatures.plugin/Contents/Linux/TavroFeatures") << "no library";
    expectRefusal(runCopy(stage), 4, "TavroFeatures");
    fs::remove_all(stage + "/TavroPrint.bundle");
    expectRefusal(runCopy(stage), 4, "TavroPrint.bundle");
    EXPECT_FALSE(fs::exists(folder / "job.ps"));
}

TEST_F(Refusals, ScriptsThatCannotBeReadTellEachLine) {
    const Run run = script("clik Tshl:16\nok\n  set Tshl:16 x\n", {"--job-out", folder / "job.ps"});
    EXPECT_EQ(run.status, 3);
    const std::string file = folder / "script";
    EXPECT_EQ(run.errors,
              file + ":1: column 1: there is no such action\n" + file + ":3: column 15: a value is a whole number\n");
    EXPECT_FALSE(fs::exists(folder / "job.ps"));
}

TEST_F(Refusals, OutputThatNobodyGets) {
    const auto shell = [&](const std::string& command) { return start("/bin/sh", {"-c", command}); };
    expectRefusal(shell(kProgram + " --help >/dev/full"), 5, "standard output", "No space left");
    expectRefusal(shell(kProgram + " --version >&-"), 5, "standard output");

    // While the program waits for a filter, a file has none of the streams' numbers.
    fs::create_directories(folder / "filter");
    const std::string started = folder / "started";
    fs::permissions(add("filter/pdftopdf", "#!/bin/sh\n: >" + started + "\nexec sleep 30\n"), fs::perms(0700));
    fs::permissions(add("filter/pdftops", "#!/bin/sh\n"), fs::perms(0700));
    const Run closed =
        shell("CUPS_SERVERBIN=" + folder.path().string() + " " + kProgram + " --print --ppd " + kZR420 + " --job-out " +
              (folder / "job.ps") + " " + kTenPages + " <&- >&- 2>&- & until [ -e " + started +
              " ]; do sleep 0.05; done; " + "readlink /proc/$!/fd/0 /proc/$!/fd/1 /proc/$!/fd/2; kill $!; wait $!");
    // A process that holds secrets lets only root see what it has open.
    EXPECT_EQ(closed.output, geteuid() == 0 ? "/dev/null\n/dev/null\n/dev/null\n" : "") << closed.errors;
    EXPECT_EQ(closed.status, 128 + SIGTERM);
}

// What reads standard error must not meet a window; a user at a desktop must.
TEST_F(Refusals, AreShownInAWindowOnlyWhenADesktopHasStartedTheProgram) {
    const std::string broken = add("broken.pdf", "no pdf");
    const Words arguments{"--ppd", kZR420, broken};
    const Words display{"QT_QPA_PLATFORM=offscreen"};
    const Words desktop{"QT_QPA_PLATFORM=offscreen", "XDG_ACTIVATION_TOKEN=1"};
    expectRefusal(run(arguments, display), 4, broken);
    for (const Words& alone : {Words{"--print"}, Words{"--check"}, Words{"--list-controls"}}) {
        Words words = alone;
        words.insert(words.end(), arguments.begin(), arguments.end());
        expectRefusal(run(words, desktop), 4, broken);
    }
    Words waiting{"--signal=KILL", "3", kProgram};
    waiting.insert(waiting.end(), arguments.begin(), arguments.end());
    EXPECT_EQ(start("/usr/bin/timeout", waiting, desktop).status, -9) << "nobody has answered the notice";
}
