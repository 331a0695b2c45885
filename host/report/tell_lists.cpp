#include "host/report/json_document.h"
#include "host/report/report.h"
#include "host/settings/presets.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/terminal_text.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"

#include <cstdio>

namespace {

constexpr UInt32 kServerPatience = 3000;  // milliseconds

/// The server's queues and their instances. The failure says why the server has told none.
Result<std::vector<std::string>> listQueues() {
    PMPrinterList list = nullptr;
    CFArrayRef names = nullptr;
    PMPrinterListBegin(kServerPatience, &list);
    const OSStatus status = PMPrinterListCopyPrinterIDs(list, &names);
    PMPrinterListRelease(list);
    if (status != noErr) {
        return Failure{ExitStatus::unusableInput, utf8Text(PMGetLastErrorText())};
    }
    const auto owner = CFRef<CFArrayRef>::adopt(names);
    std::vector<std::string> queues;
    for (CFIndex i = 0; i < CFArrayGetCount(names); ++i) {
        queues.push_back(utf8Text(static_cast<CFStringRef>(CFArrayGetValueAtIndex(names, i))));
    }
    return queues;
}

/// Empty when there is none.
std::string defaultQueue() {
    CFStringRef name = nullptr;
    return PMServerCopyDefaultPrinterID(kServerPatience, &name) == noErr
               ? utf8Text(CFRef<CFStringRef>::adopt(name).get())
               : std::string();
}

QJsonObject jsonQueue(const std::string& name, bool isDefault) {
    const std::size_t slash = name.find('/');
    return {{QStringLiteral("name"), jsonText(name)},
            {QStringLiteral("queue"), jsonText(name.substr(0, slash))},
            {QStringLiteral("instance"),
             slash == std::string::npos ? QJsonValue(QJsonValue::Null) : QJsonValue(jsonText(name.substr(slash + 1)))},
            {QStringLiteral("isDefault"), isDefault}};
}

}  // namespace

Failure reportPrinters(ReportForm form) {
    auto queues = listQueues();
    if (!queues) {
        return queues.failure();
    }
    if (form == ReportForm::lines) {
        for (const std::string& queue : *queues) {
            printLine(stdout, queue);
        }
        return {ExitStatus::success, {}};
    }
    const std::string usual = defaultQueue();
    QJsonArray printers;
    for (const std::string& queue : *queues) {
        printers.append(jsonQueue(queue, queue == usual));
    }
    printDocument("printers", {{QStringLiteral("printers"), printers}});
    return {ExitStatus::success, {}};
}

Failure reportPresets(ReportForm form) {
    const KeptSettings::Names kept = namedPresets().list();
    if (form == ReportForm::lines) {
        for (const std::string& name : kept.names) {
            printLine(stdout, name);
        }
        for (const auto& each : kept.unreadable) {
            printLine(stderr, "tavro-print: " + each.line);
        }
        return {ExitStatus::success, {}};
    }
    QJsonArray presets;
    for (const std::string& name : kept.names) {
        presets.append(QJsonObject{{QStringLiteral("name"), jsonText(name)}});
    }
    QJsonArray unreadable;
    for (const auto& each : kept.unreadable) {
        unreadable.append(QJsonObject{{QStringLiteral("file"), jsonText(each.file)},
                                      {QStringLiteral("reason"), jsonText(each.line)}});
    }
    printDocument("presets", {{QStringLiteral("presets"), presets}, {QStringLiteral("unreadable"), unreadable}});
    return {ExitStatus::success, {}};
}
