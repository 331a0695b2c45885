// tavro-pages: the filter of a queue. It makes what the printer reads of a PDF or of PostScript.
//
// usage: tavro-pages JOB USER TITLE COPIES OPTIONS [FILE], as the print server starts filters
//
// A job that comes with settings (the option tavro-settings) is made by the driver, in a program of its own. Any other
// one takes the way that it would take without this filter, with nothing in between but this program, which waits: so
// that loads no library. It has the pages counted, which the server's filters leave to a printer's own, and tells them
// of copies that are not collated, which they forget.

#include "driver/queue/option_text.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr int kCopies = 4;
constexpr int kOptions = 5;  // the places of arguments
constexpr int kFile = 6;
constexpr std::size_t kMostOfPPD = std::size_t{16} << 20;

int fail(const std::string& reason) {
    std::fprintf(stderr, "ERROR: %s\n", reason.c_str());
    return EXIT_FAILURE;
}

std::string environmentText(const char* name, const char* fallback) {
    const char* const value = std::getenv(name);
    return value == nullptr || *value == '\0' ? fallback : value;
}

std::string filterProgram(const char* name) {
    return environmentText("CUPS_SERVERBIN", "/usr/lib/cups") + "/filter/" + name;
}

// ---- What comes in

/// The first bytes of a pipe, which stay in it.
std::string peekIntoPipe(int pipe) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return {};
    }
    std::array<char, 16> bytes{};
    const ssize_t count = tee(pipe, ends[1], bytes.size(), 0);  // waits for the first ones
    const ssize_t got = count > 0 ? read(ends[0], bytes.data(), bytes.size()) : 0;
    close(ends[0]);
    close(ends[1]);
    return {bytes.data(), static_cast<std::size_t>(got > 0 ? got : 0)};
}

std::string firstBytes(int input) {
    struct stat status {};
    if (fstat(input, &status) == 0 && S_ISFIFO(status.st_mode)) {
        return peekIntoPipe(input);
    }
    std::array<char, 16> bytes{};
    const ssize_t got = pread(input, bytes.data(), bytes.size(), 0);
    return {bytes.data(), static_cast<std::size_t>(got > 0 ? got : 0)};
}

/// The server says of which type the job is, and not what a filter before this one made of it.
bool isPostScript(std::string_view beginning) {
    if (beginning.starts_with('\x04')) {
        beginning.remove_prefix(1);
    }
    return beginning.starts_with("%!") || beginning.starts_with("\x1B%-12345X");
}

/// Whether the pages lie on their paper already: pictures come as such pages, whatever the options say.
bool areLaidOut() {
    const std::string type = environmentText("CONTENT_TYPE", "");
    const bool isPicture = type.starts_with("image/") && type != "image/urf" && type != "image/pwg-raster";
    return isPicture || type == "application/vnd.cups-pdf";
}

bool isUncollated(const std::string& options, int copies) {
    const auto is = [&](const char* name, std::string_view value) {
        const auto found = optionInText(options, name);
        return found && strcasecmp(found->c_str(), value.data()) == 0;
    };
    return copies > 1 &&
           (is("Collate", "false") || (!optionInText(options, "Collate") &&
                                       is("multiple-document-handling", "separate-documents-uncollated-copies")));
}

// ---- Who does it

std::array<pid_t, 2> filters{};  // that are under way

/// The server ends its filters, and not what they have started.
void passOn(int signal) {
    for (const pid_t filter : filters) {
        if (filter > 0) {
            kill(filter, signal);
        }
    }
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> made;
    made.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        made.push_back(text.data());
    }
    made.push_back(nullptr);
    return made;
}

/// The text without the lines that name filters.
std::string withoutFilters(const std::string& ppd) {
    std::string text;
    for (std::size_t at = 0; at < ppd.size();) {
        const std::size_t end = std::min(ppd.find('\n', at), ppd.size() - 1) + 1;
        const std::string_view line(ppd.data() + at, end - at);
        text.append(line.starts_with("*cupsFilter") ? std::string_view() : line);
        at = end;
    }
    return text;
}

