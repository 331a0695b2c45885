// A print server of a test's own: real CUPS, without the machine's queues, until the object goes.
#pragma once

#include "tests/support/places.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <utility>

#include <arpa/inet.h>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

/// A listening socket on a free port of this machine.
class Listener {
public:
    Listener() {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        if (bind(socket_, reinterpret_cast<sockaddr*>(&address), length) == 0 && listen(socket_, 5) == 0) {
            getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &length);
            port_ = ntohs(address.sin_port);
        }
    }
    ~Listener() { ::close(socket_); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// All that the next connection sends; nothing when there is none for a while.
    [[nodiscard]] std::string receive() const {
        const timeval patience{20, 0};
        setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        const int connection = accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC);
        std::string received;
        char bytes[4096];
        for (ssize_t count = 0; (count = read(connection, bytes, sizeof bytes)) > 0;) {
            received.append(bytes, static_cast<std::size_t>(count));
        }
        ::close(connection);
        return received;
    }

    /// The next connection; -1 when the listener is closed.
    [[nodiscard]] int accept() const { return accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC); }
    void close() const { shutdown(socket_, SHUT_RDWR); }

    /// Whether another connection waits.
    [[nodiscard]] bool hasMore() const {
        pollfd waiting{socket_, POLLIN, 0};
        return poll(&waiting, 1, 300) > 0;
    }

    [[nodiscard]] std::string address() const { return "127.0.0.1:" + std::to_string(port_); }

private:
    int socket_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    int port_ = 0;
};

