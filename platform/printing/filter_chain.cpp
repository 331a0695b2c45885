#include "platform/printing/filter_chain.h"

#include "platform/files/descriptor.h"
#include "platform/files/temporary_files.h"
#include "platform/foundation/message.h"
#include "platform/printing/PMPrinter.h"
#include "platform/printing/interruption.h"
#include "platform/printing/last_error.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Pipe {
    Descriptor read;
    Descriptor write;
};

bool makePipe(Pipe* made) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return false;
    }
    *made = {Descriptor(ends[0]), Descriptor(ends[1])};
    return true;
}

std::string setting(const char* name, const char* fallback) {
    const char* const value = std::getenv(name);
    return value == nullptr || *value == '\0' ? fallback : value;
}

// Where a filter finds the open files that have no path.
constexpr int kPPDDescriptor = STDERR_FILENO + 1;
constexpr int kDocumentDescriptor = STDERR_FILENO + 2;
constexpr int kFirstOther = STDERR_FILENO + 3;

std::string pathFor(const FilterFile& file, int descriptor) {
    return file.descriptor < 0 ? file.path : "/proc/self/fd/" + std::to_string(descriptor);
}

/// The filter's environment, as the scheduler makes it: nothing of the application's own but where things are.
std::vector<std::string> filterEnvironment(const FilterJob& job, const std::string& workFolder) {
    std::vector<std::string> made{"PATH=" + serverPrograms() + "/filter:/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin",
                                  "CUPS_SERVERBIN=" + serverPrograms(),
                                  "HOME=" + setting("HOME", "/"),
                                  "TMPDIR=" + workFolder,
                                  "LANG=en_US.UTF-8",
                                  "CHARSET=utf-8",
                                  "PRINTER=" + job.printerName,
                                  "CONTENT_TYPE=" + job.contentType,
                                  "FINAL_CONTENT_TYPE=" + job.finalContentType};
    if (const std::string ppd = pathFor(job.ppd, kPPDDescriptor); !ppd.empty()) {
        made.push_back("PPD=" + ppd);
    }
    return made;
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

/// A filter's messages: lines that begin with their level ("DEBUG: ", "ERROR: "), or what a library wrote without one.
class Messages {
public:
    void add(std::string_view bytes) {
        for (const char c : bytes) {
            if (c == '\n') {
                endLine();
            } else if (line_.size() < kLongestLine) {
                line_ += c;
            }
        }
    }

    /// The last error, else the last line without a level.
    [[nodiscard]] const std::string& reason() const { return lastError_.empty() ? lastPlainLine_ : lastError_; }

private:
    static constexpr std::size_t kLongestLine = 1000;
    static constexpr std::string_view kErrorLevel = "ERROR: ";

    void endLine() {
        const std::size_t level = line_.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ");
        if (line_.starts_with(kErrorLevel)) {
            lastError_ = line_.substr(kErrorLevel.size());
        } else if (level == 0 || (level != std::string::npos && line_[level] != ':')) {
            lastPlainLine_ = line_;
        }
        line_.clear();
    }

    std::string line_;
    std::string lastError_;
    std::string lastPlainLine_;
};

struct Filter {
    std::string program;
    pid_t process = -1;
    Descriptor messagePipe;
    Messages messages;
    bool hadNoRoom = false;
    int status = 0;
};

/// Whether there is no room for what filters put there. It is looked at when one says something, because it takes away
/// what it has there before it ends.
bool isFull(const std::string& folder) {
    constexpr std::uintmax_t kRoomForOneBuffer = 65536;
    std::error_code error;
    const std::filesystem::space_info space = std::filesystem::space(folder, error);
    return !error && space.available < kRoomForOneBuffer;
}

/// What a filter is started with.
class FileActions {
public:
    FileActions() { posix_spawn_file_actions_init(&actions_); }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    void pass(int file, int number) { posix_spawn_file_actions_adddup2(&actions_, file, number); }
    /// An open file that may have one of the numbers itself.
    void pass(const FilterFile& file, int number) {
        if (file.descriptor >= 0) {
            moved_.emplace_back(fcntl(file.descriptor, F_DUPFD_CLOEXEC, kFirstOther));
            pass(moved_.back().get(), number);
        } else {
            posix_spawn_file_actions_addclose(&actions_, number);
        }
    }
    void closeOthers() { posix_spawn_file_actions_addclosefrom_np(&actions_, kFirstOther); }
    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_;
    std::vector<Descriptor> moved_;
};

/// 0 or an error number.
int startFilter(const std::string& program, const FilterJob& job, const std::string& workFolder, bool readsFile,
                int input, int output, Filter* filter) {
    Pipe messages;
    if (!makePipe(&messages)) {
        return errno;
    }
    std::vector<std::string> arguments{job.printerName, "1", job.user, job.title, std::to_string(job.copies),
                                       job.options};
    if (readsFile) {
        arguments.push_back(pathFor(job.document, kDocumentDescriptor));
    }
    std::vector<std::string> environment = filterEnvironment(job, workFolder);

    FileActions actions;
    actions.pass(input, STDIN_FILENO);
    actions.pass(output, STDOUT_FILENO);
    actions.pass(messages.write.get(), STDERR_FILENO);
    actions.pass(job.ppd, kPPDDescriptor);
    actions.pass(readsFile ? job.document : FilterFile{}, kDocumentDescriptor);
    actions.closeOthers();
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);  // an application may ignore it; a filter must end by it
    sigaddset(&defaults, SIGXFSZ);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    // A group of its own (0), with all that it starts.
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);

    filter->program = program;
    const int error = posix_spawn(&filter->process, filterProgram(program).c_str(), actions.get(), &attributes,
                                  pointers(arguments).data(), pointers(environment).data());
    posix_spawnattr_destroy(&attributes);
    filter->messagePipe = std::move(messages.read);
    return error;
}

