#include "platform/printing/server_connection.h"

#include "platform/foundation/message.h"
#include "platform/printing/cups_library.h"
#include "platform/printing/interruption.h"
#include "platform/printing/server_login.h"

#include <array>

ServerPatience& serverPatience() {
    static ServerPatience patience;
    return patience;
}

namespace {

/// Connects in a thread of its own, which is left alone when it takes too long: the look-up of a name and the beginning
/// of encryption have no limit. Null when it does.
http_t* connectInTime(int milliseconds) {
    struct Attempt {
        std::mutex mutex;
        std::condition_variable changed;
        bool isOver = false;
        bool isWanted = true;
        http_t* made = nullptr;
    };
    const auto attempt = std::make_shared<Attempt>();
    std::thread([attempt, milliseconds, server = std::string(cups().cupsServer()), port = cups().ippPort(),
                 encryption = cups().cupsEncryption()] {
        http_t* const made =
            cups().httpConnect2(server.c_str(), port, nullptr, AF_UNSPEC, encryption, 1, milliseconds, nullptr);
        const std::lock_guard lock(attempt->mutex);
        attempt->isOver = true;
        attempt->made = made;
        attempt->changed.notify_all();
        if (!attempt->isWanted) {
            cups().httpClose(made);
        }
    }).detach();
    std::unique_lock lock(attempt->mutex);
    attempt->isWanted = attempt->changed.wait_for(lock, std::chrono::milliseconds(milliseconds),
                                                  [&attempt] { return attempt->isOver; });
    return attempt->isWanted ? attempt->made : nullptr;
}

}  // namespace

ServerConnection::ServerConnection(int timeoutMilliseconds, ConnectionWatch::Signals signals)
    : http_(connectInTime(timeoutMilliseconds)) {
    if (http_ == nullptr) {
        return;
    }
    watch_.emplace(http_, timeoutMilliseconds, signals);
    // Without this the library would wait for a silent server as long as it likes.
    constexpr double kSecondsBetweenLooks = 0.1;
    cups().httpSetTimeout(
        http_, kSecondsBetweenLooks,
        [](http_t*, void* watch) { return static_cast<ConnectionWatch*>(watch)->isOver() ? 0 : 1; }, &*watch_);
    cups().cupsSetPasswordCB2(givePassword, this);
    if (const auto login = knownLogin()) {
        cups().cupsSetUser(login->user.c_str());
    }
}

ServerConnection::~ServerConnection() {
    if (http_ != nullptr) {
        cups().cupsSetPasswordCB2(nullptr, nullptr);
        watch_.reset();
        cups().httpClose(http_);
    }
}

const char* ServerConnection::givePassword(const char* prompt, http_t*, const char*, const char*, void* self) {
    auto& connection = *static_cast<ServerConnection*>(self);
    if (connection.watch_->isOver() || isInterrupted()) {
        return nullptr;
    }
    const ConnectionWatch::Pause pause(*connection.watch_);
    cups().cupsSetPasswordCB2(nullptr, nullptr);  // whoever asks on the terminal calls the library
    const auto login = connection.watch_->heedsSignals()
                           ? askForLogin({prompt, address(), cups().cupsUser(), connection.timesAsked_ > 0})
                           : knownLogin();  // nobody is asked for what is only tidied up
    cups().cupsSetPasswordCB2(givePassword, self);
    ++connection.timesAsked_;
    if (!login) {
        return nullptr;
    }
    cups().cupsSetUser(login->user.c_str());
    connection.password_ = login->password;
    return connection.password_.c_str();
}

IPPMessage ServerConnection::ask(ipp_op_t operation, const char* address,
                                 std::initializer_list<const char*> attributes) {
    ipp_t* const request = cups().ippNewRequest(operation);
    if (address != nullptr) {
        const bool isJob = std::string_view(address).find("/jobs/") != std::string_view::npos;
        cups().ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, isJob ? "job-uri" : "printer-uri", nullptr,
                            address);
    }
    cups().ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cups().cupsUser());
    cups().ippAddStrings(request, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes",
                         static_cast<int>(attributes.size()), nullptr, std::data(attributes));
    return IPPMessage(cups().cupsDoRequest(http_, request, "/"));
}

bool ServerConnection::wasRefused() {
    const ipp_status_t error = cups().cupsLastError();
    // Some of the numbers stand for faults that the library has found itself, which may also say nothing.
    return error >= IPP_STATUS_ERROR_BAD_REQUEST && error != IPP_STATUS_ERROR_INTERNAL &&
           error != IPP_STATUS_ERROR_SERVICE_UNAVAILABLE;
}

std::string ServerConnection::fault() const {
    if (http_ == nullptr || watch_->isOver()) {
        return silence();
    }
    switch (cups().cupsLastError()) {
        case IPP_STATUS_ERROR_NOT_AUTHENTICATED:
        case IPP_STATUS_ERROR_CUPS_AUTHENTICATION_CANCELED:
            return timesAsked_ > 1
                       ? messageText("the print server %1 does not accept the user name and password", {address()})
                       : messageText("the print server %1 wants a user name and a password, and was given none",
                                     {address()});
        default:
            return wasRefused() ? messageText("the print server %1: %2", {address(), cups().cupsLastErrorString()})
                                : messageText("the print server %1 broke the connection off", {address()});
    }
}

std::string ServerConnection::silence() {
    return messageText("the print server %1 does not answer", {address()});
}

std::string ServerConnection::address() {
    constexpr int kUsualPort = 631;
    const std::string host = cups().cupsServer();
    return host.starts_with('/') || cups().ippPort() == kUsualPort ? host
                                                                   : host + ":" + std::to_string(cups().ippPort());
}

std::string queueAddress(const std::string& queue) {
    std::array<char, HTTP_MAX_URI> address{};
    cups().httpAssembleURIf(HTTP_URI_CODING_ALL, address.data(), address.size(), "ipp", nullptr, "localhost",
                            cups().ippPort(), "/printers/%s", queue.c_str());
    return address.data();
}
