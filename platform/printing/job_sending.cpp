#include "platform/printing/job_sending.h"

#include "platform/foundation/message.h"
#include "platform/printing/cups_library.h"
#include "platform/printing/interruption.h"
#include "platform/printing/last_error.h"
#include "platform/printing/server_connection.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>

namespace {

/// Options as the library has them.
class Options {
public:
    explicit Options(const OptionList& options) {
        for (const auto& [name, value] : options) {
            count_ = cups().cupsAddOption(name.c_str(), value.c_str(), count_, &list_);
        }
    }
    ~Options() { cups().cupsFreeOptions(count_, list_); }
    Options(const Options&) = delete;
    Options& operator=(const Options&) = delete;

    [[nodiscard]] int count() const { return count_; }
    [[nodiscard]] cups_option_t* list() const { return list_; }

private:
    cups_option_t* list_ = nullptr;
    int count_ = 0;
};

/// Why a step failed, and whether the server may have done it all the same: it has not said so, and had what it needs.
struct Fault {
    std::string reason;
    bool isOpen;
};

Fault faultOf(const ServerConnection& server, http_status_t status) {
    if (status >= HTTP_STATUS_BAD_REQUEST && status < HTTP_STATUS_CUPS_AUTHORIZATION_CANCELED &&
        status != HTTP_STATUS_UNAUTHORIZED) {
        return {cups().httpStatus(status), false};
    }
    return {server.fault(), !ServerConnection::wasRefused()};
}

/// Makes a job without a document and returns its number; 0 for none. The library's own cupsCreateJob first asks where
/// the queue is, on connections of its own without any deadline when the answer makes no sense.
int createJob(ServerConnection& server, const std::string& queue, const std::string& title, const OptionList& options) {
    ipp_t* const request = cups().ippNewRequest(IPP_OP_CREATE_JOB);
    cups().ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, queueAddress(queue).c_str());
    cups().ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cups().cupsUser());
    cups().ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_NAME, "job-name", nullptr, title.c_str());
    const Options list(options);
    for (const ipp_tag_t group : {IPP_TAG_OPERATION, IPP_TAG_JOB, IPP_TAG_SUBSCRIPTION}) {
        cups().cupsEncodeOptions2(request, list.count(), list.list(), group);
    }
    const IPPMessage answer(cups().cupsDoRequest(server.get(), request, ("/printers/" + queue).c_str()));
    ipp_attribute_t* const job = cups().ippFindAttribute(answer.get(), "job-id", IPP_TAG_INTEGER);
    return job != nullptr && cups().cupsLastError() <= IPP_STATUS_OK_EVENTS_COMPLETE ? cups().ippGetInteger(job, 0) : 0;
}

/// Asks the server to take a document, as cupsStartDocument does, which can say neither that it is packed nor how long
/// it is: a server that takes no such document says so at once.
http_status_t startDocument(ServerConnection& server, const std::string& queue, int job, const SentDocument& document,
                            std::size_t size) {
    const IPPMessage request(cups().ippNewRequest(IPP_OP_SEND_DOCUMENT));
    const auto add = [&](ipp_tag_t tag, const char* name, const std::string& value) {
        cups().ippAddString(request.get(), IPP_TAG_OPERATION, tag, name, nullptr, value.c_str());
    };
    add(IPP_TAG_URI, "printer-uri", queueAddress(queue));
    cups().ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", job);
    add(IPP_TAG_NAME, "requesting-user-name", cups().cupsUser());
    add(IPP_TAG_NAME, "document-name", document.title);
    add(IPP_TAG_MIMETYPE, "document-format", document.contentType);
    if (document.isPacked) {
        add(IPP_TAG_KEYWORD, "compression", "gzip");
    }
    cups().ippAddBoolean(request.get(), IPP_TAG_OPERATION, "last-document", 1);
    return cups().cupsSendRequest(server.get(), request.get(), ("/printers/" + queue).c_str(),
                                  cups().ippLength(request.get()) + size);
}

