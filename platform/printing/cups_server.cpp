#include "platform/printing/cups_server.h"

#include "platform/printing/PMPrinter.h"
#include "platform/printing/last_error.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>

#include <cups/cups.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

// A large document may take its time.
constexpr int kSendTimeoutMilliseconds = 10 * 60 * 1000;

using Clock = std::chrono::steady_clock;

/// A connection on which nothing waits beyond its deadline. The library repeats a request that got no answer, so a
/// limit for each wait alone would add up to minutes.
class Connection {
public:
    explicit Connection(int timeoutMilliseconds) {
        // The library would ask for a password on the terminal; a server that wants one refuses the job instead.
        cupsSetPasswordCB2([](const char*, http_t*, const char*, const char*, void*) -> const char* { return nullptr; },
                           nullptr);
        http_ = httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1, timeoutMilliseconds,
                             nullptr);
        extend(timeoutMilliseconds);
        if (http_ != nullptr) {
            constexpr double kSecondsBetweenLooks = 0.1;
            httpSetTimeout(
                http_, kSecondsBetweenLooks,
                [](http_t*, void* deadline) {
                    return Clock::now() < *static_cast<Clock::time_point*>(deadline) ? 1 : 0;
                },
                &deadline_);
        }
    }
    ~Connection() { httpClose(http_); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Null when the server cannot be reached.
    [[nodiscard]] http_t* get() const { return http_; }
    void extend(int milliseconds) { deadline_ = Clock::now() + std::chrono::milliseconds(milliseconds); }

private:
    http_t* http_ = nullptr;
    Clock::time_point deadline_;
};

/// The destinations of a CUPS call, freed with their options.
struct Destinations {
    int count = 0;
    cups_dest_t* list = nullptr;

    explicit Destinations(http_t* http) { count = cupsGetDests2(http, &list); }
    ~Destinations() { cupsFreeDests(count, list); }
    Destinations(const Destinations&) = delete;
    Destinations& operator=(const Destinations&) = delete;
};

std::string silence() {
    return std::string("the print server ") + cupsServer() + " does not answer";
}

OSStatus noAnswer(const std::string& queue) {
    return failWith(kPMServerNotResponding, queue, silence());
}

/// Whether the last request got an answer; a server without queues, or without a default one, says "not found".
bool wasAnswered() {
    const ipp_status_t status = cupsLastError();
    return status <= IPP_STATUS_OK_EVENTS_COMPLETE || status == IPP_STATUS_ERROR_NOT_FOUND;
}

/// Copies the queue's PPD into a new temporary file.
OSStatus fetchPPD(http_t* http, const std::string& queue, std::string* path) {
    std::error_code ignored;
    const auto folder = std::filesystem::temp_directory_path(ignored);
    *path = (folder.empty() ? "/tmp" : folder) / "tavro-queue-XXXXXX";
    const int file = mkostemp(path->data(), O_CLOEXEC);
    if (file < 0) {
        return failWith(kPMUnusableDescription, *path, systemReason(errno));
    }
    // Our own request instead of cupsGetPPD3, which for a shared queue turns to a further host with no time limit.
    const http_status_t status = cupsGetFd(http, ("/printers/" + queue + ".ppd").c_str(), file);
    close(file);
    if (status == HTTP_STATUS_OK) {
        return noErr;
    }
    std::filesystem::remove(*path, ignored);
    if (status == HTTP_STATUS_ERROR || status == HTTP_STATUS_SERVICE_UNAVAILABLE) {
        return noAnswer(queue);
    }
    return failWith(kPMUnusableDescription, queue, "the queue has no PPD (" + std::string(httpStatus(status)) + ")");
}

}  // namespace

std::vector<std::string> listQueues(int timeoutMilliseconds) {
    std::vector<std::string> names;
    const Connection http(timeoutMilliseconds);
    if (http.get() == nullptr) {
        return names;
    }
    const Destinations found(http.get());
    for (int i = 0; i < found.count; ++i) {
        const cups_dest_t& destination = found.list[i];
        if (destination.instance != nullptr) {
            continue;
        }
        names.insert(destination.is_default != 0 ? names.begin() : names.end(), destination.name);
    }
    return names;
}

OSStatus fetchQueue(const std::string& queue, QueueDescription* description) {
    const Connection http(kServerTimeoutMilliseconds);
    if (http.get() == nullptr) {
        return noAnswer(queue);
    }
    // Not cupsGetNamedDest, which spends two minutes on a server that never answers.
    const Destinations destinations(http.get());
    const cups_dest_t* const found = cupsGetDest(queue.c_str(), nullptr, destinations.count, destinations.list);
    if (found == nullptr) {
        return wasAnswered() ? failWith(kPMNoSuchPrinter, queue, "the print server has no such queue")
                             : noAnswer(queue);
    }
    for (int i = 0; i < found->num_options; ++i) {
        description->defaults.emplace_back(found->options[i].name, found->options[i].value);
    }
    return fetchPPD(http.get(), queue, &description->ppdPath);
}

std::optional<int> sendToQueue(const std::string& queue, const std::string& document, const char* contentType,
                               const std::string& title, const OptionList& options, std::string* reason) {
    Connection http(kServerTimeoutMilliseconds);
    if (http.get() == nullptr) {
        *reason = silence();
        return std::nullopt;
    }
    http.extend(kSendTimeoutMilliseconds);
    cups_option_t* list = nullptr;
    int count = cupsAddOption("document-format", contentType, 0, &list);
    for (const auto& [name, value] : options) {
        count = cupsAddOption(name.c_str(), value.c_str(), count, &list);
    }
    const int job = cupsPrintFile2(http.get(), queue.c_str(), document.c_str(), title.c_str(), count, list);
    cupsFreeOptions(count, list);
    if (job == 0) {
        *reason = cupsLastErrorString();
        return std::nullopt;
    }
    return job;
}