/// Signals the filters, and what they have started.
void signalAll(const std::vector<Filter>& filters, int signal) {
    for (const Filter& filter : filters) {
        kill(-filter.process, signal);
    }
}

/// Reads what is there. False at the end.
template <typename Take>
bool readSome(int pipe, Take take) {
    std::array<char, 65536> bytes;
    const ssize_t count = read(pipe, bytes.data(), bytes.size());
    if (count > 0) {
        take(std::string_view(bytes.data(), static_cast<std::size_t>(count)));
    }
    return count > 0 || (count < 0 && errno == EINTR);
}

/// Takes the last filter's output, and the messages of all, until every filter has closed its ends. False when
/// `output` takes no more, or the program is to end: the filters are stopped.
bool readAll(std::vector<Filter>& filters, Descriptor result, const std::string& workFolder, ByteSink& output) {
    constexpr int kMillisecondsToEnd = 5000;
    std::vector<pollfd> waiting{{interruptionDescriptor(), POLLIN, 0}, {result.get(), POLLIN, 0}};
    constexpr std::size_t kFirstMessages = 2;
    for (const Filter& filter : filters) {
        waiting.push_back({filter.messagePipe.get(), POLLIN, 0});
    }
    bool isWanted = true;
    const auto giveUp = [&] {
        isWanted = false;
        waiting[0].fd = waiting[1].fd = -1;
        result = Descriptor();
        signalAll(filters, SIGTERM);
    };
    while (std::ranges::any_of(waiting.begin() + 1, waiting.end(), [](const pollfd& each) { return each.fd >= 0; })) {
        const int count = poll(waiting.data(), waiting.size(), isWanted ? -1 : kMillisecondsToEnd);
        if (count == 0) {
            signalAll(filters, SIGKILL);
        }
        if (count > 0 && waiting[0].fd >= 0 && waiting[0].revents != 0) {
            giveUp();
        }
        for (std::size_t i = 1; count > 0 && i < waiting.size(); ++i) {
            if (waiting[i].fd < 0 || waiting[i].revents == 0) {
                continue;
            }
            const bool goesOn = readSome(waiting[i].fd, [&](std::string_view bytes) {
                if (i >= kFirstMessages) {
                    filters[i - kFirstMessages].messages.add(bytes);
                    filters[i - kFirstMessages].hadNoRoom |= isFull(workFolder);
                } else if (!output.write(bytes)) {
                    giveUp();
                }
            });
            waiting[i].fd = goesOn ? waiting[i].fd : -1;
        }
    }
    return isWanted;
}

