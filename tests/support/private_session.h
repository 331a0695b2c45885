// A session bus and a home of the test's own.
#pragma once

#include "tests/platform/files/temporary_folder.h"

#include <csignal>
#include <cstdio>

#include <sys/wait.h>
#include <unistd.h>

class PrivateSession {
public:
    PrivateSession() {
        for (const char* name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
            const std::filesystem::path path = home_.path() / name;
            std::filesystem::create_directory(path);
            std::filesystem::permissions(path, std::filesystem::perms::owner_all);
            setenv(name, path.c_str(), 1);
        }
        setenv("GSETTINGS_BACKEND", "memory", 1);
    }
    ~PrivateSession() { stop(); }

    /// Whether there is a bus now; DBUS_SESSION_BUS_ADDRESS names it.
    bool start() {
        int ends[2];
        if (pipe(ends) != 0 || (bus_ = fork()) < 0) {
            return false;
        }
        if (bus_ == 0) {
            dup2(ends[1], STDOUT_FILENO);
            // The services that the bus starts would keep the pipe of whoever waits for this test open.
            freopen("/dev/null", "w", stderr);
            close(ends[0]);
            close(ends[1]);
            execlp("dbus-daemon", "dbus-daemon", "--session", "--nofork", "--print-address", nullptr);
            _exit(127);
        }
        close(ends[1]);
        char address[256] = {};
        FILE* answer = fdopen(ends[0], "r");
        const bool started = fgets(address, sizeof address, answer) != nullptr;
        std::fclose(answer);
        setenv("DBUS_SESSION_BUS_ADDRESS", std::string(address).substr(0, std::string(address).find('\n')).c_str(), 1);
        return started;
    }

    /// Holds the bus up: it takes connections and never answers.
    void freeze() const { kill(bus_, SIGSTOP); }

    void stop() {
        if (bus_ > 0) {
            kill(bus_, SIGCONT);
            kill(bus_, SIGTERM);
            waitpid(bus_, nullptr, 0);
            bus_ = -1;
        }
    }

    const std::filesystem::path& home() const { return home_.path(); }

private:
    TemporaryFolder home_;
    pid_t bus_ = -1;
};
