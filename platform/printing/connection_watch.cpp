#include "platform/printing/connection_watch.h"

#include "platform/files/descriptor.h"
#include "platform/printing/cups_library.h"
#include "platform/printing/interruption.h"

#include <cstring>

#include <fcntl.h>

namespace {

sockaddr_storage peerOf(int socket) {
    sockaddr_storage peer{};
    socklen_t length = sizeof peer;
    getpeername(socket, reinterpret_cast<sockaddr*>(&peer), &length);
    return peer;
}

}  // namespace

ConnectionWatch::ConnectionWatch(http_t* http, int milliseconds, Signals signals)
    : http_(http),
      signals_(signals),
      peer_(peerOf(cups().httpGetFd(http))),
      deadline_(Clock::now() + std::chrono::milliseconds(milliseconds)),
      thread_([this] { run(); }) {}

ConnectionWatch::~ConnectionWatch() {
    {
        const std::lock_guard lock(mutex_);
        isEnded_ = true;
    }
    ended_.notify_all();
    thread_.join();
}

void ConnectionWatch::allow(int milliseconds) {
    const std::lock_guard lock(mutex_);
    deadline_ = Clock::now() + std::chrono::milliseconds(milliseconds);
}

bool ConnectionWatch::isOver() const {
    const std::lock_guard lock(mutex_);
    return Clock::now() >= deadline_;
}

ConnectionWatch::Pause::Pause(ConnectionWatch& watch) : watch_(watch) {
    const std::lock_guard lock(watch_.mutex_);
    left_ = watch_.deadline_ - Clock::now();
    watch_.deadline_ = Clock::time_point::max();
}

ConnectionWatch::Pause::~Pause() {
    const std::lock_guard lock(watch_.mutex_);
    watch_.deadline_ = Clock::now() + left_;
}

void ConnectionWatch::run() {
    constexpr auto kBetweenLooks = std::chrono::milliseconds(20);
    std::unique_lock lock(mutex_);
    while (!ended_.wait_for(lock, kBetweenLooks, [this] { return isEnded_; })) {
        if (Clock::now() >= deadline_ || (heedsSignals() && isInterrupted())) {
            cut();
        }
    }
}

/// The library may be closing its socket and opening another one at this moment, so that the number means something
/// else: a copy of the descriptor stays what it is, and is only cut when the print server is at its other end.
void ConnectionWatch::cut() const {
    const Descriptor copy(fcntl(cups().httpGetFd(http_), F_DUPFD_CLOEXEC, 0));
    const sockaddr_storage peer = peerOf(copy.get());
    if (copy && peer.ss_family != AF_UNSPEC && std::memcmp(&peer, &peer_, sizeof peer) == 0) {
        shutdown(copy.get(), SHUT_RDWR);
    }
}
