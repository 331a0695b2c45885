// Keeps the deadline of a connection.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include <cups/http.h>
#include <sys/socket.h>

/// Cuts a connection off when its deadline has come, or when the program is asked to end (interruption.h), and again
/// when the library connects anew: whatever waits on it then ends with an error.
class ConnectionWatch {
public:
    enum class Signals { heeded, ignored };

    /// The connection must live as long as the object.
    ConnectionWatch(http_t* http, int milliseconds, Signals signals);
    ~ConnectionWatch();
    ConnectionWatch(const ConnectionWatch&) = delete;
    ConnectionWatch& operator=(const ConnectionWatch&) = delete;

    /// Sets the deadline anew, from now on.
    void allow(int milliseconds);
    /// Whether it has come.
    [[nodiscard]] bool isOver() const;
    [[nodiscard]] bool heedsSignals() const { return signals_ == Signals::heeded; }

    /// As long as it lives, no time passes.
    class Pause {
    public:
        explicit Pause(ConnectionWatch& watch);
        ~Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

    private:
        ConnectionWatch& watch_;
        std::chrono::steady_clock::duration left_;
    };

private:
    using Clock = std::chrono::steady_clock;

    void run();
    void cut() const;

    http_t* http_;
    Signals signals_;
    sockaddr_storage peer_{};
    mutable std::mutex mutex_;
    std::condition_variable ended_;
    Clock::time_point deadline_;
    bool isEnded_ = false;
    std::thread thread_;
};
