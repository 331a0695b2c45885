#include "platform/printing/job_sending.h"

#include "platform/printing/last_error.h"
#include "platform/printing/server_connection.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>

namespace {

constexpr int kConnectMilliseconds = 3000;
// For each step: a busy server may look at a job for a while.
constexpr int kStepMilliseconds = 20000;

/// Options as the library has them.
class Options {
public:
    explicit Options(const OptionList& options) {
        for (const auto& [name, value] : options) {
            count_ = cupsAddOption(name.c_str(), value.c_str(), count_, &list_);
        }
    }
    ~Options() { cupsFreeOptions(count_, list_); }
    Options(const Options&) = delete;
    Options& operator=(const Options&) = delete;

    [[nodiscard]] int count() const { return count_; }
    [[nodiscard]] cups_option_t* list() const { return list_; }

private:
    cups_option_t* list_ = nullptr;
    int count_ = 0;
};

/// Why a step failed that ended with the status.
std::string faultOf(const ServerConnection& server, http_status_t status) {
    if (status >= HTTP_STATUS_BAD_REQUEST) {
        return httpStatus(status);
    }
    const ipp_status_t error = cupsLastError();
    const bool isAnswer = error >= IPP_STATUS_ERROR_BAD_REQUEST && error != IPP_STATUS_ERROR_INTERNAL &&
                          error != IPP_STATUS_ERROR_SERVICE_UNAVAILABLE;
    if (isAnswer || (status != HTTP_STATUS_ERROR && httpError(server.get()) == 0)) {
        return cupsLastErrorString();
    }
    return server.isOverdue() ? ServerConnection::silence()
                              : ServerConnection::name() + " went away before it had the whole job";
}

/// Asks the server to take a document, as cupsStartDocument does, which can say neither that it is packed nor how long
/// it is: a server that takes no such document says so at once.
http_status_t startDocument(ServerConnection& server, const std::string& queue, int job, const SentDocument& document,
                            std::size_t size) {
    const IPPMessage request(ippNewRequest(IPP_OP_SEND_DOCUMENT));
    const auto add = [&](ipp_tag_t tag, const char* name, const std::string& value) {
        ippAddString(request.get(), IPP_TAG_OPERATION, tag, name, nullptr, value.c_str());
    };
    add(IPP_TAG_URI, "printer-uri", queueAddress(queue));
    ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", job);
    add(IPP_TAG_NAME, "requesting-user-name", cupsUser());
    add(IPP_TAG_NAME, "document-name", document.title);
    add(IPP_TAG_MIMETYPE, "document-format", document.contentType);
    if (document.isPacked) {
        add(IPP_TAG_KEYWORD, "compression", "gzip");
    }
    ippAddBoolean(request.get(), IPP_TAG_OPERATION, "last-document", 1);
    return cupsSendRequest(server.get(), request.get(), ("/printers/" + queue).c_str(),
                           ippLength(request.get()) + size);
}

/// Why the document of a job could not be sent; nothing when it could.
std::optional<std::string> sendDocument(ServerConnection& server, const std::string& queue, int job,
                                        const SentDocument& document) {
    std::ifstream file(document.file, std::ios::binary);
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(document.file, error);
    if (!file || error) {
        return document.title + ": " + (error ? error.message() : systemReason(errno));
    }
    server.extend(kStepMilliseconds);
    http_status_t status = startDocument(server, queue, job, document, size);
    std::array<char, 65536> bytes;
    while (status == HTTP_STATUS_CONTINUE && file) {
        file.read(bytes.data(), bytes.size());
        if (file.gcount() > 0) {
            server.extend(kStepMilliseconds);
            status = cupsWriteRequestData(server.get(), bytes.data(), static_cast<std::size_t>(file.gcount()));
        }
    }
    if (file.bad()) {
        return document.file + ": cannot be read to its end";
    }
    if (status >= HTTP_STATUS_BAD_REQUEST) {
        return faultOf(server, status);
    }
    server.extend(kStepMilliseconds);
    const IPPMessage answer(cupsGetResponse(server.get(), ("/printers/" + queue).c_str()));
    const bool isTaken = status == HTTP_STATUS_CONTINUE && answer && cupsLastError() <= IPP_STATUS_OK_EVENTS_COMPLETE;
    return isTaken ? std::nullopt : std::optional(faultOf(server, status));
}

void forgetJob(const std::string& queue, int job) {
    ServerConnection server(kConnectMilliseconds);
    if (server.get() != nullptr) {
        cupsCancelJob2(server.get(), queue.c_str(), job, 1);
    }
}

}  // namespace

std::optional<int> sendToQueue(const std::string& queue, const SentDocument& document, const OptionList& options,
                               std::string* reason) {
    ServerConnection server(kConnectMilliseconds);
    if (server.get() == nullptr) {
        *reason = ServerConnection::silence();
        return std::nullopt;
    }
    server.extend(kStepMilliseconds);
    const Options list(options);
    const int job = cupsCreateJob(server.get(), queue.c_str(), document.title.c_str(), list.count(), list.list());
    if (job == 0) {
        *reason = faultOf(server, HTTP_STATUS_CONTINUE);
        return std::nullopt;
    }
    if (auto fault = sendDocument(server, queue, job, document)) {
        forgetJob(queue, job);
        *reason = std::move(*fault);
        return std::nullopt;
    }
    return job;
}