/// Whether the condition comes true within some seconds.
template <typename Condition>
bool eventually(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(50);
    while (std::chrono::steady_clock::now() < end) {
        if (condition()) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
}

class PrintServer {
public:
    /// Starts a server that keeps everything below the folder. `more` are further lines of its configuration. It has
    /// the maker's filter, unless somebody has forgotten that.
    explicit PrintServer(std::filesystem::path folder, const std::string& more = {}, bool hasFilter = true)
        : folder_(std::move(folder)) {
        for (const char* name : {"root", "cache", "state", "spool", "spool/tmp"}) {
            std::filesystem::create_directories(folder_ / name);
        }
        for (const auto& each : {folder_, folder_.parent_path()}) {
            std::filesystem::permissions(each, std::filesystem::perms(0755));  // the filters run as another user
        }
        std::ofstream(folder_ / "cupsd.conf") << "Listen " << address_ << R"(
Browsing Off
LogLevel debug
PageLogFormat %j %P %C
DefaultAuthType None
WebInterface No
<Location />
Order allow,deny
Allow all
</Location>
<Policy default>
<Limit All>
Order deny,allow
</Limit>
</Policy>
)" << more;
        std::ofstream files(folder_ / "cups-files.conf");
        files << "FileDevice Yes\nSystemGroup root\nGroup nogroup\n";
        files << "SetEnv ASAN_OPTIONS detect_leaks=0\n";  // its user cannot read what may be overlooked
        files << "ServerBin " << makePrograms(hasFilter).string() << '\n';
        constexpr std::array<std::pair<const char*, const char*>, 8> kPlaces{{{"ServerRoot", "root"},
                                                                              {"CacheDir", "cache"},
                                                                              {"StateDir", "state"},
                                                                              {"RequestRoot", "spool"},
                                                                              {"TempDir", "spool/tmp"},
                                                                              {"ErrorLog", "error_log"},
                                                                              {"AccessLog", "access_log"},
                                                                              {"PageLog", "page_log"}}};
        for (const auto& [key, name] : kPlaces) {
            files << key << ' ' << (folder_ / name).string() << '\n';
        }
        files.close();
        start();
    }
    ~PrintServer() { stop(SIGTERM); }
    PrintServer(const PrintServer&) = delete;
    PrintServer& operator=(const PrintServer&) = delete;

    /// What CUPS_SERVER must say.
    [[nodiscard]] const std::string& address() const { return address_; }

    void stop(int signal) {
        if (process_ > 0) {
            kill(process_, signal);
            waitpid(process_, nullptr, 0);
            process_ = -1;
        }
    }

    /// The server answers nobody until it is woken.
    void freeze() const { kill(process_, SIGSTOP); }
    void wake() const { kill(process_, SIGCONT); }

    /// Runs one of the server's commands ("lpadmin …", "cupsreject …"); its output.
    std::string admin(const std::string& command) const {
        const std::string line = "CUPS_SERVER=" + address_ + " PATH=/usr/sbin:/usr/bin:/sbin:/bin " + command + " 2>&1";
        FILE* const pipe = popen(line.c_str(), "r");
        std::string output;
        std::array<char, 4096> bytes;
        while (const std::size_t count = fread(bytes.data(), 1, bytes.size(), pipe)) {
            output.append(bytes.data(), count);
        }
        EXPECT_EQ(pclose(pipe), 0) << command << "\n" << output;
        return output;
    }

    /// A queue that prints into a file below the server's folder.
    void addQueue(const std::string& name, const std::filesystem::path& ppd) const {
        admin("lpadmin -p " + name + " -E -v 'file:" + printedBy(name).string() + "' -P '" + ppd.string() + "'");
    }
    [[nodiscard]] std::filesystem::path printedBy(const std::string& name) const { return folder_ / (name + ".prn"); }

    /// Waits until a job ("tavro-3") is through.
    [[nodiscard]] bool hasCompleted(const std::string& job) const {
        return eventually([&] { return admin("lpstat -W completed -o").find(job + " ") != std::string::npos; });
    }

    /// The pages that the server has counted for a job, over all copies.
    [[nodiscard]] int countedPages(int job) const {
        std::ifstream log(folder_ / "page_log");
        int pages = 0;
        int id = 0;
        int copies = 0;
        for (std::string page; log >> id >> page >> copies;) {
            pages += id == job ? copies : 0;
        }
        return pages;
    }

    [[nodiscard]] std::string log() const {
        std::ostringstream text;
        text << std::ifstream(folder_ / "error_log").rdbuf();
        return text.str();
    }

private:
    /// The machine's programs with ours, copied to where the server's user may read them.
    [[nodiscard]] std::filesystem::path makePrograms(bool hasFilter) const {
        namespace fs = std::filesystem;
        const fs::path programs = folder_ / "bin";
        fs::create_directories(programs / "filter");
        for (const auto& entry : fs::directory_iterator("/usr/lib/cups")) {
            if (entry.path().filename() != "filter") {
                fs::create_symlink(entry.path(), programs / entry.path().filename());
            }
        }
        for (const auto& entry : fs::directory_iterator("/usr/lib/cups/filter")) {
            if (entry.path().filename() != "tavro-pages") {
                fs::create_symlink(entry.path(), programs / "filter" / entry.path().filename());
            }
        }
        if (hasFilter) {
            fs::create_directories(programs / "lib");
            fs::copy(stagePath("filter/tavro-pages"), programs / "filter");
            fs::copy(sourcePath("packaging/queue/tavro.types"), folder_ / "root");
            for (const auto& file : fs::directory_iterator(stagePath("lib"))) {
                const std::string name = file.path().filename().string();
                if (name == "tavro-driver" || name.starts_with("libtavro_")) {
                    fs::copy(file.path(), programs / "lib");
                }
            }
        }
        return programs;
    }

    void start() {
        const std::string configuration = folder_ / "cupsd.conf";
        const std::string files = folder_ / "cups-files.conf";
        const std::array<const char*, 7> arguments{"cupsd", "-f",          "-c",   configuration.c_str(),
                                                   "-s",    files.c_str(), nullptr};
        ASSERT_EQ(
            posix_spawn(&process_, "/usr/sbin/cupsd", nullptr, nullptr, const_cast<char**>(arguments.data()), environ),
            0);
        const std::string question = "CUPS_SERVER=" + address_ + " lpstat -r 2>&1 | grep -q 'is running'";
        ASSERT_TRUE(eventually([&] { return std::system(question.c_str()) == 0; })) << log();
    }

    std::filesystem::path folder_;
    std::string address_ = Listener().address();  // free again when the server takes it
    pid_t process_ = -1;
};
