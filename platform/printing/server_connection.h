// One conversation with the print server that the user's settings name (CUPS_SERVER, client.conf).
#pragma once

#include "platform/printing/option_list.h"

#include <chrono>
#include <memory>

#include <cups/cups.h>

struct DeleteIPP {
    void operator()(ipp_t* message) const { ippDelete(message); }
};
using IPPMessage = std::unique_ptr<ipp_t, DeleteIPP>;

/// A connection on which nothing waits beyond its deadline. The library repeats a request that got no answer, so a
/// limit for each wait alone would add up to minutes.
class ServerConnection {
public:
    explicit ServerConnection(int timeoutMilliseconds);
    ~ServerConnection() { httpClose(http_); }
    ServerConnection(const ServerConnection&) = delete;
    ServerConnection& operator=(const ServerConnection&) = delete;

    /// Null when the server cannot be reached.
    [[nodiscard]] http_t* get() const { return http_; }
    [[nodiscard]] bool isOverdue() const { return Clock::now() >= deadline_; }
    void extend(int milliseconds) { deadline_ = Clock::now() + std::chrono::milliseconds(milliseconds); }

    /// The answer to a question about the printer at the address (null for one about the server), with the attributes
    /// that are asked for; null when there is none. cupsLastError() says how it went.
    IPPMessage ask(ipp_op_t operation, const char* printerAddress, std::initializer_list<const char*> attributes);

    /// "the print server NAME", with its port where that is not the usual one.
    static std::string name();
    /// "the print server NAME does not answer"
    static std::string silence() { return name() + " does not answer"; }

private:
    using Clock = std::chrono::steady_clock;

    http_t* http_ = nullptr;
    Clock::time_point deadline_;
};

/// The IPP address of a queue.
std::string queueAddress(const std::string& queue);