/// Whether a filter has failed by itself, and not because the next one read no more.
bool isCause(const Filter& filter) {
    return filter.status != 0 && !(WIFSIGNALED(filter.status) && WTERMSIG(filter.status) == SIGPIPE);
}

std::string failureOf(const Filter& filter, const FilterJob& job) {
    if (filter.hadNoRoom) {
        return filter.program + ": " + messageText("no room is left in %1", {temporaryFolder()});
    }
    if (!filter.messages.reason().empty()) {
        return filter.program + ": " + filter.messages.reason();
    }
    if (WIFSIGNALED(filter.status)) {
        const int signal = WTERMSIG(filter.status);
        return job.ppdName.empty()
                   ? messageText("%1 was stopped by signal %2; it read this document", {filter.program, signal})
                   : messageText("%1 was stopped by signal %2; it read this document and the PPD %3",
                                 {filter.program, signal, job.ppdName});
    }
    return messageText("%1 ended with status %2", {filter.program, WEXITSTATUS(filter.status)});
}

/// Starts the filters, each reading what the one before writes; the last one's output is left in *input. 0, or the
/// error number of the first that cannot be started; those before it end when nobody reads.
int startFilters(std::span<const std::string> programs, const FilterJob& job, const std::string& workFolder,
                 std::vector<Filter>* filters, Descriptor* input) {
    *input = Descriptor(open("/dev/null", O_RDONLY | O_CLOEXEC));
    for (const std::string& program : programs) {
        Pipe next;
        Filter filter;
        int error = makePipe(&next) ? 0 : errno;
        if (error == 0) {
            error = startFilter(program, job, workFolder, filters->empty(), input->get(), next.write.get(), &filter);
        }
        if (error != 0) {
            *input = Descriptor();
            return error;
        }
        filters->push_back(std::move(filter));
        *input = std::move(next.read);
    }
    return 0;
}

}  // namespace

std::string serverPrograms() {
    return setting("CUPS_SERVERBIN", "/usr/lib/cups");
}

std::string filterProgram(const std::string& filter) {
    return filter.starts_with('/') ? filter : serverPrograms() + "/filter/" + filter;
}

OSStatus runFilters(std::span<const std::string> programs, const FilterJob& job, ByteSink& output,
                    std::string* reason) {
    const WorkFolder workFolder;
    if (workFolder.error() != 0) {
        *reason = temporaryFolder() + ": " + systemMessage(workFolder.error());
        return kPMCannotWriteOutput;
    }
    std::vector<Filter> filters;
    Descriptor result;
    const int error = startFilters(programs, job, workFolder.path(), &filters, &result);
    const bool isTaken = readAll(filters, std::move(result), workFolder.path(), output);
    for (Filter& filter : filters) {
        while (waitpid(filter.process, &filter.status, 0) < 0 && errno == EINTR) {
        }
    }
    if (error != 0) {
        *reason = programs[filters.size()] + ": " + systemMessage(error);
        return kPMFilterFailed;
    }
    if (!isTaken) {
        return kPMCannotWriteOutput;
    }
    auto failed = std::ranges::find_if(filters, isCause);
    if (failed == filters.end()) {
        failed = std::ranges::find_if(filters, [](const Filter& filter) { return filter.status != 0; });
    }
    if (failed != filters.end()) {
        *reason = failureOf(*failed, job);
        return kPMFilterFailed;
    }
    return noErr;
}
