// tavro-pages: looks at the document on its standard input and reports its pages on its standard output.
//
// usage: tavro-pages SECONDS MEGABYTES <DOCUMENT: what it may take of processor and memory
//
// It has only what it needs for that: a document that makes it do something else finds nothing to do it with.

#include "driver/worker/page_report.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>
#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

namespace {

std::array<char, 100> outOfMemory;

/// A library that is told of its lack of memory might go on with less of the document.
void endWithoutMemory() {
    [[maybe_unused]] const ssize_t ignored = write(STDOUT_FILENO, outOfMemory.data(), std::strlen(outOfMemory.data()));
    _exit(EXIT_SUCCESS);
}

void limit(__rlimit_resource resource, rlim_t soft, rlim_t hard) {
    rlimit limits{};
    getrlimit(resource, &limits);
    limits.rlim_max = std::min(limits.rlim_max, hard);
    limits.rlim_cur = std::min(limits.rlim_max, soft);
    setrlimit(resource, &limits);
}

/// Whether the program that reads the report has ended, before this one had asked to end with it.
bool isForNobody() {
    pollfd report{STDOUT_FILENO, 0, 0};
    return poll(&report, 1, 0) > 0 && (report.revents & POLLERR) != 0;
}

void limitAll(rlim_t seconds, [[maybe_unused]] rlim_t megabytes) {
    limit(RLIMIT_CPU, seconds, seconds + 1);  // at the soft one the system says why
    limit(RLIMIT_CORE, 1, 1);                 // no core, also where cores go to a program
    limit(RLIMIT_FSIZE, 0, 0);
#ifndef __SANITIZE_ADDRESS__  // which has taken more memory already, and asks pipes what it may read
    limit(RLIMIT_DATA, megabytes << 20, megabytes << 20);
    limit(RLIMIT_NOFILE, 0, 0);
#endif
}

}  // namespace

int main(int argc, char** argv) {
    const long seconds = argc == 3 ? std::strtol(argv[1], nullptr, 10) : 0;
    const long megabytes = argc == 3 ? std::strtol(argv[2], nullptr, 10) : 0;
    if (seconds < 1 || megabytes < 1) {
        std::fputs("usage: tavro-pages SECONDS MEGABYTES <DOCUMENT\n", stderr);
        return 2;
    }
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (isForNobody()) {
        return EXIT_FAILURE;
    }
    limitAll(static_cast<rlim_t>(seconds), static_cast<rlim_t>(megabytes));
    std::snprintf(outOfMemory.data(), outOfMemory.size(), "refused takes more than %ld MB of memory to look at\n",
                  megabytes);
    std::set_new_handler(endWithoutMemory);
    std::string reason;
    const auto pages = readDocument(STDIN_FILENO, &reason);
    // What the library has read of a large document takes long to give back.
    _exit(writePageReport(pages, reason, stdout) ? EXIT_SUCCESS : EXIT_FAILURE);
}
