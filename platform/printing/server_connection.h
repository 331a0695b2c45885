// One conversation with the print server that the user's settings name (CUPS_SERVER, client.conf).
#pragma once

#include "platform/printing/connection_watch.h"
#include "platform/printing/cups_library.h"
#include "platform/printing/option_list.h"

#include <memory>
#include <optional>

struct DeleteIPP {
    void operator()(ipp_t* message) const { cups().ippDelete(message); }
};
using IPPMessage = std::unique_ptr<ipp_t, DeleteIPP>;

/// How long a server may take.
struct ServerPatience {
    int questionMilliseconds = 3000;  // for a question, connecting included
    int stepMilliseconds = 20000;     // for each step of a job: a busy server may look at it for a while
    int slowestBytesPerSecond = 65536;
};
/// What holds for the whole program; tests have less.
ServerPatience& serverPatience();

/// A connection on which nothing waits beyond its deadline, whatever the server does meanwhile: the library's own
/// limits count its silence only, and begin anew with each byte and each attempt. A server that wants a password gets
/// the one that the user gives (server_login.h), and what that takes does not count. All of a conversation happens in
/// one thread.
class ServerConnection {
public:
    explicit ServerConnection(int timeoutMilliseconds,
                              ConnectionWatch::Signals signals = ConnectionWatch::Signals::heeded);
    ~ServerConnection();
    ServerConnection(const ServerConnection&) = delete;
    ServerConnection& operator=(const ServerConnection&) = delete;

    /// Null when the server cannot be reached.
    [[nodiscard]] http_t* get() const { return http_; }
    /// Sets the deadline anew, from now on.
    void allow(int milliseconds) { watch_->allow(milliseconds); }
    [[nodiscard]] bool isOverdue() const { return watch_->isOver(); }

    /// The answer to a question about the printer or the job at the address (null for one about the server), with the
    /// attributes that are asked for; null when there is none. cupsLastError() says how it went.
    IPPMessage ask(ipp_op_t operation, const char* address, std::initializer_list<const char*> attributes);

    /// Whether the server itself has said "no" to the last request that failed.
    [[nodiscard]] static bool wasRefused();
    /// Why it did not do what was asked for, in words that name the server.
    [[nodiscard]] std::string fault() const;

    /// The server's host name or socket, with its port where that is not the usual one.
    static std::string address();
    /// "the print server ADDRESS does not answer"
    static std::string silence();

private:
    static const char* givePassword(const char* prompt, http_t* http, const char* method, const char* resource,
                                    void* self);

    http_t* http_ = nullptr;
    std::optional<ConnectionWatch> watch_;
    std::string password_;  // as the library was given it
    int timesAsked_ = 0;
};

/// The IPP address of a queue.
std::string queueAddress(const std::string& queue);
