// tavro-driver: what tavro-pages, the filter of a queue, hands jobs with settings to. It is started with the filter's
// arguments, and speaks to the print server as a filter does.

#include "driver/queue/option_text.h"
#include "driver/queue/queue_job.h"
#include "platform/foundation/terminal_text.h"
#include "platform/printing/job_stream.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

int fail(const std::string& reason) {
    std::fprintf(stderr, "ERROR: %s\n", terminalText(reason).c_str());
    return EXIT_FAILURE;
}

class StandardOutput : public ByteSink {
public:
    bool write(std::string_view bytes) override { return writeAll(STDOUT_FILENO, bytes); }
};

/// Has the print server count each page that passes.
class PageLog : public ByteSink {
public:
    PageLog(ByteSink& next, int copies) : counter_(next), copies_(copies) {}

    bool write(std::string_view bytes) override {
        const bool isTaken = counter_.write(bytes);
        for (; logged_ < counter_.pages(); ++logged_) {
            std::fprintf(stderr, "PAGE: %zu %d\n", logged_ + 1, copies_);
        }
        return isTaken;
    }

private:
    JobCounter counter_;
    int copies_;
    std::size_t logged_ = 0;
};

/// An error number, or 0.
int copy(int from, PrivateFile* to) {
    std::array<char, 65536> bytes;
    for (ssize_t count = 0; (count = read(from, bytes.data(), bytes.size())) != 0;) {
        if (count < 0 && errno != EINTR) {
            return errno;
        }
        if (count > 0 && !to->write({bytes.data(), static_cast<std::size_t>(count)})) {
            return to->error();
        }
    }
    return to->error();
}

}  // namespace

int main(int argc, char** argv) {
    const char* const ppd = std::getenv("PPD");
    if ((argc != 6 && argc != 7) || ppd == nullptr) {
        return fail("usage: tavro-driver JOB USER TITLE COPIES OPTIONS [FILE], with the printer's PPD in $PPD");
    }
    const int input = argc == 7 ? open(argv[6], O_RDONLY | O_CLOEXEC) : STDIN_FILENO;
    PrivateFile document;
    const int error = input < 0 ? errno : copy(input, &document);
    if (error != 0) {
        return fail(std::string("The document cannot be copied: ") + std::strerror(error));
    }
    const QueueJob job{argv[1], argv[2], argv[3], std::clamp(std::atoi(argv[4]), 1, kMostCopies), argv[5], ppd};
    std::fputs("INFO: Making the sheets.\n", stderr);
    int last = -1;
    const auto progress = [&last](int percent) {
        if (percent != last) {
            std::fprintf(stderr, "ATTR: job-media-progress=%d\n", percent);
            last = percent;
        }
    };
    StandardOutput output;
    PageLog log(output, job.copies);
    std::string reason;
    if (!writeQueueJob(job, document, progress, log, &reason)) {
        return fail(reason.empty() ? "The job cannot be handed on." : reason);
    }
    std::fputs("INFO: The sheets are made.\n", stderr);
    return EXIT_SUCCESS;
}
