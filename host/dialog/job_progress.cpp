#include "host/dialog/job_progress.h"

#include "host/dialog/dialog_controls.h"
#include "host/settings/texts.h"
#include "platform/printing/login_desk.h"
#include "platform/toolbox/Events.h"
#include "platform/toolbox/Windows.h"

#include <chrono>
#include <future>
#include <thread>

namespace {

using namespace std::chrono_literals;

/// What is done before that needs no window.
constexpr auto kMoment = 400ms;
constexpr double kSecondsBetweenLooks = 0.05;

class JobProgress {
public:
    JobProgress(JobWork* work, const Document& document, CFBundleRef bundle)
        : work_(*work), document_(document), bundle_(bundle) {}

    JobOutcome run() {
        std::promise<JobOutcome> promise;
        outcome_ = promise.get_future();
        std::thread thread([this, promise = std::move(promise)]() mutable {
            LoginDesk::use(&desk_);
            promise.set_value(work_.run());
            desk_.leave();  // who waits for that finds the outcome
        });
        const auto end = std::chrono::steady_clock::now() + kMoment;
        while (std::chrono::steady_clock::now() < end && !desk_.serve(kMoment)) {
        }
        if (!isDone()) {
            show();
        }
        while (!desk_.serve(1s)) {
        }
        thread.join();
        return outcome_.get();
    }

private:
    [[nodiscard]] bool isDone() const { return outcome_.wait_for(0s) == std::future_status::ready; }

    /// Until the job is done. Without the window it goes on all the same.
    void show() {
        window_ = makeWindow(bundle_, CFSTR("JobProgress"));
        if (window_ == nullptr) {
            return;
        }
        setStaticText(hostControl(window_, kJobProgressTitle),
                      localized(bundle_, CFSTR("Job Progress Title"), shortened(document_.name)));
        static constexpr EventTypeSpec kEvents[] = {{kEventClassCommand, kEventCommandProcess},
                                                    {kEventClassWindow, kEventWindowClose}};
        InstallWindowEventHandler(window_, handleEvent, std::size(kEvents), kEvents, this, nullptr);
        EventLoopTimerRef timer = nullptr;
        InstallEventLoopTimer(
            kSecondsBetweenLooks, kSecondsBetweenLooks,
            [](EventLoopTimerRef, void* self) { static_cast<JobProgress*>(self)->look(); }, this, &timer);
        look();
        RunAppModalLoopForWindow(window_);
        RemoveEventLoopTimer(timer);
        DisposeWindow(window_);
    }

    void look() {
        if (isLooking_) {  // the window of a question is open
            return;
        }
        isLooking_ = true;
        if (isCancelled_) {
            work_.cancel();  // each step of the job begins without knowing
        }
        desk_.serve(0ms);
        isLooking_ = false;
        if (isDone()) {
            QuitAppModalLoopForWindow(window_);
            return;
        }
        showState(work_.percent());
    }

    void showState(int percent) {
        if (percent == shown_ && !isCancelled_) {
            return;
        }
        shown_ = percent;
        SetControl32BitValue(hostControl(window_, kJobProgressBar), percent);
        const std::int64_t page = document_.pageCount * percent / 100;
        CFRef<CFStringRef> text = percent < 100 ? localized(bundle_, CFSTR("Job Progress Pages"),
                                                            {std::to_string(page), std::to_string(document_.pageCount)})
                                                : localized(bundle_, CFSTR("Job Progress Sending"));
        if (isCancelled_) {
            text = localized(bundle_, CFSTR("Job Progress Cancelling"));
        }
        setStaticText(hostControl(window_, kJobProgressState), text);
    }

    static OSStatus handleEvent(EventHandlerCallRef, EventRef event, void* userData) {
        auto& self = *static_cast<JobProgress*>(userData);
        HICommand command{};
        GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
        if (GetEventClass(event) == kEventClassCommand && command.commandID != FourCharCode("not!")) {
            return eventNotHandledErr;
        }
        self.isCancelled_ = true;
        DisableControl(hostControl(self.window_, kJobProgressCancel));
        self.look();
        return noErr;  // the window stays until the job has taken back what it had begun
    }

    JobWork& work_;
    const Document& document_;
    CFBundleRef bundle_;
    LoginDesk desk_;
    std::future<JobOutcome> outcome_;
    WindowRef window_ = nullptr;
    int shown_ = -1;
    bool isCancelled_ = false;
    bool isLooking_ = false;
};

}  // namespace

JobOutcome runWithProgress(JobWork* work, const Document& document, CFBundleRef bundle) {
    return JobProgress(work, document, bundle).run();
}
