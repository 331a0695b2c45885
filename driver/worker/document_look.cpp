#include "driver/worker/document_look.h"

#include "driver/worker/page_report.h"
#include "platform/files/plain_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

/// How much of the time until `end` is left, for poll().
int millisecondsUntil(Clock::time_point end) {
    return static_cast<int>(
        std::max<std::int64_t>(std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count(), 0));
}

std::string tooLong(int seconds) {
    return "takes longer than " + std::to_string(seconds) + " seconds to look at";
}

/// Why a process has ended without a report.
std::string reasonOf(int status, const std::string& worker, const LookLimits& limits) {
    switch (WIFSIGNALED(status) ? WTERMSIG(status) : 0) {
        case SIGXCPU:
            return tooLong(limits.seconds);
        case SIGSEGV:
        case SIGABRT:
        case SIGILL:
        case SIGFPE:
            return "is damaged so that reading it ends in a crash";
        case SIGBUS:
            return "cannot be read to its end";
        case 0:
            return "cannot be looked at: " + worker + " ended with status " + std::to_string(WEXITSTATUS(status));
        default:
            return "cannot be looked at: " + worker + " was ended by signal " + std::to_string(WTERMSIG(status));
    }
}

}  // namespace

DocumentLook::DocumentLook(const std::string& worker, const std::string& path, const LookLimits& limits)
    : worker_(worker), limits_(limits) {
    const Descriptor document = openPlainFile(path, INT64_MAX);  // only what is needed of it is read
    if (!document) {
        fault_ = readFault(errno, INT64_MAX);
    } else if (const int error = start(document.get()); error != 0) {
        fault_ = "cannot be looked at: " + worker + ": " + std::generic_category().message(error);
    }
}

DocumentLook::~DocumentLook() {
    if (process_ > 0) {
        end();
    }
}

/// 0 or an error number.
int DocumentLook::start(int document) {
    std::array<int, 2> ends;
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return errno;
    }
    report_ = Descriptor(ends[0]);
    const Descriptor output(ends[1]);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, document, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output.get(), STDOUT_FILENO);
    // What a crash says there is no user's business; the error is one line.
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t defaults;
    sigemptyset(&defaults);
    for (const int signal : {SIGPIPE, SIGXCPU}) {
        sigaddset(&defaults, signal);
    }
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    std::string seconds = std::to_string(limits_.seconds);
    std::string megabytes = std::to_string(limits_.megabytes);
    std::array<char*, 4> words{worker_.data(), seconds.data(), megabytes.data(), nullptr};
    const int error = posix_spawn(&process_, worker_.c_str(), &actions, &attributes, words.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        process_ = -1;
    }
    return error;
}

/// Ends the process, if it has not ended by itself, and gives its status.
int DocumentLook::end() {
    int status = 0;
    kill(process_, SIGKILL);
    while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
    return status;
}

std::optional<DocumentPages> DocumentLook::finish(std::string* reason) {
    *reason = fault_;
    if (process_ < 0) {
        return std::nullopt;
    }
    const Clock::time_point deadline = Clock::now() + std::chrono::seconds(limits_.patience);
    PageReportReader report;
    bool isReport = true;
    bool isLate = false;
    for (bool goesOn = true; goesOn;) {
        pollfd waiting{report_.get(), POLLIN, 0};
        const int count = poll(&waiting, 1, millisecondsUntil(deadline));
        isLate = count == 0;
        goesOn = !isLate;
        if (count > 0) {
            std::array<char, 65536> bytes;
            const ssize_t size = read(report_.get(), bytes.data(), bytes.size());
            isReport = size <= 0 || report.add({bytes.data(), static_cast<std::size_t>(size)});
            goesOn = isReport && (size > 0 || (size < 0 && errno == EINTR));
        }
    }
    const int status = end();
    if (isReport && report.isWhole()) {
        return report.take(reason);
    }
    *reason = isLate      ? tooLong(limits_.patience)
              : !isReport ? "cannot be looked at: what " + worker_ + " says of it makes no sense"
                          : reasonOf(status, worker_, limits_);
    return std::nullopt;
}
