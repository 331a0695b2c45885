// A program that reads strangers' documents, as the one that started it sees it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

/// Ends with the object, and with the thread that started it.
class WorkerProcess {
public:
    WorkerProcess() = default;
    ~WorkerProcess() { end(); }
    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;

    /// Starts a program with nothing open but these; without `messages`, what it says on its standard error is lost. 0
    /// or an error number.
    int start(std::string program, std::vector<std::string> arguments, int input, int output, int messages = -1);
    [[nodiscard]] bool isStarted() const { return process_ > 0; }

    /// Ends it, if it has not ended by itself, and gives its status. 0 for one that was not started.
    int end();
    /// Waits for its end, which it was seen to be about, and gives its status.
    int wait();
    /// Asks it to end, and gives it time to end what it has started.
    void stop();

private:
    pid_t process_ = -1;
};

/// How a worker ended by itself.
enum class WorkerEnd {
    returned,
    ranOutOfTime,  // of the processor
    crashed,
    lostDocument,  // which has become shorter while it was read
    wasEnded,      // by somebody
};
WorkerEnd endOf(int status);
