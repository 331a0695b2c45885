// Timers of the event loop, and descriptors that it waits for.

#include "platform/toolbox/Windows.h"

#include <QApplication>
#include <QEvent>
#include <QSocketNotifier>
#include <QTimer>
#include <chrono>
#include <memory>

namespace {

/// Starts a timer anew with each input of the user's.
class InputWatch : public QObject {
public:
    explicit InputWatch(QTimer* timer) : timer_(timer) { QApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* /*receiver*/, QEvent* event) override {
        switch (event->type()) {
            case QEvent::KeyPress:
            case QEvent::InputMethod:
            case QEvent::MouseButtonPress:
            case QEvent::MouseButtonRelease:
            case QEvent::Wheel:
                timer_->start();
                break;
            default:
                break;
        }
        return false;
    }

private:
    QTimer* timer_;
};

}  // namespace

/// A timer that fires once after its delay and, when it repeats, from then on at its interval.
struct OpaqueEventLoopTimer {
    QTimer timer;
    double interval = 0;
    EventLoopTimerUPP routine = nullptr;
    void* userData = nullptr;
    std::unique_ptr<InputWatch> watch;  // of a timer that waits for the user's pauses
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
        if (installed->watch && QApplication::activePopupWidget() != nullptr) {
            installed->timer.start();  // who looks through a menu has not finished
            return;
        }
        if (installed->interval > 0) {
            installed->timer.setInterval(milliseconds(installed->interval));
        }
        installed->routine(installed, installed->userData);
    });
    *timer = installed;
    installed->timer.start(milliseconds(delay));
    return noErr;
}

OSStatus InstallEventLoopIdleTimer(double delay, EventLoopTimerUPP routine, void* userData, EventLoopTimerRef* timer) {
    if (const OSStatus status = InstallEventLoopTimer(delay, 0, routine, userData, timer); status != noErr) {
        return status;
    }
    QTimer& pause = (*timer)->timer;
    pause.stop();  // until there is input
    (*timer)->watch = std::make_unique<InputWatch>(&pause);
    return noErr;
}

OSStatus RemoveEventLoopTimer(EventLoopTimerRef timer) {
    if (timer == nullptr) {
        return paramErr;
    }
    timer->watch.reset();
    timer->timer.stop();
    // Its routine may be running: the record goes when that has returned.
    QMetaObject::invokeMethod(
        &timer->timer, [timer] { delete timer; }, Qt::QueuedConnection);
    return noErr;
}

struct OpaqueEventLoopDescriptor {
    QSocketNotifier notifier;
};

OSStatus InstallEventLoopDescriptor(int descriptor, EventLoopDescriptorUPP routine, void* userData,
                                    EventLoopDescriptorRef* watch) {
    if (descriptor < 0 || routine == nullptr || watch == nullptr) {
        return paramErr;
    }
    *watch = new OpaqueEventLoopDescriptor{QSocketNotifier(descriptor, QSocketNotifier::Read)};
    QObject::connect(&(*watch)->notifier, &QSocketNotifier::activated, &(*watch)->notifier,
                     [descriptor, routine, userData] { routine(descriptor, userData); });
    return noErr;
}

OSStatus RemoveEventLoopDescriptor(EventLoopDescriptorRef watch) {
    if (watch == nullptr) {
        return paramErr;
    }
    watch->notifier.setEnabled(false);
    // As with timers: its routine may be running.
    QMetaObject::invokeMethod(
        &watch->notifier, [watch] { delete watch; }, Qt::QueuedConnection);
    return noErr;
}
