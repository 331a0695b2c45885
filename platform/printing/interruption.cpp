#include "platform/printing/interruption.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstdint>
#include <mutex>

#include <sys/eventfd.h>
#include <unistd.h>

namespace {

constexpr std::array kSignals{SIGINT, SIGTERM, SIGHUP};

std::atomic<int> signalThatCame;
// Stays open for the life of the process: a signal may be on its way to it, and its number must be no other file's
// then.
std::atomic<int> event = -1;
std::mutex changes;  // of the next one; who interrupts means the work that goes on, or none
bool isGoingOn = false;
std::array<struct sigaction, kSignals.size()> formerActions;

constexpr int kNoSignal = -1;  // somebody has interrupted

void wake() {
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t ignored = write(event, &one, sizeof one);
}

void keep(int signal) {
    if (signalThatCame.exchange(signal) > 0) {
        std::signal(signal, SIG_DFL);
        raise(signal);  // when the handler has returned
    }
    wake();
}

}  // namespace

Interruption::Interruption() {
    {
        const std::lock_guard lock(changes);
        isGoingOn = true;
        signalThatCame = 0;
        if (event < 0) {
            event = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
        }
        std::uint64_t count = 0;
        [[maybe_unused]] const ssize_t ignored = read(event, &count, sizeof count);  // of an earlier one
    }
    struct sigaction action {};
    action.sa_handler = keep;  // whoever waits for a key is woken by it
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        sigaction(kSignals[i], nullptr, &formerActions[i]);
        if (formerActions[i].sa_handler == SIG_DFL) {
            sigaction(kSignals[i], &action, nullptr);
        }
    }
}

Interruption::~Interruption() {
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        if (formerActions[i].sa_handler == SIG_DFL) {
            sigaction(kSignals[i], &formerActions[i], nullptr);
        }
    }
    int signal = 0;
    {
        const std::lock_guard lock(changes);
        isGoingOn = false;
        signal = signalThatCame.exchange(0);
    }
    if (signal > 0) {
        raise(signal);
    }
}

void interrupt() {
    const std::lock_guard lock(changes);
    int none = 0;
    if (isGoingOn && signalThatCame.compare_exchange_strong(none, kNoSignal)) {
        wake();
    }
}

bool isInterrupted() {
    return signalThatCame != 0;
}

int interruptionDescriptor() {
    return event;
}
