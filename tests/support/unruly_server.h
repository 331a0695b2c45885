// A print server that misbehaves on purpose: it stands before a real one, and has a manner for each operation.
#pragma once

#include "platform/files/byte_sink.h"
#include "tests/support/print_server.h"

#include <cups/ipp.h>

#include <algorithm>
#include <atomic>
#include <map>
#include <mutex>
#include <random>
#include <set>
#include <string_view>

class UnrulyServer {
public:
    enum class Manner {
        obeys,
        drops,        // the connection, when it has read the request's beginning
        isSilent,     // from then on
        takesSlowly,  // 64 kB of the request at a time
        loses,        // the answer, which the real server has given
        cuts,         // the answer in the middle
        talksGarbage,
        drips,      // a header without an end, byte by byte
        continues,  // to say "100 Continue"
        evades,     // with an answer that is none, again and again
        answersForever,
        wantsPassword,  // of user "ann": "secret"
    };
    static constexpr int kGet = 0;  // stands for the operation of what is fetched

    explicit UnrulyServer(const std::string& server) : server_(server), thread_([this] { run(); }) {}
    ~UnrulyServer() {
        isOver_ = true;
        listener_.close();
        thread_.join();
        {
            const std::lock_guard lock(mutex_);
            std::ranges::for_each(connections_, [](int each) { shutdown(each, SHUT_RDWR); });
        }
        EXPECT_TRUE(eventually([this] { return running_ == 0; }));
    }
    UnrulyServer(const UnrulyServer&) = delete;
    UnrulyServer& operator=(const UnrulyServer&) = delete;

    /// What CUPS_SERVER must say.
    [[nodiscard]] std::string address() const { return listener_.address(); }

    void behave(int operation, Manner manner) {
        const std::lock_guard lock(mutex_);
        manners_[operation] = manner;
    }
    /// How many requests of an operation have come.
    [[nodiscard]] int countOf(int operation) {
        const std::lock_guard lock(mutex_);
        return counts_[operation];
    }

private:
    struct Request {
        std::string head;
        std::string body;
        std::size_t length = 0;  // of the whole body

        [[nodiscard]] int operation() const {
            return body.size() < 4 ? kGet
                                   : static_cast<unsigned char>(body[2]) * 256 + static_cast<unsigned char>(body[3]);
        }
    };

    void run() {
        for (int connection = 0; (connection = listener_.accept()) >= 0 && !isOver_;) {
            ++running_;
            std::thread([this, connection] {
                {
                    const std::lock_guard lock(mutex_);
                    connections_.insert(connection);
                }
                while (!isOver_ && serve(connection)) {
                }
                {
                    const std::lock_guard lock(mutex_);
                    connections_.erase(connection);
                    close(connection);
                }
                --running_;  // the last thing: the server may be gone then
            }).detach();
        }
    }

