// Jobs: to a file through the CUPS filters, or to a queue.
#include "platform/files/pending_file.h"
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"
#include "platform/printing/cups_server.h"
#include "platform/printing/interruption.h"
#include "platform/printing/job_sending.h"
#include "platform/printing/job_stream.h"
#include "platform/printing/last_error.h"
#include "platform/printing/ready_job.h"

#include <filesystem>

#include <sys/stat.h>

namespace {

std::string documentName(const std::string& path) {
    return utf8Text(makeString(std::filesystem::path(path).filename().string()).get());
}

/// The request of a job for pages that can be read.
OSStatus makeJob(PMPrinter printer, PMTicketRef printSettings, const PMJobPages* pages, Job* job) {
    struct stat status {};
    if (printer == nullptr || pages == nullptr || fstat(pages->file, &status) != 0 || !S_ISREG(status.st_mode)) {
        return failWith(paramErr, messageText("print job"),
                        printer == nullptr ? messageText("no printer") : messageText("no pages"));
    }
    *job = {printer,
            pages->file,
            pages->arePostScript ? kPostScriptType : kPDFType,
            static_cast<std::size_t>(pages->count),
            filePath(pages->document),
            {}};
    const OSStatus read = readJobRequest(printSettings, printer->ppd, &job->request);
    if (read == noErr && !job->request.secrets.empty() && !readsPostScript(*printer)) {
        return failWith(paramErr, messageText("secure print"),
                        messageText("the printer's own filter makes its jobs, and it takes no passcode"));
    }
    if (job->request.title.empty()) {
        job->request.title = documentName(job->document);
    }
    return read;
}

/// The server's own words stand in brackets.
std::string inBrackets(const std::string& message) {
    return message.empty() ? message : " (" + message + ")";
}

/// What the queue still has to know of a job that is ready. All that the filters have done, copies too, must not be
/// done again by anybody, also where the queue does it by default.
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

/// Sends the pages, of which the server makes the job, and counts what it prints.
OSStatus sendPages(const Job& job, SInt32* jobID) {
    OptionList options = filterOptions(job);
    setOption(&options, "copies", std::to_string(job.request.copies));
    return send(job, {"/proc/self/fd/" + std::to_string(job.file), job.contentType, job.request.title},
                std::move(options), jobID);
}

/// Whether the queue is as it was when its printer was opened, and takes jobs.
OSStatus checkQueue(const OpaquePMPrinter& printer, QueueState* state) {
    const std::string name = utf8Text(printer.name.get());
    if (printer.queue.empty()) {
        return failWith(kPMNoSuchPrinter, name, messageText("has no queue to print to"));
    }
    ServerAnswer<QueueState> answer = examineQueue(printer.queue, printer.ppdCopy);
    if (answer.status != noErr) {
        return failWith(answer.status, name, answer.reason);
    }
    *state = std::move(answer.value);
    if (!state->takesJobs) {
        return failWith(kPMJobNotTaken, name, messageText("the queue takes no jobs") + inBrackets(state->message));
    }
    if (!state->isOfSamePPD) {
        return failWith(kPMPrinterChanged, name,
                        messageText("the print server has changed the printer's settings meanwhile"));
    }
    return noErr;
}

}  // namespace

void PMCancelJob() {
    interrupt();
}

Boolean PMPrinterReadsPostScript(PMPrinter printer) {
    return printer != nullptr && readsPostScript(*printer);
}

OSStatus PMPrinterWriteJob(PMPrinter printer, PMTicketRef printSettings, const PMJobPages* pages, ByteSink* output) {
    const Interruption interruption;
    clearLastError();
    Job job;
    const OSStatus status = makeJob(printer, printSettings, pages, &job);
    return status == noErr ? writePrinterJob(job, *output) : status;
}

OSStatus PMPrinterWriteJobToURL(PMPrinter printer, PMTicketRef printSettings, const PMJobPages* pages,
                                CFURLRef destination) {
    const Interruption interruption;
    clearLastError();
    Job job;
    if (const OSStatus status = makeJob(printer, printSettings, pages, &job); status != noErr) {
        return status;
    }
    const std::string path = filePath(destination);
    if (path.empty()) {
        return failWith(paramErr, messageText("print job"), messageText("no file to write to"));
    }
    PendingFile output(path);
    OSStatus status = output.error() == 0 ? writePrinterJob(job, output) : kPMCannotWriteOutput;
    if (status == noErr && !output.commit()) {
        status = kPMCannotWriteOutput;
    }
    if (output.error() != 0) {
        failWith(status, path,
                 output.error() == EINVAL ? messageText("is there and is not a file") : systemMessage(output.error()));
    }
    return status;
}

OSStatus PMPrinterSendJob(PMPrinter printer, PMTicketRef printSettings, const PMJobPages* pages, SInt32* jobID,
                          CFStringRef* obstacle) {
    const Interruption interruption;
    clearLastError();
    Job job;
    OSStatus status = makeJob(printer, printSettings, pages, &job);
    QueueState state;
    if (status == noErr) {
        status = checkQueue(*printer, &state);
    }
    if (status != noErr) {
        return status;
    }
    // The server would show a secret as an option of the job, and hand it to its filters on their command lines. And
    // one that lacks the filter of the printer's PPD makes no jobs.
    const bool lacksFilter = PMPrinterTakesSavedSettings(printer) && !state.hasSettingsFilter;
    const bool isReady = !job.request.secrets.empty() || (lacksFilter && readsPostScript(*printer));
    status = isReady ? sendReady(job, jobID) : sendPages(job, jobID);
    if (status == noErr && obstacle != nullptr) {
        *obstacle =
            state.prints ? nullptr : makeString(messageText("the queue is stopped") + inBrackets(state.message)).leak();
    }
    return status;
}
