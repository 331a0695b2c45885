// Calls to another process that end in time.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include <gio/gio.h>

/// Cancels what is under way when the time is over.
class TimeLimit {
public:
    explicit TimeLimit(std::chrono::milliseconds time)
        : cancellable_(g_cancellable_new()), watch_([this, time] { cancelAfter(time); }) {}
    ~TimeLimit() {
        {
            const std::lock_guard lock(mutex_);
            isOver_ = true;
        }
        changed_.notify_one();
        watch_.join();
        g_object_unref(cancellable_);
    }
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;

    GCancellable* cancellable() const { return cancellable_; }

private:
    void cancelAfter(std::chrono::milliseconds time) {
        std::unique_lock lock(mutex_);
        if (!changed_.wait_for(lock, time, [this] { return isOver_; })) {
            g_cancellable_cancel(cancellable_);
        }
    }

    GCancellable* cancellable_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool isOver_ = false;
    std::thread watch_;  // last: it uses the others
};
