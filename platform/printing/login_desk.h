// Where a thread that talks to a print server asks who the user is.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>

struct ServerLogin {
    std::string user;
    std::string password;
};

struct LoginQuestion {
    std::string prompt;  // for a terminal
    std::string server;
    std::string user;      // a proposal
    bool isAgain = false;  // the server has refused what was given last
};

/// Brings the questions of a thread that talks to the server to the one that waits for it, and may show windows.
class LoginDesk {
public:
    /// The thread's questions go to the desk (null: to the user at once) from now on.
    static void use(LoginDesk* desk);

    /// For the one who asks. Nothing when nobody waits any more.
    std::optional<ServerLogin> ask(const LoginQuestion& question);
    /// For the one who asks, at the end.
    void leave();

    /// For the one who waits: answers questions until the other one has left, or the time is over, which begins anew
    /// with each answer. Whether it has left.
    bool serve(std::chrono::milliseconds patience);
    /// From now on nobody waits.
    void close();

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    const LoginQuestion* question_ = nullptr;  // lent by who asks
    std::optional<ServerLogin> answer_;
    bool hasLeft_ = false;
    bool isClosed_ = false;
};
