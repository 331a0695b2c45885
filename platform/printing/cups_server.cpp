#include "platform/printing/cups_server.h"

#include "platform/files/plain_file.h"
#include "platform/foundation/message.h"
#include "platform/printing/PMPrinter.h"
#include "platform/printing/cups_library.h"
#include "platform/printing/last_error.h"
#include "platform/printing/ppd_file.h"
#include "platform/printing/saved_options.h"
#include "platform/printing/server_connection.h"
#include "platform/printing/server_login.h"
#include "platform/printing/settings_option.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <functional>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

#include <fcntl.h>

namespace {

using DefaultQueue = ServerAnswer<std::string>;
using FetchedQueue = ServerAnswer<QueueDescription>;
using ExaminedQueue = ServerAnswer<QueueState>;

/// A question that one thread puts to the server while another waits for the answer, or has stopped waiting. Passwords
/// are asked for at its desk.
template <typename Answer>
class Question {
public:
    std::future<Answer> answer() { return promise_.get_future(); }

    /// For the thread that asks.
    void put(const std::function<Answer()>& ask) {
        LoginDesk::use(&desk_);
        try {
            promise_.set_value(ask());
        } catch (...) {
            promise_.set_exception(std::current_exception());
        }
        desk_.leave();
    }

    /// For the one who waits: whether the answer came within its limit.
    bool serve(int timeoutMilliseconds) {
        return desk_.serve(std::chrono::milliseconds(timeoutMilliseconds) + kServerGrace);
    }
    /// Nobody is to be asked for a password.
    void closeDesk() { desk_.close(); }

private:
    std::promise<Answer> promise_;
    LoginDesk desk_;
};

/// What is awaited of a question.
template <typename Answer>
struct Asked {
    std::shared_ptr<Question<Answer>> question = std::make_shared<Question<Answer>>();
    std::future<Answer> answer = question->answer();