/// A folder for what filters put down, which some of them leave behind when they are ended.
class WorkFolder {
public:
    WorkFolder() : path_(environmentText("TMPDIR", "/tmp") + "/tavro-pages-XXXXXX") {
        isThere_ = mkdtemp(path_.data()) != nullptr;  // 0700
    }
    ~WorkFolder() {
        std::error_code ignored;
        if (isThere_) {
            std::filesystem::remove_all(path_, ignored);
        }
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    [[nodiscard]] bool isThere() const { return isThere_; }
    [[nodiscard]] const std::string& path() const { return path_; }

private:
    std::string path_;
    bool isThere_;
};

/// The environment for the server's own filters, with a copy of the PPD in memory that names no filters: then they have
/// the pages counted. Copies that are not collated are what its last line says, because the filters take that out of
/// the options, and what a PPD chooses by default is chosen as well. Empty on failure.
std::vector<std::string> makeEnvironment(const WorkFolder& work, bool isUncollatedJob) {
    const int from = open(environmentText("PPD", "").c_str(), O_RDONLY | O_CLOEXEC);
    const int to = memfd_create("ppd", 0);  // stays open for the filters
    std::array<char, 65536> bytes;
    std::string ppd;
    ssize_t count = from < 0 ? -1 : 1;
    while (count > 0 && ppd.size() < kMostOfPPD) {
        count = read(from, bytes.data(), bytes.size());
        ppd.append(bytes.data(), static_cast<std::size_t>(count > 0 ? count : 0));
    }
    close(from);
    const std::string text = withoutFilters(ppd) + (isUncollatedJob ? "\n*DefaultCollate: False\n" : "");
    if (count != 0 || to < 0 || write(to, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        return {};
    }
    std::vector<std::string> environment{"PPD=/proc/self/fd/" + std::to_string(to), "TMPDIR=" + work.path()};
    for (char** each = environ; *each != nullptr; ++each) {
        if (!std::string_view(*each).starts_with("PPD=") && !std::string_view(*each).starts_with("TMPDIR=")) {
            environment.emplace_back(*each);
        }
    }
    return environment;
}

pid_t start(const std::string& program, std::vector<std::string> arguments, std::vector<std::string>& environment,
            int input, int output) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    pid_t process = -1;
    const int error = posix_spawn(&process, program.c_str(), &actions, &attributes, pointers(arguments).data(),
                                  pointers(environment).data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        fail(program + ": " + std::strerror(error));
    }
    return error == 0 ? process : -1;
}

/// Waits for all; whether they ended well.
bool endedWell() {
    bool isWell = true;
    for (pid_t& filter : filters) {
        int status = 0;
        while (filter > 0 && waitpid(filter, &status, 0) < 0 && errno == EINTR) {
        }
        isWell = isWell && filter >= 0 && status == 0;
        filter = 0;
    }
    return isWell;
}

/// Starts the filters of a job without settings. False when one cannot be started.
bool startFilters(std::vector<std::string> arguments, std::vector<std::string>& environment, bool isPostScriptJob) {
    if (isPostScriptJob || areLaidOut()) {
        filters[0] = start(filterProgram(isPostScriptJob ? "pstops" : "pdftops"), arguments, environment, STDIN_FILENO,
                           STDOUT_FILENO);
        return filters[0] > 0;
    }
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return false;
    }
    std::vector<std::string> forPages = arguments;
    forPages[kOptions] += " page-logging=off";  // the other one logs them
    filters[0] = start(filterProgram("pdftopdf"), forPages, environment, STDIN_FILENO, ends[1]);
    close(ends[1]);
    arguments.resize(kFile);  // it reads the pipe
    filters[1] = start(filterProgram("pdftops"), arguments, environment, ends[0], STDOUT_FILENO);
    close(ends[0]);
    return filters[0] > 0 && filters[1] > 0;
}

int makePlainJob(const std::vector<std::string>& arguments, bool isPostScriptJob) {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigprocmask(SIG_BLOCK, &signals, nullptr);  // until there is somebody to pass it on to
    struct sigaction action {};
    action.sa_handler = passOn;
    sigaction(SIGTERM, &action, nullptr);

    const WorkFolder work;
    if (!work.isThere()) {
        return fail(work.path() + ": " + std::strerror(errno));
    }
    std::vector<std::string> environment =
        makeEnvironment(work, isUncollated(arguments[kOptions], std::atoi(arguments[kCopies].c_str())));
    if (environment.empty()) {
        return fail("The printer's PPD cannot be read.");
    }
    const bool areStarted = startFilters(arguments, environment, isPostScriptJob);
    sigprocmask(SIG_UNBLOCK, &signals, nullptr);
    return endedWell() && areStarted ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// The driver's program, where it is installed or built.
std::string driverProgram() {
    std::array<char, PATH_MAX> self{};
    const ssize_t length = readlink("/proc/self/exe", self.data(), self.size());
    std::string path(self.data(), static_cast<std::size_t>(length > 0 ? length : 0));
    path.erase(path.rfind('/') + 1);
    for (const char* place : {"../lib/tavro-driver", TAVRO_LIBRARY_PLACE "/tavro-driver"}) {
        if (std::string program = path + place; access(program.c_str(), X_OK) == 0) {
            return program;
        }
    }
    return {};
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != kFile && argc != kFile + 1) {
        return fail("usage: tavro-pages JOB USER TITLE COPIES OPTIONS [FILE]");
    }
    std::vector<std::string> arguments(argv, argv + argc);
    arguments[kCopies] = std::to_string(std::clamp(std::atoi(argv[kCopies]), 1, kMostCopies));
    const std::string& options = arguments[kOptions];
    const auto settings = optionInText(options, "tavro-settings");
    if (settings && strcasecmp(settings->c_str(), "none") != 0) {
        const std::string program = driverProgram();
        execv(program.c_str(), argv);
        return fail("The job has settings of Tavro print features, and the program for these is missing.");
    }
    int input = STDIN_FILENO;
    if (argc > kFile) {
        input = open(argv[kFile], O_RDONLY | O_CLOEXEC);
        if (input < 0) {
            return fail(std::string(argv[kFile]) + ": " + std::strerror(errno));
        }
    }
    const bool isReadyPostScript = isPostScript(firstBytes(input));
    if (input != STDIN_FILENO) {
        close(input);
    }
    return makePlainJob(arguments, isReadyPostScript);
}
