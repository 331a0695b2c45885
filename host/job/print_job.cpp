#include "host/job/print_job.h"

#include "host/job/cover_sheet.h"
#include "host/job/job_mark.h"
#include "host/script/text.h"
#include "host/settings/job_hold.h"
#include "host/settings/job_ticket.h"
#include "host/settings/output_color.h"
#include "host/settings/page_range.h"
#include "host/settings/texts.h"
#include "platform/foundation/terminal_text.h"

#include <cstdio>
#include <ctime>

namespace {

/// What a job lacks is told on standard error: it is printed all the same.
void tell(const char* part, const std::string& fault) {
    printLine(stderr, std::string("tavro-print: ") + part + ": " + fault);
}

/// Null for a job without one.
CFRef<CFDataRef> makeCoverSheet(const Document& document, const PrintSession& session, CFBundleRef texts) {
    const auto content = readCoverSheetContent(session.printSettings());
    if (!content) {
        return {};
    }
    const std::string range = session.pageRange();
    const std::int64_t pages = range.empty() ? document.pageCount : readPageRange(range, document.pageCount).count;
    CoverSheet sheet = drawCoverSheet(*content, pages + 1, texts);
    for (const std::string& fault : sheet.faults) {
        tell("cover sheet", fault);
    }
    return sheet.pdf;
}

std::optional<PrintTime> printTimeFromNow(PMTicketRef printSettings) {
    LongDateTime now = 0;
    GetDateTime(&now);
    return readPrintTime(printSettings, now);
}

void addPrintTime(JobTicket* ticket) {
    const auto time = printTimeFromNow(ticket->get());
    if (!time) {
        return;
    }
    if (!time->isAsAsked) {
        tell("delayed print", "its time is not within the next day; it is printed at " + timeOfDay(time->moment));
    }
    ticket->set(kPMJobHoldUntilTimeKey, holdUntil(time->moment, std::time(nullptr)));
}

/// What cancel(1) and its kin call the job. An instance has no jobs of its own.
std::string jobName(const std::string& queue, SInt32 jobID) {
    return queue.substr(0, queue.find('/')) + "-" + std::to_string(jobID);
}

JobOutcome outcomeOf(OSStatus status) {
    return {status == noErr ? std::string() : utf8(PMGetLastErrorText()), status == kPMPrinterChanged, {}};
}

}  // namespace

std::vector<std::string> tellJobFaults(const Document& document, const PrintSession& session, JobWay way,
                                       CFBundleRef texts) {
    std::vector<std::string> sentences;
    if (const JobMark mark = makeJobMark(document, session, false); mark.fault) {
        sentences.push_back(utf8(localized(texts, CFSTR("Job Fault Watermark"), *mark.fault).get()));
    }
    const auto time = printTimeFromNow(session.printSettings());
    if (way == JobWay::queue && time && !time->isAsAsked) {
        sentences.push_back(utf8(localized(texts, CFSTR("Job Fault Print Time"), timeOfDay(time->moment)).get()));
    }
    return sentences;
}

JobOutcome sendJob(const Document& document, const Printer& printer, const PrintSession& session,
                   const std::string& jobOut, CFBundleRef texts) {
    JobTicket settings(session.printSettings());
    if (const auto passcode = readPasscode(settings.get())) {
        settings.set(kPMJobPasscodeKey, *passcode);
    }
    if (leavesOutFold(session)) {
        settings.choose(kFoldKeyword, CFSTR("None"));
    }
    if (const CFStringRef correction = findOutputColorCorrection(session)) {
        settings.choose(kColorCorrectionKeyword, correction);
    }
    const auto coverSheet = makeCoverSheet(document, session, texts);
    const JobMark mark = makeJobMark(document, session, coverSheet.get() != nullptr);
    if (mark.fault) {
        tell("watermark", *mark.fault);
    }
    if (!jobOut.empty()) {
        const OSStatus status =
            PMPrinterWritePostScriptToURL(printer.get(), settings.get(), session.pageFormat(), coverSheet.get(),
                                          mark.setup.get(), document.url.get(), fileURL(jobOut).get());
        return outcomeOf(status);
    }
    addPrintTime(&settings);  // a file waits for nobody
    SInt32 jobID = 0;
    CFStringRef obstacle = nullptr;
    JobOutcome outcome =
        outcomeOf(PMPrinterPrintWithFile(printer.get(), settings.get(), session.pageFormat(), coverSheet.get(),
                                         mark.setup.get(), document.url.get(), &jobID, &obstacle));
    const auto owner = CFRef<CFStringRef>::adopt(obstacle);
    if (outcome.failure.empty()) {
        const std::string name = jobName(printer.queue(), jobID);
        printLine(stdout, name);
        outcome.obstacle = obstacle == nullptr ? std::string() : name + ": waits, " + utf8(obstacle);
    }
    return outcome;
}
