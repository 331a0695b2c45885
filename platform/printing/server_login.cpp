#include "platform/printing/server_login.h"

#include "platform/foundation/terminal_text.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"
#include "platform/printing/cups_library.h"

namespace {

struct Program {
    PMPasswordProc ask = nullptr;
    void* context = nullptr;
};

Program& program() {
    static Program asked;
    return asked;
}

struct Known {
    std::mutex mutex;
    std::optional<ServerLogin> login;
};

Known& known() {
    static auto* const login = new Known;
    return *login;
}

thread_local LoginDesk* deskOfThread = nullptr;

std::optional<ServerLogin> askUser(const LoginQuestion& question) {
    if (program().ask == nullptr) {
        const char* const password = cups().cupsGetPassword(terminalText(question.prompt).c_str());
        return password == nullptr ? std::nullopt : std::optional(ServerLogin{question.user, password});
    }
    CFStringRef user = nullptr;
    CFStringRef password = nullptr;
    const bool isGiven = program().ask(makeString(question.server).get(), makeString(question.user).get(),
                                       question.isAgain, &user, &password, program().context);
    const auto userOwner = CFRef<CFStringRef>::adopt(user);
    const auto passwordOwner = CFRef<CFStringRef>::adopt(password);
    return isGiven ? std::optional(ServerLogin{utf8Text(user), utf8Text(password)}) : std::nullopt;
}

}  // namespace

void PMServerSetPasswordProc(PMPasswordProc ask, void* context) {
    program() = {ask, context};
}

std::optional<ServerLogin> knownLogin() {
    const std::lock_guard lock(known().mutex);
    return known().login;
}

std::optional<ServerLogin> askForLogin(const LoginQuestion& question) {
    if (auto login = question.isAgain ? std::nullopt : knownLogin()) {
        return login;
    }
    auto login = deskOfThread == nullptr ? askUser(question) : deskOfThread->ask(question);
    const std::lock_guard lock(known().mutex);
    known().login = login;
    return login;
}

void LoginDesk::use(LoginDesk* desk) {
    deskOfThread = desk;
}

std::optional<ServerLogin> LoginDesk::ask(const LoginQuestion& question) {
    std::unique_lock lock(mutex_);
    question_ = isClosed_ ? nullptr : &question;
    answer_.reset();
    changed_.notify_all();
    changed_.wait(lock, [this] { return question_ == nullptr; });
    return answer_;
}

void LoginDesk::leave() {
    const std::lock_guard lock(mutex_);
    hasLeft_ = true;
    changed_.notify_all();
}

bool LoginDesk::serve(std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex_);
    while (changed_.wait_for(lock, patience, [this] { return hasLeft_ || question_ != nullptr; })) {
        if (hasLeft_) {
            return true;
        }
        const LoginQuestion question = *question_;
        lock.unlock();
        auto answer = askUser(question);
        lock.lock();
        answer_ = std::move(answer);
        question_ = nullptr;
        changed_.notify_all();
    }
    isClosed_ = true;
    return false;
}

void LoginDesk::close() {
    const std::lock_guard lock(mutex_);
    isClosed_ = true;
}
