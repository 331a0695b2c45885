#include "driver/worker/worker_process.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

int WorkerProcess::start(std::string program, std::vector<std::string> arguments, int input, int output, int messages) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    if (messages >= 0) {
        posix_spawn_file_actions_adddup2(&actions, messages, STDERR_FILENO);
    } else {
        // What a crash says there is no user's business; the error is one line.
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    }
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
    std::vector<char*> words{program.data()};
    for (std::string& argument : arguments) {
        words.push_back(argument.data());
    }
    words.push_back(nullptr);
    const int error = posix_spawn(&process_, program.c_str(), &actions, &attributes, words.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        process_ = -1;
    }
    return error;
}

int WorkerProcess::end() {
    if (process_ > 0) {
        kill(process_, SIGKILL);
    }
    return wait();
}

void WorkerProcess::stop() {
    if (process_ > 0) {
        kill(process_, SIGTERM);
        wait();
    }
}

int WorkerProcess::wait() {
    int status = 0;
    if (process_ > 0) {
        while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
        }
        process_ = -1;
    }
    return status;
}

WorkerEnd endOf(int status) {
    switch (WIFSIGNALED(status) ? WTERMSIG(status) : 0) {
        case 0:
            return WorkerEnd::returned;
        case SIGXCPU:
            return WorkerEnd::ranOutOfTime;
        case SIGSEGV:
        case SIGABRT:
        case SIGILL:
        case SIGFPE:
            return WorkerEnd::crashed;
        case SIGBUS:
            return WorkerEnd::lostDocument;
        default:
            return WorkerEnd::wasEnded;
    }
}
