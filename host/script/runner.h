// Runs a script on the event loop.
#pragma once

#include "host/script/notice_answers.h"
#include "host/script/stage.h"

#include <functional>

namespace script {

/// Runs the lines of a script one after the other, each from a timer, so that they go on inside the modal loops that
/// they open. A line that fails prints "FILE:LINE: reason" on standard error and ends the script; so does, without a
/// word, the end of the main window. Modal dialogs that are then still open in front of it are cancelled.
class Runner {
public:
    struct Options {
        std::string file;                 // for messages
        unsigned secondsWithoutProgress;  // the process ends with `failedStatus` when a line takes longer
        int failedStatus;
    };
    /// Called once, at the end, with only the main window left, if that.
    using Ended = std::function<void(bool failed)>;

    Runner(Script script, Options options, Stage stage, Ended ended);
    ~Runner();
    Runner(const Runner&) = delete;
    Runner& operator=(const Runner&) = delete;

    void start();

private:
    static void tick(EventLoopTimerRef timer, void* self);
    void schedule();
    void step();
    void run(const Line& line);
    /// Cancels the window in front of the main one. False when there is none.
    bool closeFrontWindow();
    void end();

    Script script_;
    Options options_;
    Stage stage_;
    Ended ended_;
    NoticeAnswers answers_;
    EventLoopTimerRef timer_ = nullptr;
    std::size_t next_ = 0;
    bool failed_ = false;
    WindowRef cancelled_ = nullptr;  // the window that was asked to close last
};

}  // namespace script
