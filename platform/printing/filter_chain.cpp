#include "platform/printing/filter_chain.h"

#include "platform/printing/last_error.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string_view>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// An open descriptor that closes itself.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() {
        if (number_ >= 0) {
            close(number_);
        }
    }
    [[nodiscard]] int get() const { return number_; }

private:
    int number_ = -1;
};

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

/// The filter's environment, as the scheduler makes it: nothing of the application's own but where things are.
std::vector<std::string> filterEnvironment(const FilterJob& job, const FilterStep& step, const std::string& serverBin) {
    return {"PATH=" + serverBin + "/filter:/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin",
            "CUPS_SERVERBIN=" + serverBin,
            "HOME=" + setting("HOME", "/"),
            "TMPDIR=" + setting("TMPDIR", "/tmp"),
            "LANG=en_US.UTF-8",
            "CHARSET=utf-8",
            "PRINTER=" + job.printerName,
            "PPD=" + job.ppdPath,
            std::string("CONTENT_TYPE=") + step.contentType,
            "FINAL_CONTENT_TYPE=" + job.finalContentType};
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
    const char* program = nullptr;
    pid_t process = -1;
    Descriptor messagePipe;
    Messages messages;
    int status = 0;
};

/// 0 or an error number.
int startFilter(const std::string& serverBin, const FilterStep& step, const FilterJob& job, bool readsFile, int input,
                int output, Filter* filter) {
    Pipe messages;
    if (!makePipe(&messages)) {
        return errno;
    }
    std::vector<std::string> arguments{job.printerName, "1", job.user, job.title, std::to_string(job.copies),
                                       job.options};
    if (readsFile) {
        arguments.push_back(job.document);
    }
    std::vector<std::string> environment = filterEnvironment(job, step, serverBin);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, messages.write.get(), STDERR_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);  // an application may ignore it; a filter must end by it
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);

    filter->program = step.program;
    const std::string path = serverBin + "/filter/" + step.program;
    const int error = posix_spawn(&filter->process, path.c_str(), &actions, &attributes, pointers(arguments).data(),
                                  pointers(environment).data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    filter->messagePipe = std::move(messages.read);
    return error;
}

/// Collects the messages until every filter has closed its end.
void readMessages(std::vector<Filter>& filters) {
    std::vector<pollfd> waiting;
    waiting.reserve(filters.size());
    for (const Filter& filter : filters) {
        waiting.push_back({filter.messagePipe.get(), POLLIN, 0});
    }
    std::size_t open = waiting.size();
    while (open > 0) {
        if (poll(waiting.data(), waiting.size(), -1) < 0 && errno != EINTR) {
            return;
        }
        for (std::size_t i = 0; i < waiting.size(); ++i) {
            if (waiting[i].fd < 0 || waiting[i].revents == 0) {
                continue;
            }
            std::array<char, 4096> bytes;
            const ssize_t count = read(waiting[i].fd, bytes.data(), bytes.size());
            if (count > 0) {
                filters[i].messages.add({bytes.data(), static_cast<std::size_t>(count)});
            } else if (count == 0 || errno != EINTR) {
                waiting[i].fd = -1;
                --open;
            }
        }
    }
}

std::string failureOf(const Filter& filter) {
    const std::string program = filter.program;
    if (!filter.messages.reason().empty()) {
        return program + ": " + filter.messages.reason();
    }
    if (WIFSIGNALED(filter.status)) {
        return program + " was stopped by signal " + std::to_string(WTERMSIG(filter.status));
    }
    return program + " ended with status " + std::to_string(WEXITSTATUS(filter.status));
}

}  // namespace

bool runFilters(std::span<const FilterStep> steps, const FilterJob& job, int output, std::string* reason) {
    const std::string serverBin = setting("CUPS_SERVERBIN", "/usr/lib/cups");
    std::vector<Filter> filters;
    Descriptor input(open("/dev/null", O_RDONLY | O_CLOEXEC));
    for (const FilterStep& step : steps) {
        const bool isLast = filters.size() + 1 == steps.size();
        Pipe next;
        Filter filter;
        int error = !isLast && !makePipe(&next) ? errno : 0;
        if (error == 0) {
            error = startFilter(serverBin, step, job, filters.empty(), input.get(), isLast ? output : next.write.get(),
                                &filter);
        }
        if (error != 0) {
            *reason = std::string(step.program) + ": " + systemReason(error);
            input = Descriptor();  // those that run already end when nobody reads
            break;
        }
        filters.push_back(std::move(filter));
        input = std::move(next.read);
    }

    readMessages(filters);
    for (Filter& filter : filters) {
        while (waitpid(filter.process, &filter.status, 0) < 0 && errno == EINTR) {
        }
    }
    if (!reason->empty()) {
        return false;
    }
    for (const Filter& filter : filters) {
        if (filter.status != 0) {
            *reason = failureOf(filter);
            return false;
        }
    }
    return true;
}