    Answer await(int timeoutMilliseconds) {
        return question->serve(timeoutMilliseconds) ? answer.get()
                                                    : Answer{kPMServerNotResponding, ServerConnection::silence(), {}};
    }
};

/// Asks in a thread of its own, which may outlive the one that waits for the answer.
template <typename Answer>
void askAside(const Asked<Answer>& asked, std::function<Answer()> ask) {
    std::thread([question = asked.question, ask = std::move(ask)] { question->put(ask); }).detach();
}

template <typename Answer>
Answer answerInTime(std::function<Answer()> ask, int timeoutMilliseconds) {
    Asked<Answer> asked;
    askAside(asked, std::move(ask));
    return asked.await(timeoutMilliseconds);
}

/// Whether the last request got what it asked for; a server without queues, or without a default one, says "not found".
bool isFine() {
    const ipp_status_t status = cups().cupsLastError();
    return status <= IPP_STATUS_OK_EVENTS_COMPLETE || status == IPP_STATUS_ERROR_NOT_FOUND;
}

// ---- Names

/// The server's default queue; nothing when the server does not answer.
std::optional<std::string> askForDefault(ServerConnection& server) {
    const IPPMessage answer = server.ask(IPP_OP_CUPS_GET_DEFAULT, nullptr, {"printer-name"});
    if (!answer || !isFine()) {
        return std::nullopt;
    }
    ipp_attribute_t* const name = cups().ippFindAttribute(answer.get(), "printer-name", IPP_TAG_NAME);
    return name == nullptr ? std::string() : std::string(cups().ippGetString(name, 0, nullptr));
}

/// A conversation that may go on with a further question.
using Conversation = std::optional<ServerConnection>;

DefaultQueue askForUsersDefault(Conversation* server, int timeoutMilliseconds) {
    if (std::string saved = SavedDestinations::read().defaultName(); !saved.empty()) {
        return {noErr, {}, std::move(saved)};
    }
    server->emplace(timeoutMilliseconds);
    auto name = (*server)->get() == nullptr ? std::nullopt : askForDefault(**server);
    return name ? DefaultQueue{noErr, {}, std::move(*name)}
                : DefaultQueue{kPMServerNotResponding, (*server)->fault(), {}};
}

std::vector<std::string> namesIn(ipp_t* answer) {
    std::vector<std::string> names;
    for (ipp_attribute_t* name = cups().ippFindAttribute(answer, "printer-name", IPP_TAG_NAME); name != nullptr;
         name = cups().ippFindNextAttribute(answer, "printer-name", IPP_TAG_NAME)) {
        names.emplace_back(cups().ippGetString(name, 0, nullptr));
    }
    return names;
}

QueueNames askForQueues(int timeoutMilliseconds) {
    ServerConnection server(timeoutMilliseconds);
    const IPPMessage answer =
        server.get() == nullptr ? nullptr : server.ask(IPP_OP_CUPS_GET_PRINTERS, nullptr, {"printer-name"});
    if (!answer || !isFine()) {
        return {kPMServerNotResponding, server.fault(), {}};
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
    for (int i = 0; i < cups().ippGetCount(attribute); ++i) {
        text += i > 0 ? "," : "";
        switch (cups().ippGetValueTag(attribute)) {
            case IPP_TAG_INTEGER:
            case IPP_TAG_ENUM:
                text += std::to_string(cups().ippGetInteger(attribute, i));
                break;
            case IPP_TAG_BOOLEAN:
                text += cups().ippGetBoolean(attribute, i) != 0 ? "true" : "false";
                break;
            case IPP_TAG_KEYWORD:
            case IPP_TAG_NAME:
                text += cups().ippGetString(attribute, i, nullptr);
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
    std::set<std::string, OptionOrder> known;
    for (ipp_attribute_t* each = cups().ippFirstAttribute(answer); each != nullptr;
         each = cups().ippNextAttribute(answer)) {
        std::string name = cups().ippGetName(each) == nullptr ? "" : cups().ippGetName(each);
        if (!name.ends_with(kSuffix)) {
            continue;
        }
        name.resize(name.size() - kSuffix.size());
        std::string value = optionValue(each);
        if (!value.empty() && !isServersOwn(name) && known.insert(name).second) {
            defaults.emplace_back(std::move(name), std::move(value));
        }
    }
    return defaults;
}

/// A copy of the queue's PPD.
FetchedQueue fetchPPD(ServerConnection& server, const std::string& queue) {
    FetchedQueue fetched;
    fetched.value.ppd = std::make_shared<PrivateFile>(PrivateFile::Place::memory);
    const int file = fetched.value.ppd->descriptor();
    // The library writes on without a look whether it could: a file that cannot grow ends what never ends.
    if (ftruncate(file, kPPDMaximumBytes + 1) != 0 || fcntl(file, F_ADD_SEALS, F_SEAL_GROW) != 0) {
        return {kPMUnusableDescription, messageText("no memory for its PPD: %1", {systemMessage(errno)}), {}};
    }
    // Our own request instead of cupsGetPPD3, which for a shared queue turns to a further host with no time limit.
    const http_status_t status = cups().cupsGetFd(server.get(), ("/printers/" + queue + ".ppd").c_str(), file);
    const off_t size = lseek(file, 0, SEEK_CUR);
    if (status != HTTP_STATUS_OK && status != HTTP_STATUS_ERROR && status != HTTP_STATUS_SERVICE_UNAVAILABLE &&
        status != HTTP_STATUS_CUPS_AUTHORIZATION_CANCELED) {
        return {kPMUnusableDescription, messageText("the queue has no PPD (%1)", {cups().httpStatus(status)}), {}};
    }
    if (size > kPPDMaximumBytes) {
        return {kPMUnusableDescription, messageText("its PPD %1", {readFault(EFBIG, kPPDMaximumBytes)}), {}};
    }
    const off_t announced = cups().httpGetLength2(server.get());
    if (status != HTTP_STATUS_OK || cups().httpGetState(server.get()) != HTTP_STATE_WAITING ||
        (announced > 0 && announced != size)) {
        return {kPMServerNotResponding, server.fault(), {}};
    }
    return ftruncate(file, size) == 0
               ? fetched
               : FetchedQueue{kPMUnusableDescription, messageText("its PPD: %1", {systemMessage(errno)}), {}};
}

/// What the server says of a queue when it is asked for the attributes.
ServerAnswer<IPPMessage> askAboutQueue(ServerConnection& server, const std::string& queue,
                                       std::initializer_list<const char*> attributes) {
    IPPMessage answer;
    if (server.get() != nullptr) {
        answer = server.ask(IPP_OP_GET_PRINTER_ATTRIBUTES, queueAddress(queue).c_str(), attributes);
    }
    if (!answer || !isFine()) {
        return {kPMServerNotResponding, server.fault(), {}};
    }
    if (cups().cupsLastError() == IPP_STATUS_ERROR_NOT_FOUND) {
        return {kPMNoSuchPrinter, messageText("the print server has no such queue"), {}};
    }
    return {noErr, {}, std::move(answer)};
}

FetchedQueue askForQueue(Conversation* conversation, const std::string& destination) {
    const std::string queue = queueOf(destination);
    const SavedDestinations saved = SavedDestinations::read();
    if (destination != queue && !saved.knows(destination)) {
        return {kPMNoSuchPrinter, messageText("no options are saved under this name (lpoptions)"), {}};
    }
    if (*conversation) {
        (*conversation)->allow(serverPatience().questionMilliseconds);
    } else {
        conversation->emplace(serverPatience().questionMilliseconds);
    }
    ServerConnection& server = **conversation;
    const auto answer = askAboutQueue(server, queue, {"printer-defaults"});
    if (answer.status != noErr) {
        return {answer.status, answer.reason, {}};
    }
    FetchedQueue fetched = fetchPPD(server, queue);
    if (fetched.status != noErr) {
        return fetched;
    }
    const std::string path = fetched.value.ppd->path();
    std::string reason;
    fetched.value.file = openPPDFile(path, &reason);
    if (!fetched.value.file) {
        return {kPMUnusableDescription, messageText("its PPD %1", {reason}), {}};
    }
    OptionList options = defaultsIn(answer.value.get());
    setOptions(&options, saved.optionsOf(destination));
    fetched.value.start = sortOptions(*fetched.value.file, path, options);
    if (const std::string& fault = fetched.value.start.settingsFault; !fault.empty()) {
        return {kPMUnusableDescription, messageText("the settings that are saved under this name %1", {fault}), {}};
    }
    return fetched;
}

// ---- Its state

std::string textIn(ipp_t* answer, const char* name) {
    ipp_attribute_t* const text = cups().ippFindAttribute(answer, name, IPP_TAG_TEXT);
    return text == nullptr ? std::string() : std::string(cups().ippGetString(text, 0, nullptr));
}

ExaminedQueue askForState(const std::string& queue, const PrivateFile& ppd) {
    ServerConnection server(serverPatience().questionMilliseconds);
    const auto answer = askAboutQueue(
        server, queue,
        {"printer-is-accepting-jobs", "printer-state", "printer-state-message", "document-format-supported"});
    if (answer.status != noErr) {
        return {answer.status, answer.reason, {}};
    }
    ExaminedQueue examined;
    ipp_t* const said = answer.value.get();
    if (ipp_attribute_t* const accepts = cups().ippFindAttribute(said, "printer-is-accepting-jobs", IPP_TAG_BOOLEAN)) {
        examined.value.takesJobs = cups().ippGetBoolean(accepts, 0) != 0;
    }
    if (ipp_attribute_t* const state = cups().ippFindAttribute(said, "printer-state", IPP_TAG_ENUM)) {
        examined.value.prints = cups().ippGetInteger(state, 0) != IPP_PSTATE_STOPPED;
    }
    examined.value.message = textIn(said, "printer-state-message");
    ipp_attribute_t* const formats = cups().ippFindAttribute(said, "document-format-supported", IPP_TAG_MIMETYPE);
    examined.value.hasSettingsFilter =
        formats != nullptr && cups().ippContainsString(formats, kSettingsFilterType) != 0;
    const FetchedQueue now = fetchPPD(server, queue);
    if (now.status == kPMServerNotResponding) {
        return {now.status, now.reason, {}};
    }
    examined.value.isOfSamePPD = now.status == noErr && now.value.ppd->hasSameContent(ppd);
    return examined;
}

// ---- Ahead

/// What was asked for before it is needed; taken once.
struct AskedAhead {
    std::optional<Asked<DefaultQueue>> defaultQueue;  // nothing where the queue was named
    std::string name;                                 // of the queue; empty until it is known
    std::optional<Asked<FetchedQueue>> queue;
};

AskedAhead& askedAhead() {
    static AskedAhead asked;
    return asked;
}

}  // namespace

void askAhead(const std::string& destination, int timeoutMilliseconds) {
    AskedAhead& ahead = askedAhead();
    ahead = {std::nullopt, destination, Asked<FetchedQueue>()};
    const auto queue = ahead.queue->question;
    if (!destination.empty()) {
        askAside<FetchedQueue>(*ahead.queue, [destination] {
            Conversation server;
            return askForQueue(&server, destination);
        });
        return;
    }
    ahead.defaultQueue.emplace();
    std::thread([name = ahead.defaultQueue->question, queue, timeoutMilliseconds] {
        std::string found;
        Conversation server;
        name->put([timeoutMilliseconds, &found, &server] {
            DefaultQueue answer = askForUsersDefault(&server, timeoutMilliseconds);
            found = answer.value;
            return answer;
        });
        queue->put([&found, &server] {
            return found.empty() ? FetchedQueue{kPMNoSuchPrinter, {}, {}} : askForQueue(&server, found);
        });
    }).detach();
}

std::future<QueueNames> listQueues(int timeoutMilliseconds) {
    Asked<QueueNames> asked;
    asked.question->closeDesk();  // nobody shall be asked for a password by a menu
    askAside<QueueNames>(asked, [timeoutMilliseconds] { return askForQueues(timeoutMilliseconds); });
    return std::move(asked.answer);
}

ServerAnswer<std::string> findDefaultQueue(int timeoutMilliseconds) {
    AskedAhead& ahead = askedAhead();
    if (auto asked = std::exchange(ahead.defaultQueue, std::nullopt)) {
        DefaultQueue answer = asked->await(timeoutMilliseconds);
        ahead.name = answer.value;
        return answer;
    }
    return answerInTime<DefaultQueue>(
        [timeoutMilliseconds] {
            Conversation server;
            return askForUsersDefault(&server, timeoutMilliseconds);
        },
        timeoutMilliseconds);
}

ServerAnswer<QueueDescription> fetchQueue(const std::string& destination) {
    AskedAhead ahead = std::exchange(askedAhead(), {});
    if (ahead.queue && ahead.name == destination) {
        return ahead.queue->await(serverPatience().questionMilliseconds);
    }
    return answerInTime<FetchedQueue>(
        [destination] {
            Conversation server;
            return askForQueue(&server, destination);
        },
        serverPatience().questionMilliseconds);
}

ServerAnswer<QueueState> examineQueue(const std::string& queue, const std::shared_ptr<PrivateFile>& ppd) {
    return answerInTime<ExaminedQueue>([queue, ppd] { return askForState(queue, *ppd); },
                                       serverPatience().questionMilliseconds);
}
