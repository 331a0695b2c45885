#include "host/job/print_without_window.h"

#include "host/job/print_job.h"
#include "host/job/settings_warnings.h"
#include "host/settings/left_out.h"
#include "host/settings/page_range.h"
#include "host/settings/print_session.h"
#include "platform/foundation/message.h"
#include "platform/foundation/terminal_text.h"

namespace {

std::string faultText(PageRangeFault fault) {
    switch (fault) {
        case PageRangeFault::order:
            return messageText("a range begins with its lower page number");
        case PageRangeFault::beyondDocument:
            return messageText("the document has no such page");
        default:
            return messageText("is not a range of pages");
    }
}

}  // namespace

Failure printWithoutWindow(const JobSetup& setup, CFBundleRef texts,
                           const std::function<bool(const std::vector<std::string>&)>& goesOn) {
    PrintSession session(setup.printer, setup.settings, setup.installedOptions.get(), setup.document.name);
    followDocument(&session, setup.document);
    warnOfSettings(session, setup.document.pageCount, texts);
    if (const std::string range = session.pageRange(); !range.empty()) {
        const PageRange pages = readPageRange(range, setup.document.pageCount);
        if (pages.fault != PageRangeFault::none) {
            return unusable(messageText("pages %1", {range}), faultText(pages.fault));
        }
    }
    const std::vector<std::string> leftOut = tellLeftOut(session, setup.document.pageCount, setup.target.way, texts);
    for (const std::string& sentence : leftOut) {
        printLine(stderr, "tavro-print: " + sentence);
    }
    if (goesOn && !leftOut.empty() && !goesOn(leftOut)) {
        return {ExitStatus::cancelled, {}};
    }
    const JobOutcome job = JobWork(setup.document, setup.printer, session, setup.target, texts).run();
    if (!job.failure.empty()) {
        return {ExitStatus::notSent, job.failure};
    }
    if (!job.obstacle.empty()) {
        printLine(stderr, "tavro-print: " + job.obstacle);
    }
    if (!setup.ticketOut.empty()) {
        if (auto notWritten = writeSettingsFile(session.copySettings(), setup.ticketOut)) {
            return {ExitStatus::unusableInput, *notWritten};
        }
    }
    return {ExitStatus::success, {}};
}
