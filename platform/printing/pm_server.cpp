// The print server's queues, by name.
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"
#include "platform/printing/cups_server.h"
#include "platform/printing/last_error.h"
#include "platform/printing/server_connection.h"

struct OpaquePMPrinterList {
    std::future<QueueNames> answer;
    std::chrono::steady_clock::time_point deadline;
};

void PMServerAskAhead(CFStringRef printerID, UInt32 timeoutMilliseconds) {
    askAhead(printerID == nullptr ? std::string() : utf8Text(printerID), static_cast<int>(timeoutMilliseconds));
}

OSStatus PMServerCopyDefaultPrinterID(UInt32 timeoutMilliseconds, CFStringRef* printerID) {
    clearLastError();
    if (printerID == nullptr) {
        return failWith(paramErr, messageText("default printer"), "no place for its name");
    }
    const ServerAnswer<std::string> answer = findDefaultQueue(static_cast<int>(timeoutMilliseconds));
    if (answer.status != noErr) {
        return failWith(answer.status, messageText("default printer"), answer.reason);
    }
    if (answer.value.empty()) {
        return failWith(kPMNoDefaultPrinter, messageText("default printer"), messageText("there is none"));
    }
    *printerID = makeString(answer.value).leak();
    return noErr;
}

OSStatus PMPrinterListBegin(UInt32 timeoutMilliseconds, PMPrinterList* list) {
    clearLastError();
    if (list == nullptr) {
        return failWith(paramErr, "queues", "no place for the list");
    }
    *list = new OpaquePMPrinterList{
        listQueues(static_cast<int>(timeoutMilliseconds)),
        std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMilliseconds) + kServerGrace};
    return noErr;
}

Boolean PMPrinterListIsComplete(PMPrinterList list) {
    return list == nullptr || !list->answer.valid() || std::chrono::steady_clock::now() >= list->deadline ||
           list->answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

OSStatus PMPrinterListCopyPrinterIDs(PMPrinterList list, CFArrayRef* printerIDs) {
    clearLastError();
    if (list == nullptr || printerIDs == nullptr || !list->answer.valid()) {
        return failWith(paramErr, "queues", "no list to copy");
    }
    const QueueNames answer = list->answer.wait_until(list->deadline) == std::future_status::ready
                                  ? list->answer.get()
                                  : QueueNames{kPMServerNotResponding, ServerConnection::silence(), {}};
    if (answer.status != noErr) {
        return failWith(answer.status, "queues", answer.reason);
    }
    const CFMutableArrayRef names = CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks);
    for (const std::string& name : answer.value) {
        CFArrayAppendValue(names, makeString(name).get());
    }
    *printerIDs = names;
    return noErr;
}

void PMPrinterListRelease(PMPrinterList list) {
    delete list;
}
