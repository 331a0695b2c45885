// Jobs: to a file through the CUPS filters, or to a queue.
#include "platform/files/pending_file.h"
#include "platform/files/plain_file.h"
#include "platform/printing/cups_server.h"
#include "platform/printing/interruption.h"
#include "platform/printing/job_sending.h"
#include "platform/printing/job_stream.h"
#include "platform/printing/last_error.h"
#include "platform/printing/ready_job.h"
#include "platform/printing/text.h"

#include <cerrno>
#include <filesystem>

#include <unistd.h>

namespace {

std::string documentName(const std::string& path) {
    return utf8Text(makeString(std::filesystem::path(path).filename().string()).get());
}

/// The request of a job for a document that can be read.
OSStatus makeJob(PMPrinter printer, PMTicketRef printSettings, PMTicketRef pageFormat, CFDataRef cover, CFDataRef setup,
                 CFURLRef document, Job* job) {
    *job = {printer, filePath(document), {}, jobOrientation(pageFormat), cover, setup};
    if (printer == nullptr || job->document.empty()) {
        return failWith(paramErr, "print job", printer == nullptr ? "no printer" : "no document");
    }
    if (!openPlainFile(job->document, INT64_MAX)) {
        return failWith(fnfErr, job->document, readFault(errno, INT64_MAX));
    }
    const OSStatus status = readJobRequest(printSettings, pageFormat, printer->ppd, &job->request);
    if (status == noErr && !job->request.secrets.empty() && !readsPostScript(*printer)) {
        return failWith(paramErr, "secure print", "the printer's own filter makes its jobs, and it takes no passcode");
    }
    if (job->request.title.empty()) {
        job->request.title = documentName(job->document);
    }
    return status;
}

std::string inBrackets(const std::string& message) {
    return message.empty() ? message : " (" + message + ")";
}

/// What the queue still has to know of a job that is ready. All that the filters have done, number-up or copies, must
/// not be done again by anybody, also where the queue does it by default.
OptionList optionsOfReadyJob(const Job& job) {
    OptionList options{{"copies", "1"}, {kNumberUpOption, "1"}};
    for (const auto& [name, value] : filterOptions(job)) {
        if (name.starts_with("job-") || job.printer->ppd.findOption(name) != nullptr) {
            options.emplace_back(name, value);
        }
    }
    return options;
}

OSStatus send(const Job& job, const SentDocument& document, OptionList options, SInt32* jobID) {
    if (!job.request.holdUntil.empty()) {
        setOption(&options, "job-hold-until", job.request.holdUntil);
    }
    std::string reason;
    const auto sent = sendToQueue(job.printer->queue, document, options, &reason);
    if (!sent) {
        return failWith(kPMJobNotTaken, job.printer->queue, reason);
    }
    if (jobID != nullptr) {
        *jobID = *sent;
    }
    return noErr;
}

OSStatus sendReady(const Job& job, SInt32* jobID) {
    PrivateFile postScript;
    if (!isKept(postScript)) {
        return kPMCannotWriteOutput;
    }
    Packer packer(postScript);
    const OSStatus status = writePostScriptJob(job, packer);
    if (status == noErr && packer.finish()) {
        return send(job, {postScript.path(), kReadyType, job.request.title, true}, optionsOfReadyJob(job), jobID);
    }
    return isKept(postScript) ? status : kPMCannotWriteOutput;
}

OSStatus sendPDF(const Job& job, SInt32* jobID) {
    OptionList options = filterOptions(job);
    setOption(&options, "copies", std::to_string(job.request.copies));
    if (!mustPickPages(job)) {
        return send(job, {job.document, kPDFType, job.request.title}, std::move(options), jobID);
    }
    PrivateFile pages;
    const OSStatus status = pickPages(job, pages);
    return status == noErr ? send(job, {pages.path(), kPDFType, job.request.title}, std::move(options), jobID) : status;
}

/// Whether the queue is as it was when its printer was opened, and takes jobs.
OSStatus checkQueue(const OpaquePMPrinter& printer, QueueState* state) {
    const std::string name = utf8Text(printer.name.get());
    if (printer.queue.empty()) {
        return failWith(kPMNoSuchPrinter, name, "has no queue to print to");
    }
    ServerAnswer<QueueState> answer = examineQueue(printer.queue, printer.ppdCopy);
    if (answer.status != noErr) {
        return failWith(answer.status, name, answer.reason);
    }
    *state = std::move(answer.value);
    if (!state->takesJobs) {
        return failWith(kPMJobNotTaken, name, "the queue takes no jobs" + inBrackets(state->message));
    }
    if (!state->isOfSamePPD) {
        return failWith(kPMPrinterChanged, name, "the print server has changed the printer's settings meanwhile");
    }
    return noErr;
}

}  // namespace

OSStatus PMPrinterWritePostScriptToURL(PMPrinter printer, PMTicketRef printSettings, PMTicketRef pageFormat,
                                       CFDataRef cover, CFDataRef setup, CFURLRef document, CFURLRef destination) {
    const Interruption interruption;
    clearLastError();
    Job job;
    if (const OSStatus status = makeJob(printer, printSettings, pageFormat, cover, setup, document, &job);
        status != noErr) {
        return status;
    }
    const std::string path = filePath(destination);
    if (path.empty()) {
        return failWith(paramErr, "print job", "no file to write to");
    }
    PendingFile output(path);
    OSStatus status = output.error() == 0 ? writePrinterJob(job, output) : kPMCannotWriteOutput;
    if (status == noErr && !output.commit()) {
        status = kPMCannotWriteOutput;
    }
    if (output.error() != 0) {
        failWith(status, path, output.error() == EINVAL ? "is there and is not a file" : systemReason(output.error()));
    }
    return status;
}

OSStatus PMPrinterPrintWithFile(PMPrinter printer, PMTicketRef printSettings, PMTicketRef pageFormat, CFDataRef cover,
                                CFDataRef setup, CFURLRef document, SInt32* jobID, CFStringRef* obstacle) {
    const Interruption interruption;
    clearLastError();
    Job job;
    OSStatus status = makeJob(printer, printSettings, pageFormat, cover, setup, document, &job);
    QueueState state;
    if (status == noErr) {
        status = checkQueue(*printer, &state);
    }
    if (status != noErr) {
        return status;
    }
    status = mustBeReady(job) ? sendReady(job, jobID) : sendPDF(job, jobID);
    if (status == noErr && obstacle != nullptr) {
        *obstacle = state.prints ? nullptr : makeString("the queue is stopped" + inBrackets(state.message)).leak();
    }
    return status;
}
