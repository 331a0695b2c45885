#include "host/job/print_job.h"

#include "host/job/cover_sheet.h"
#include "host/settings/job_hold.h"
#include "host/settings/texts.h"
#include "platform/files/pending_file.h"
#include "platform/foundation/message.h"
#include "platform/foundation/terminal_text.h"
#include "platform/foundation/text.h"

#include <cstdio>
#include <ctime>
#include <system_error>

namespace {

/// What a job lacks is told on standard error: it is printed all the same.
void tell(const std::string& part, const std::string& fault) {
    printLine(stderr, "tavro-print: " + part + ": " + fault);
}

/// A PDF of one page; empty for a job without one.
std::string makeCoverSheet(const Document& document, const PrintSession& session, CFBundleRef texts) {
    const JobInstructions& job = session.instructions();
    if (!job.fax || !job.fax->coverSheet) {
        return {};
    }
    CoverSheet sheet = drawCoverSheet(*job.fax, session.plan(document.pageCount).pageCount + 1, texts);
    for (const std::string& fault : sheet.faults) {
        tell(messageText("cover sheet"), fault);
    }
    return std::string(bytesOf(sheet.pdf.get()));
}

/// The watermark of the session's settings; nothing, with the fault, for one that cannot be drawn.
std::optional<PageMark> readMark(const PrintSession& session, std::string* fault) {
    const auto& asked = session.instructions().watermark;
    std::string reason;
    auto mark = asked ? readPageMark(*asked, &reason) : std::nullopt;
    if (asked && !mark) {
        *fault = asked->name + ": " + reason;
    }
    return mark;
}

/// Nothing for a job that is not delayed.
std::optional<PrintTime> printTimeFromNow(std::optional<LongDateTime> asked) {
    LongDateTime now = 0;
    GetDateTime(&now);
    return asked ? std::optional(findPrintTime(*asked, now)) : std::nullopt;
}

void addPrintTime(std::optional<LongDateTime> asked, JobTicket* ticket) {
    const auto time = printTimeFromNow(asked);
    if (!time) {
        return;
    }
    if (!time->isAsAsked) {
        tell(messageText("delayed print"),
             messageText("its time is not within the next day; it is printed at %1", {timeOfDay(time->moment)}));
    }
    ticket->set(kPMJobHoldUntilTimeKey, holdUntil(time->moment, std::time(nullptr)));
}

/// What cancel(1) and its kin call the job. An instance has no jobs of its own.
std::string jobName(const std::string& queue, SInt32 jobID) {
    return queue.substr(0, queue.find('/')) + "-" + std::to_string(jobID);
}

JobOutcome outcomeOf(OSStatus status) {
    return {status == noErr ? std::string() : utf8Text(PMGetLastErrorText()), status == kPMPrinterChanged, false, {}};
}

}  // namespace

std::vector<std::string> tellJobFaults(const PrintSession& session, JobWay way, CFBundleRef texts) {
    std::vector<std::string> sentences;
    std::string fault;
    if (!readMark(session, &fault) && !fault.empty()) {
        sentences.push_back(utf8Text(localized(texts, CFSTR("Job Fault Watermark"), fault).get()));
    }
    const auto time = printTimeFromNow(session.instructions().printTime);
    if (way == JobWay::queue && time && !time->isAsAsked) {
        sentences.push_back(utf8Text(localized(texts, CFSTR("Job Fault Print Time"), timeOfDay(time->moment)).get()));
    }
    return sentences;
}

JobWork::JobWork(const Document& document, const Printer& printer, const PrintSession& session, const JobTarget& target,
                 CFBundleRef texts)
    : document_(document),
      printer_(printer),
      session_(session),
      target_(target),
      faxCover_(makeCoverSheet(document, session, texts)),
      printTime_(session.instructions().printTime) {
    std::string fault;
    mark_ = readMark(session, &fault);
    if (!fault.empty()) {
        tell(messageText("watermark"), fault);
    }
}

void JobWork::cancel() {
    isCancelled_ = true;
    PMCancelJob();
}

JobOutcome JobWork::run() {
    const JobSource source{printer_.get(),
                           session_.printSettings(),
                           session_.pageFormat(),
                           document_.path,
                           document_.content(),
                           document_.password,
                           document_.pages,
                           faxCover_,
                           mark_,
                           session_.printerInfo()};
    const auto progress = [this](int percent) {
        percent_ = percent;
        return !isCancelled_;
    };
    JobOutcome outcome = target_.way == JobWay::pdf ? writePDF(source, progress) : print(source, progress);
    // What was printed is printed, although somebody has changed his mind meanwhile.
    outcome.isCancelled = isCancelled_ && (outcome.isCancelled || !outcome.failure.empty());
    return outcome;
}

std::string JobWork::changeOfDocument() const {
    return !document_.file || document_.file->isIntact()
               ? std::string()
               : document_.path + ": " +
                     messageText("has been written to since it was opened; open it again to print what it has now");
}

JobOutcome JobWork::print(const JobSource& source, const PagesProgress& progress) {
    PreparedJob job(session_.printSettings());
    const bool isReady = prepareJob(source, progress, &job);
    if (isCancelled_ || !isReady) {
        return {isCancelled_ ? std::string() : job.fault, false, isCancelled_, {}};
    }
    if (std::string change = changeOfDocument(); !change.empty()) {
        return {std::move(change), false, false, {}};
    }
    percent_ = 100;
    return send(&job);
}

JobOutcome JobWork::writePDF(const JobSource& source, const PagesProgress& progress) {
    PendingFile file(target_.file);
    std::string fault;
    const bool isWritten = file.error() == 0 && writePages(source, progress, file, &fault);
    if (isCancelled_) {
        return {{}, false, true, {}};
    }
    if (isWritten && fault.empty()) {
        fault = changeOfDocument();
    }
    if (fault.empty() && (!isWritten || !file.commit())) {
        fault = target_.file + ": " + systemMessage(file.error());
    }
    return {fault, false, false, {}};
}

JobOutcome JobWork::send(PreparedJob* job) {
    const auto url = makeFileURL(document_.path);
    const PMJobPages pages{job->pages.descriptor(), job->arePostScript, static_cast<CFIndex>(job->count), url.get()};
    if (target_.way == JobWay::file) {
        const auto file = makeFileURL(target_.file);
        return outcomeOf(PMPrinterWriteJobToURL(printer_.get(), job->settings.get(), &pages, file.get()));
    }
    addPrintTime(printTime_, &job->settings);  // a file waits for nobody
    SInt32 jobID = 0;
    CFStringRef obstacle = nullptr;
    JobOutcome outcome = outcomeOf(PMPrinterSendJob(printer_.get(), job->settings.get(), &pages, &jobID, &obstacle));
    const auto owner = CFRef<CFStringRef>::adopt(obstacle);
    if (outcome.failure.empty()) {
        const std::string name = jobName(printer_.queue(), jobID);
        printLine(stdout, name);
        outcome.obstacle =
            obstacle == nullptr ? std::string() : name + ": " + messageText("waits, %1", {utf8Text(obstacle)});
    }
    return outcome;
}