/// Why the document of a job could not be sent; nothing when it could.
std::optional<Fault> sendDocument(ServerConnection& server, const std::string& queue, int job,
                                  const SentDocument& document) {
    std::ifstream file(document.file, std::ios::binary);
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(document.file, error);
    if (!file || error) {
        return Fault{document.title + ": " + (systemMessage(error ? error.value() : errno)), false};
    }
    const ServerPatience& patience = serverPatience();
    server.allow(patience.stepMilliseconds);
    http_status_t status = startDocument(server, queue, job, document, size);
    const auto start = std::chrono::steady_clock::now();
    std::uintmax_t sent = 0;
    std::array<char, 65536> bytes;
    while (status == HTTP_STATUS_CONTINUE && sent < size && file) {
        file.read(bytes.data(), static_cast<std::streamsize>(std::min<std::uintmax_t>(bytes.size(), size - sent)));
        // Who is slow at first may make up for it.
        const std::chrono::duration<double, std::milli> passed = std::chrono::steady_clock::now() - start;
        const double allowed = patience.stepMilliseconds +
                               1000.0 * static_cast<double>(sent) / patience.slowestBytesPerSecond - passed.count();
        server.allow(static_cast<int>(std::min(allowed, 1e9)));
        sent += static_cast<std::uintmax_t>(file.gcount());
        status = cups().cupsWriteRequestData(server.get(), bytes.data(), static_cast<std::size_t>(file.gcount()));
    }
    if (status == HTTP_STATUS_CONTINUE && sent < size) {
        return Fault{document.title + ": " + messageText("cannot be read to its end"), false};
    }
    if (status == HTTP_STATUS_ERROR && !server.isOverdue()) {
        // Who refuses a document in its middle says why and closes; what it said can still be read.
        const IPPMessage answer(cups().cupsGetResponse(server.get(), nullptr));
        status = cups().httpGetStatus(server.get());
    }
    if (status >= HTTP_STATUS_BAD_REQUEST) {
        return faultOf(server, status);
    }
    if (sent < size && !ServerConnection::wasRefused()) {
        return Fault{server.isOverdue() ? messageText("the print server %1 takes the document too slowly",
                                                      {ServerConnection::address()})
                                        : messageText("the print server %1 went away before it had the whole job",
                                                      {ServerConnection::address()}),
                     false};
    }
    server.allow(patience.stepMilliseconds);
    const IPPMessage answer(cups().cupsGetResponse(server.get(), ("/printers/" + queue).c_str()));
    const bool isTaken =
        status == HTTP_STATUS_CONTINUE && answer && cups().cupsLastError() <= IPP_STATUS_OK_EVENTS_COMPLETE;
    return isTaken ? std::nullopt : std::optional(faultOf(server, status));
}

std::string jobAddress(int job) {
    std::array<char, HTTP_MAX_URI> address{};
    cups().httpAssembleURIf(HTTP_URI_CODING_ALL, address.data(), address.size(), "ipp", nullptr, "localhost",
                            cups().ippPort(), "/jobs/%d", job);
    return address.data();
}

/// Whether the server has the document of a job; nothing when it does not say.
std::optional<bool> hasDocument(int job) {
    ServerConnection server(serverPatience().questionMilliseconds);
    const IPPMessage answer = server.get() == nullptr ? nullptr
                                                      : server.ask(IPP_OP_GET_JOB_ATTRIBUTES, jobAddress(job).c_str(),
                                                                   {"number-of-documents"});
    if (!answer || cups().cupsLastError() > IPP_STATUS_OK_EVENTS_COMPLETE) {
        return std::nullopt;
    }
    ipp_attribute_t* const count = cups().ippFindAttribute(answer.get(), "number-of-documents", IPP_TAG_INTEGER);
    return count != nullptr && cups().ippGetInteger(count, 0) > 0;
}

/// Takes a job back. False when the server does not say that it has.
bool forgetJob(const std::string& queue, int job) {
    ServerConnection server(serverPatience().questionMilliseconds, ConnectionWatch::Signals::ignored);
    return server.get() != nullptr &&
           (cups().cupsCancelJob2(server.get(), queue.c_str(), job, 1) <= IPP_STATUS_OK_EVENTS_COMPLETE ||
            cups().cupsLastError() == IPP_STATUS_ERROR_NOT_FOUND);
}

/// Takes back what a server may have made when its answer was lost: jobs of the user's own, of that title and without a
/// document.
void forgetUnansweredJob(const std::string& queue, const std::string& title) {
    cups_job_t* jobs = nullptr;
    ServerConnection server(serverPatience().questionMilliseconds, ConnectionWatch::Signals::ignored);
    const int count =
        server.get() == nullptr ? 0 : cups().cupsGetJobs2(server.get(), &jobs, queue.c_str(), 1, CUPS_WHICHJOBS_ACTIVE);
    for (int i = 0; i < count; ++i) {
        if (jobs[i].title == title && hasDocument(jobs[i].id) == false) {
            forgetJob(queue, jobs[i].id);
        }
    }
    cups().cupsFreeJobs(std::max(count, 0), jobs);
}

std::string jobName(const std::string& queue, int job) {
    return queue + "-" + std::to_string(job);
}

}  // namespace

std::optional<int> sendToQueue(const std::string& queue, const SentDocument& document, const OptionList& options,
                               std::string* reason) {
    std::optional<ServerConnection> server(std::in_place, serverPatience().questionMilliseconds);
    if (server->get() == nullptr) {
        *reason = server->fault();
        return std::nullopt;
    }
    server->allow(serverPatience().stepMilliseconds);
    const int job = createJob(*server, queue, document.title, options);
    if (job == 0) {
        const Fault fault = faultOf(*server, HTTP_STATUS_CONTINUE);
        server.reset();
        if (fault.isOpen) {
            forgetUnansweredJob(queue, document.title);
        }
        *reason = fault.reason;
        return std::nullopt;
    }
    const auto fault = sendDocument(*server, queue, job, document);
    server.reset();
    if (!fault) {
        return job;
    }
    if (fault->isOpen && !isInterrupted() && hasDocument(job) == true) {
        return job;
    }
    *reason = fault->reason;
    if (!forgetJob(queue, job) && fault->isOpen) {
        *reason =
            messageText("%1; it does not say whether it has all of %2: look at the queue before you print it again",
                        {*reason, jobName(queue, job)});
    }
    return std::nullopt;
}