    static bool readMore(int connection, std::string* text, std::size_t most = 65536) {
        std::string bytes(most, '\0');
        const ssize_t count = recv(connection, bytes.data(), bytes.size(), 0);
        text->append(bytes, 0, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        return count > 0;
    }

    static bool say(int connection, std::string_view text) {
        return send(connection, text.data(), text.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(text.size());
    }

    static std::string field(const Request& request, const std::string& name) {
        const std::size_t at = request.head.find(name + ": ");
        return at == std::string::npos
                   ? ""
                   : request.head.substr(at + name.size() + 2, request.head.find("\r\n", at) - at - name.size() - 2);
    }

    static bool readRequest(int connection, Request* request) {
        std::size_t end = 0;
        while ((end = request->head.find("\r\n\r\n")) == std::string::npos) {
            if (!readMore(connection, &request->head)) {
                return false;
            }
        }
        request->body = request->head.substr(end + 4);
        request->head.resize(end + 4);
        const std::string length = field(*request, "Content-Length");
        request->length = length.empty() ? 0 : std::stoul(length);
        if (!field(*request, "Expect").empty()) {
            say(connection, "HTTP/1.1 100 Continue\r\n\r\n");
        }
        while (request->body.size() < std::min<std::size_t>(request->length, 8)) {
            if (!readMore(connection, &request->body)) {
                return false;
            }
        }
        return true;
    }

    /// Whether the connection goes on.
    bool serve(int connection) {
        Request request;
        if (!readRequest(connection, &request)) {
            return false;
        }
        const Manner manner = [&] {
            const std::lock_guard lock(mutex_);
            ++counts_[request.operation()];
            return manners_[request.operation()];
        }();
        if (manner == Manner::drops) {
            return false;
        }
        while (request.body.size() < request.length) {
            if (manner == Manner::isSilent) {
                break;
            }
            if (manner == Manner::takesSlowly) {
                std::this_thread::sleep_for(std::chrono::milliseconds(500));
            }
            if (!readMore(connection, &request.body)) {
                return false;
            }
        }
        return answer(connection, manner, request);
    }

    bool answer(int connection, Manner manner, const Request& request) {
        static const std::string attribute("\x04\x42\0\x0Cprinter-name\0\1x", 19);
        switch (manner) {
            case Manner::isSilent:
                return repeat(connection, 50, [] { return ""; });
            case Manner::talksGarbage: {
                std::minstd_rand random;
                return repeat(connection, 0, [&] { return std::string(100, static_cast<char>(random())); });
            }
            case Manner::drips:
                say(connection, "HTTP/1.1 200 OK\r\nX: ");
                return repeat(connection, 2, [] { return "x"; });
            case Manner::continues:
                return repeat(connection, 1, [] { return "HTTP/1.1 100 Continue\r\n\r\n"; });
            case Manner::evades:
                return say(connection, "HTTP/1.1 202 Accepted\r\nContent-Length: 0\r\n\r\n");
            case Manner::answersForever:
                say(connection, "HTTP/1.1 200 OK\r\nContent-Type: application/ipp\r\n\r\n");
                say(connection, std::string_view("\2\0\0\0\0\0\0\1", 8));
                return repeat(connection, 0, [] { return attribute; });
            case Manner::wantsPassword:
                if (field(request, "Authorization") != "Basic YW5uOnNlY3JldA==") {
                    say(connection,
                        "HTTP/1.1 401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"x\"\r\nContent-Length: "
                        "0\r\n\r\n");
                    return false;
                }
                break;
            default:
                break;
        }
        const std::string given = ask(request);
        if (manner != Manner::loses) {
            say(connection, given.substr(0, manner == Manner::cuts ? given.size() / 2 : given.size()));
        }
        return false;
    }

    /// Says something as long as there is somebody who listens.
    template <typename Text>
    bool repeat(int connection, int milliseconds, Text text) const {
        char ignored = 0;
        while (!isOver_ && say(connection, text()) && recv(connection, &ignored, 1, MSG_PEEK | MSG_DONTWAIT) != 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
        }
        return false;
    }

    /// What the real server answers.
    [[nodiscard]] std::string ask(const Request& request) const {
        Request asked = request;
        for (const std::string name : {"Expect", "Authorization", "Connection"}) {
            if (const std::size_t at = asked.head.find(name + ": "); at != std::string::npos) {
                asked.head.erase(at, asked.head.find("\r\n", at) + 2 - at);
            }
        }
        asked.head.insert(asked.head.size() - 2, "Connection: close\r\n");
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(static_cast<uint16_t>(std::stoi(server_.substr(server_.find(':') + 1))));
        const int server = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        std::string answer;
        if (connect(server, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0) {
            writeAll(server, asked.head);
            writeAll(server, asked.body);
            while (readMore(server, &answer)) {
            }
        }
        close(server);
        return answer;
    }

    std::string server_;
    Listener listener_;
    std::mutex mutex_;
    std::map<int, Manner> manners_;
    std::map<int, int> counts_;
    std::set<int> connections_;
    std::atomic<int> running_ = 0;
    std::atomic<bool> isOver_ = false;
    std::thread thread_;
};
