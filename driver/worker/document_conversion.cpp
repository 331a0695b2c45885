#include "driver/worker/document_conversion.h"

#include "platform/files/temporary_files.h"
#include "platform/foundation/message.h"

#include <array>
#include <cerrno>
#include <cmath>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr std::size_t kLongestReport = 4096;

std::string reasonOf(int status, std::string_view report, const std::string& worker) {
    static constexpr std::string_view kRefused = "refused ";
    const std::size_t refusal = report.rfind(kRefused);
    if (refusal != std::string_view::npos) {
        const std::string_view reason = report.substr(refusal + kRefused.size());
        return unpackMessages(reason.substr(0, reason.find('\n')));
    }
    return messageText("cannot be prepared for printing: %1",
                       {WIFSIGNALED(status) ? messageText("%1 was ended by signal %2", {worker, WTERMSIG(status)})
                                            : messageText("%1 ended with status %2", {worker, WEXITSTATUS(status)})});
}

}  // namespace

DocumentConversion::DocumentConversion(const std::string& worker, int document, const std::string& name, double width,
                                       double height, const ConversionLimits& limits)
    : worker_(worker) {
    const int error = start(document, {std::to_string(limits.seconds), std::to_string(limits.megabytes),
                                       std::to_string(std::lround(width)), std::to_string(std::lround(height)), name});
    if (error != 0) {
        report_ = Descriptor();
        fault_ = messageText("cannot be prepared for printing: %1",
                             {(made_ ? worker : temporaryFolder()) + ": " + systemMessage(error)});
    }
}

DocumentConversion::~DocumentConversion() {
    process_.stop();
}

/// 0 or an error number.
int DocumentConversion::start(int document, std::vector<std::string> arguments) {
    made_ = makeTemporaryFile();
    std::array<int, 2> ends;
    if (!made_ || pipe2(ends.data(), O_CLOEXEC) != 0) {
        return errno;
    }
    report_ = Descriptor(ends[0]);
    const Descriptor messages(ends[1]);
    return process_.start(worker_, std::move(arguments), document, made_.get(), messages.get());
}

Descriptor DocumentConversion::finish(std::string* reason) {
    *reason = fault_;
    if (!process_.isStarted()) {
        return {};
    }
    std::string report;
    std::array<char, kLongestReport> bytes;
    for (ssize_t count = 1; count != 0;) {
        count = read(report_.get(), bytes.data(), bytes.size());
        if (count > 0) {
            report.append(bytes.data(), static_cast<std::size_t>(count));
            report.erase(0, report.size() > kLongestReport ? report.size() - kLongestReport : 0);
        } else if (count < 0 && errno != EINTR) {
            break;
        }
    }
    if (const int status = process_.wait(); status != 0) {
        *reason = reasonOf(status, report, worker_);
        return {};
    }
    return std::move(made_);
}
