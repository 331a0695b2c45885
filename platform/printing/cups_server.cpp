#include "platform/printing/cups_server.h"

#include "platform/printing/PMPrinter.h"
#include "platform/printing/last_error.h"
#include "platform/printing/saved_options.h"
#include "platform/printing/server_connection.h"

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <string_view>
#include <thread>

namespace {

// Beyond the connection's own limit, which is the one that is usually met.
constexpr auto kGrace = std::chrono::milliseconds(300);

using DefaultQueue = ServerAnswer<std::string>;
using FetchedQueue = ServerAnswer<QueueDescription>;
using ExaminedQueue = ServerAnswer<QueueState>;

/// Asks in a thread of its own, which may outlive the one that waits for the answer.
template <typename Answer>
std::future<Answer> askAside(std::function<Answer()> ask) {
    std::promise<Answer> promise;
    std::future<Answer> answer = promise.get_future();
    std::thread([ask = std::move(ask), promise = std::move(promise)]() mutable {
        try {
            promise.set_value(ask());
        } catch (...) {
            promise.set_exception(std::current_exception());
        }
    }).detach();
    return answer;
}

template <typename Answer>
Answer answerInTime(std::future<Answer> answer, int timeoutMilliseconds) {
    if (answer.wait_for(std::chrono::milliseconds(timeoutMilliseconds) + kGrace) != std::future_status::ready) {
        return {kPMServerNotResponding, ServerConnection::silence(), {}};
    }
    return answer.get();
}

/// Whether the last request got an answer; a server without queues, or without a default one, says "not found".
bool wasAnswered() {
    const ipp_status_t status = cupsLastError();
    return status <= IPP_STATUS_OK_EVENTS_COMPLETE || status == IPP_STATUS_ERROR_NOT_FOUND;
}

// ---- Names

/// The server's default queue; nothing when the server does not answer.
std::optional<std::string> askForDefault(ServerConnection& server) {
    const IPPMessage answer = server.ask(IPP_OP_CUPS_GET_DEFAULT, nullptr, {"printer-name"});
    if (!answer || !wasAnswered()) {
        return std::nullopt;
    }
    ipp_attribute_t* const name = ippFindAttribute(answer.get(), "printer-name", IPP_TAG_NAME);
    return name == nullptr ? std::string() : std::string(ippGetString(name, 0, nullptr));
}

DefaultQueue askForUsersDefault(int timeoutMilliseconds) {
    if (std::string saved = SavedDestinations::read().defaultName(); !saved.empty()) {
        return {noErr, {}, std::move(saved)};
    }
    ServerConnection server(timeoutMilliseconds);
    auto name = server.get() == nullptr ? std::nullopt : askForDefault(server);
    return name ? DefaultQueue{noErr, {}, std::move(*name)}
                : DefaultQueue{kPMServerNotResponding, ServerConnection::silence(), {}};
}

std::vector<std::string> namesIn(ipp_t* answer) {
    std::vector<std::string> names;
    for (ipp_attribute_t* name = ippFindAttribute(answer, "printer-name", IPP_TAG_NAME); name != nullptr;
         name = ippFindNextAttribute(answer, "printer-name", IPP_TAG_NAME)) {
        names.emplace_back(ippGetString(name, 0, nullptr));
    }
    return names;
}

QueueNames askForQueues(int timeoutMilliseconds) {
    QueueNames silent{kPMServerNotResponding, ServerConnection::silence(), {}};
    ServerConnection server(timeoutMilliseconds);
    if (server.get() == nullptr) {
        return silent;
    }
    const IPPMessage answer = server.ask(IPP_OP_CUPS_GET_PRINTERS, nullptr, {"printer-name"});
    if (!answer || !wasAnswered()) {
        return silent;
    }
    const SavedDestinations saved = SavedDestinations::read();
    QueueNames found;
    for (const std::string& queue : namesIn(answer.get())) {
        found.value.push_back(queue);
        std::ranges::move(saved.instancesOf(queue), std::back_inserter(found.value));
    }
    std::string first = saved.defaultName();
    if (first.empty()) {
        first = askForDefault(server).value_or("");
    }
    const auto isFirst = [&](const std::string& name) { return isSameOption(name, first); };
    std::stable_partition(found.value.begin(), found.value.end(), isFirst);
    return found;
}

// ---- One queue

/// The server's defaults that it applies to each job by itself, whoever prints it, or that only say what the PPD's own
/// say in other words.
bool isServersOwn(std::string_view name) {
    static constexpr std::array<std::string_view, 6> kNames{"document-format",  "finishings",    "media-col",
                                                            "print-color-mode", "print-quality", "output-mode"};
    return name.starts_with("job-") || name.starts_with("notify-") || std::ranges::find(kNames, name) != kNames.end();
}

/// The attribute's values as an option has them; empty for what cannot stand there.
std::string optionValue(ipp_attribute_t* attribute) {
    std::string text;
    for (int i = 0; i < ippGetCount(attribute); ++i) {
        text += i > 0 ? "," : "";
        switch (ippGetValueTag(attribute)) {
            case IPP_TAG_INTEGER:
            case IPP_TAG_ENUM:
                text += std::to_string(ippGetInteger(attribute, i));
                break;
            case IPP_TAG_BOOLEAN:
                text += ippGetBoolean(attribute, i) != 0 ? "true" : "false";
                break;
            case IPP_TAG_KEYWORD:
            case IPP_TAG_NAME:
                text += ippGetString(attribute, i, nullptr);
                break;
            default:
                return {};
        }
    }
    return text;
}

/// The defaults in what a server says of a queue. It may name one twice: as somebody has set it for the queue, then
/// as its PPD has it.
OptionList defaultsIn(ipp_t* answer) {
    static constexpr std::string_view kSuffix = "-default";
    OptionList defaults;
    for (ipp_attribute_t* each = ippFirstAttribute(answer); each != nullptr; each = ippNextAttribute(answer)) {
        std::string name = ippGetName(each) == nullptr ? "" : ippGetName(each);
        if (!name.ends_with(kSuffix)) {
            continue;
        }
        name.resize(name.size() - kSuffix.size());
        std::string value = optionValue(each);
        if (!value.empty() && !isServersOwn(name) && findOption(defaults, name) == nullptr) {
            defaults.emplace_back(std::move(name), std::move(value));
        }
    }
    return defaults;
}

/// A copy of the queue's PPD.
FetchedQueue fetchPPD(ServerConnection& server, const std::string& queue) {
    FetchedQueue fetched;
    fetched.value.ppd = std::make_shared<PrivateFile>(PrivateFile::Place::memory);
    if (const int error = fetched.value.ppd->error(); error != 0) {
        return {kPMUnusableDescription, "no memory for its PPD: " + systemReason(error), {}};
    }
    // Our own request instead of cupsGetPPD3, which for a shared queue turns to a further host with no time limit.
    const http_status_t status =
        cupsGetFd(server.get(), ("/printers/" + queue + ".ppd").c_str(), fetched.value.ppd->descriptor());
    if (status == HTTP_STATUS_ERROR || status == HTTP_STATUS_SERVICE_UNAVAILABLE) {
        return {kPMServerNotResponding, ServerConnection::silence(), {}};
    }
    if (status != HTTP_STATUS_OK) {
        return {kPMUnusableDescription, "the queue has no PPD (" + std::string(httpStatus(status)) + ")", {}};
    }
    return fetched;
}

/// What the server says of a queue when it is asked for the attributes.
ServerAnswer<IPPMessage> askAboutQueue(ServerConnection& server, const std::string& queue,
                                       std::initializer_list<const char*> attributes) {
    IPPMessage answer;
    if (server.get() != nullptr) {
        answer = server.ask(IPP_OP_GET_PRINTER_ATTRIBUTES, queueAddress(queue).c_str(), attributes);
    }
    if (!answer || !wasAnswered()) {
        return {kPMServerNotResponding, ServerConnection::silence(), {}};
    }
    if (cupsLastError() == IPP_STATUS_ERROR_NOT_FOUND) {
        return {kPMNoSuchPrinter, "the print server has no such queue", {}};
    }
    return {noErr, {}, std::move(answer)};
}

FetchedQueue askForQueue(const std::string& destination) {
    const std::string queue = queueOf(destination);
    const SavedDestinations saved = SavedDestinations::read();
    if (destination != queue && !saved.knows(destination)) {
        return {kPMNoSuchPrinter, "no options are saved under this name (lpoptions)", {}};
    }
    ServerConnection server(kServerTimeoutMilliseconds);
    const auto answer = askAboutQueue(server, queue, {"printer-defaults"});
    if (answer.status != noErr) {
        return {answer.status, answer.reason, {}};
    }
    FetchedQueue fetched = fetchPPD(server, queue);
    fetched.value.options = defaultsIn(answer.value.get());
    setOptions(&fetched.value.options, saved.optionsOf(destination));
    return fetched;
}

// ---- Its state

std::string textIn(ipp_t* answer, const char* name) {
    ipp_attribute_t* const text = ippFindAttribute(answer, name, IPP_TAG_TEXT);
    return text == nullptr ? std::string() : std::string(ippGetString(text, 0, nullptr));
}

ExaminedQueue askForState(const std::string& queue, const PrivateFile& ppd) {
    ServerConnection server(kServerTimeoutMilliseconds);
    const auto answer =
        askAboutQueue(server, queue, {"printer-is-accepting-jobs", "printer-state", "printer-state-message"});
    if (answer.status != noErr) {
        return {answer.status, answer.reason, {}};
    }
    ExaminedQueue examined;
    ipp_t* const said = answer.value.get();
    if (ipp_attribute_t* const accepts = ippFindAttribute(said, "printer-is-accepting-jobs", IPP_TAG_BOOLEAN)) {
        examined.value.takesJobs = ippGetBoolean(accepts, 0) != 0;
    }
    if (ipp_attribute_t* const state = ippFindAttribute(said, "printer-state", IPP_TAG_ENUM)) {
        examined.value.prints = ippGetInteger(state, 0) != IPP_PSTATE_STOPPED;
    }
    examined.value.message = textIn(said, "printer-state-message");
    const FetchedQueue now = fetchPPD(server, queue);
    if (now.status == kPMServerNotResponding) {
        return {now.status, now.reason, {}};
    }
    examined.value.isOfSamePPD = now.status == noErr && now.value.ppd->hasSameContent(ppd);
    return examined;
}

}  // namespace

std::future<QueueNames> listQueues(int timeoutMilliseconds) {
    return askAside<QueueNames>([timeoutMilliseconds] { return askForQueues(timeoutMilliseconds); });
}

ServerAnswer<std::string> findDefaultQueue(int timeoutMilliseconds) {
    return answerInTime(
        askAside<DefaultQueue>([timeoutMilliseconds] { return askForUsersDefault(timeoutMilliseconds); }),
        timeoutMilliseconds);
}

ServerAnswer<QueueDescription> fetchQueue(const std::string& destination) {
    return answerInTime(askAside<FetchedQueue>([destination] { return askForQueue(destination); }),
                        kServerTimeoutMilliseconds);
}

ServerAnswer<QueueState> examineQueue(const std::string& queue, const std::shared_ptr<PrivateFile>& ppd) {
    return answerInTime(askAside<ExaminedQueue>([queue, ppd] { return askForState(queue, *ppd); }),
                        kServerTimeoutMilliseconds);
}
