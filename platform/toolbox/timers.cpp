// Timers of the event loop.

#include "platform/toolbox/Windows.h"

#include <QTimer>
#include <chrono>

/// A timer that fires once after its delay and, when it repeats, from then on at its interval.
struct OpaqueEventLoopTimer {
    QTimer timer;
    double interval = 0;
    EventLoopTimerUPP routine = nullptr;
    void* userData = nullptr;
};

namespace {

std::chrono::milliseconds milliseconds(double seconds) {
    return std::chrono::milliseconds(static_cast<long long>(seconds * 1000.0));
}

}  // namespace

OSStatus InstallEventLoopTimer(double delay, double interval, EventLoopTimerUPP routine, void* userData,
                               EventLoopTimerRef* timer) {
    if (routine == nullptr || timer == nullptr) {
        return paramErr;
    }
    auto* installed = new OpaqueEventLoopTimer;
    installed->interval = interval;
    installed->routine = routine;
    installed->userData = userData;
    installed->timer.setSingleShot(interval <= 0);
    QObject::connect(&installed->timer, &QTimer::timeout, &installed->timer, [installed] {
        if (installed->interval > 0) {
            installed->timer.setInterval(milliseconds(installed->interval));
        }
        installed->routine(installed, installed->userData);
    });
    *timer = installed;
    installed->timer.start(milliseconds(delay));
    return noErr;
}

OSStatus RemoveEventLoopTimer(EventLoopTimerRef timer) {
    if (timer == nullptr) {
        return paramErr;
    }
    timer->timer.stop();
    // Its routine may be running: the record goes when that has returned.
    QMetaObject::invokeMethod(
        &timer->timer, [timer] { delete timer; }, Qt::QueuedConnection);
    return noErr;
}
