#include "driver/worker/worker_limits.h"

#include <poll.h>
#include <seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <algorithm>
#include <cerrno>

namespace {

void limit(__rlimit_resource resource, rlim_t soft, rlim_t hard) {
    rlimit limits{};
    getrlimit(resource, &limits);
    limits.rlim_max = std::min(limits.rlim_max, hard);
    limits.rlim_cur = std::min(limits.rlim_max, soft);
    setrlimit(resource, &limits);
}

/// Sockets of this machine stay: the system's own look-ups of names and users have some. Where the kernel knows no such
/// filters, it is left at the other limits.
void denyNetwork() {
    scmp_filter_ctx filter = seccomp_init(SCMP_ACT_ALLOW);
    if (filter != nullptr) {
        seccomp_rule_add(filter, SCMP_ACT_ERRNO(EACCES), SCMP_SYS(socket), 1, SCMP_A0(SCMP_CMP_NE, AF_UNIX));
        seccomp_rule_add(filter, SCMP_ACT_ERRNO(EACCES), SCMP_SYS(io_uring_setup), 0);  // which opens them, too
        seccomp_load(filter);
        seccomp_release(filter);
    }
}

}  // namespace

bool endWithStarter(int signal, int output) {
    prctl(PR_SET_PDEATHSIG, signal);
    // It may have ended before it was asked for that.
    pollfd ours{output, 0, 0};
    return poll(&ours, 1, 0) == 0 || (ours.revents & (POLLERR | POLLHUP)) == 0;
}

void limitProcessor(int seconds) {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    rlimit limits{};
    getrlimit(RLIMIT_CPU, &limits);
    limits.rlim_cur = std::min(limits.rlim_max, static_cast<rlim_t>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) +
                                                    static_cast<rlim_t>(seconds));
    setrlimit(RLIMIT_CPU, &limits);
}

void limitWorker([[maybe_unused]] const WorkerLimits& limits) {
    denyNetwork();
    limit(RLIMIT_CORE, 1, 1);
    limit(RLIMIT_FSIZE, 0, 0);
// The sanitizers have taken more memory already, and ask pipes what they may read.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    const rlim_t bytes = static_cast<rlim_t>(limits.megabytes) << 20;
    const auto files = static_cast<rlim_t>(limits.openFiles);
    limit(RLIMIT_DATA, bytes, bytes);
    limit(RLIMIT_NOFILE, files, files);
#endif
}
