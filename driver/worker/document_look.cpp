#include "driver/worker/document_look.h"

#include "driver/worker/page_report.h"
#include "platform/foundation/message.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <system_error>

#include <poll.h>
#include <sys/socket.h>
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
    return messageText("takes longer than %1 seconds to look at", {seconds});
}

std::string cannotLook(const std::string& reason) {
    return messageText("cannot be looked at: %1", {reason});
}

/// Why a process has ended without a report.
std::string reasonOf(int status, const std::string& worker, const LookLimits& limits) {
    switch (endOf(status)) {
        case WorkerEnd::ranOutOfTime:
            return tooLong(limits.seconds);
        case WorkerEnd::crashed:
            return messageText("is damaged so that reading it ends in a crash");
        case WorkerEnd::lostDocument:
            return messageText("cannot be read to its end");
        case WorkerEnd::returned:
            return cannotLook(messageText("%1 ended with status %2", {worker, WEXITSTATUS(status)}));
        default:
            return cannotLook(messageText("%1 was ended by signal %2", {worker, WTERMSIG(status)}));
    }
}

}  // namespace

DocumentLook::DocumentLook(const std::string& worker, int document, const std::string& password,
                           const LookLimits& limits)
    : worker_(worker), limits_(limits) {
    if (const int error = start(document, password); error != 0) {
        fault_ = cannotLook(worker + ": " + systemMessage(error));
    }
}

/// 0 or an error number.
int DocumentLook::start(int document, const std::string& password) {
    std::array<int, 2> ends;
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        return errno;
    }
    report_ = Descriptor(ends[0]);
    const Descriptor other(ends[1]);
    // What is longer than a socket holds is no password.
    if (!password.empty() && send(ends[0], password.data(), password.size(), MSG_DONTWAIT | MSG_NOSIGNAL) < 0) {
        return errno;
    }
    shutdown(ends[0], SHUT_WR);
    return process_.start(worker_, {std::to_string(limits_.seconds), std::to_string(limits_.megabytes)}, document,
                          other.get());
}

std::optional<DocumentPages> DocumentLook::finish(std::string* reason) {
    *reason = fault_;
    if (!process_.isStarted()) {
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
    const int status = process_.end();
    if (isReport && report.isWhole()) {
        return report.take(reason);
    }
    *reason = isLate      ? tooLong(limits_.patience)
              : !isReport ? cannotLook(messageText("what %1 says of it makes no sense", {worker_}))
                          : reasonOf(status, worker_, limits_);
    return std::nullopt;
}
