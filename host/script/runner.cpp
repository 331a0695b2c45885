#include "host/script/runner.h"

#include "host/script/actions.h"
#include "host/script/watchdog.h"
#include "platform/foundation/message.h"
#include "platform/foundation/terminal_text.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Events.h"

#include <filesystem>

namespace script {

Runner::Runner(Script script, Options options, Stage stage, Ended ended)
    : script_(std::move(script)),
      options_(std::move(options)),
      stage_(std::move(stage)),
      ended_(std::move(ended)),
      answers_(stage_.output) {}

Runner::~Runner() {
    stopWatchdog();
    RemoveEventLoopTimer(timer_);
}

void Runner::start() {
    schedule();
}

void Runner::tick(EventLoopTimerRef timer, void* self) {
    auto& runner = *static_cast<Runner*>(self);
    RemoveEventLoopTimer(timer);
    runner.timer_ = nullptr;
    runner.step();
}

void Runner::schedule() {
    InstallEventLoopTimer(0, 0, tick, this, &timer_);
}

void Runner::step() {
    if (AutomationIsMenuOpen()) {
        schedule();  // the line before this one is still picking its item
        return;
    }
    AutomationAdoptFrontWindow();
    const bool isOver = stage_.mainWindow != nullptr && !IsWindowVisible(stage_.mainWindow);
    if (!failed_ && !isOver && next_ < script_.lines.size()) {
        // Before the line, not after it: a line that opens a modal dialog comes back only when that is closed.
        schedule();
        if (stage_.settle) {
            stage_.settle();
        }
        run(script_.lines[next_++]);
    } else if (closeFrontWindow()) {
        schedule();
    } else {
        end();
    }
}

void Runner::run(const Line& line) {
    const std::string place = options_.file + ":" + std::to_string(line.number) + ": ";
    startWatchdog(options_.secondsWithoutProgress, place + messageText("the script has come to a stop here"),
                  options_.failedStatus);
    if (const auto* answer = std::get_if<Answer>(&line.action)) {
        answers_.give(*answer);
        return;
    }
    if (const auto* file = std::get_if<File>(&line.action)) {
        const auto folder = std::filesystem::path(options_.file).parent_path();
        AutomationQueueFile(makeFileURL((folder / file->path).string()).get());
        return;
    }
    const auto reason = perform(line.action, stage_);
    std::fflush(stage_.output);
    // When a line comes back out of its modal dialog, a later one may have failed already; that one is told.
    if (reason && !failed_) {
        failed_ = true;
        printLine(stderr, readable(place + *reason));
    }
}

bool Runner::closeFrontWindow() {
    const WindowRef front = FrontNonFloatingWindow();
    if (front == nullptr || front == stage_.mainWindow) {
        return false;
    }
    if (front == cancelled_) {
        // It did not close when it was cancelled.
        QuitAppModalLoopForWindow(front);
        HideWindow(front);
        return true;
    }
    cancelled_ = front;
    const HICommand command{0, FourCharCode("not!"), nullptr, 0, nullptr};
    EventRef event = nullptr;
    CreateEvent(nullptr, kEventClassCommand, kEventCommandProcess, 0, 0, &event);
    SetEventParameter(event, kEventParamDirectObject, typeHICommand, sizeof command, &command);
    SendEventToEventTarget(event, GetWindowEventTarget(front));
    ReleaseEvent(event);
    return true;
}

void Runner::end() {
    stopWatchdog();
    ended_(failed_);
}

}  // namespace script
