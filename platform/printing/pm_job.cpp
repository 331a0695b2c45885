// Jobs: to a file through the CUPS filters, or to a queue.
#include "platform/printing/cups_server.h"
#include "platform/printing/last_error.h"
#include "platform/printing/pending_file.h"
#include "platform/printing/ready_job.h"
#include "platform/printing/text.h"

#include <cerrno>
#include <filesystem>

#include <unistd.h>

namespace {

std::string documentName(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

/// The request of a job for a document that can be read.
OSStatus makeJob(PMPrinter printer, PMTicketRef printSettings, PMTicketRef pageFormat, CFDataRef cover, CFDataRef setup,
                 CFURLRef document, Job* job) {
    *job = {printer, filePath(document), {}, jobOrientation(pageFormat), cover, setup};
    if (printer == nullptr || job->document.empty()) {
        return failWith(paramErr, "print job", printer == nullptr ? "no printer" : "no document");
    }
    if (access(job->document.c_str(), R_OK) != 0) {
        return failWith(fnfErr, job->document, systemReason(errno));
    }
    if (!std::filesystem::is_regular_file(job->document)) {
        return failWith(fnfErr, job->document, "is not a file");
    }
    const OSStatus status = readJobRequest(printSettings, pageFormat, printer->ppd.passcodeKeyword, &job->request);
    if (job->request.title.empty()) {
        job->request.title = documentName(job->document);
    }
    return status;
}

/// Whether the server must not make the job's PostScript itself. It cannot draw what is not in the document, and would
/// show a passcode as an option of the job, and hand it to its filters on their command lines.
bool mustBeReady(const Job& job) {
    return job.request.passcode || job.cover != nullptr || job.setup != nullptr;
}

/// What the queue still has to know of a job that is ready. All that the filters have done, number-up or copies, must
/// not be done again by anybody, also where the queue does it by default.
OptionList optionsOfReadyJob(const Job& job) {
    OptionList options{{"copies", "1"}, {"number-up", "1"}};
    for (const auto& [name, value] : filterOptions(job)) {
        if (name.starts_with("job-") || job.printer->ppd.findOption(name) != nullptr) {
            options.emplace_back(name, value);
        }
    }
    return options;
}

OSStatus send(const Job& job, const std::string& file, const char* contentType, OptionList options, SInt32* jobID) {
    if (!job.request.holdUntil.empty()) {
        setOption(&options, "job-hold-until", job.request.holdUntil);
    }
    std::string reason;
    const auto sent = sendToQueue(job.printer->queue, file, contentType, job.request.title, options, &reason);
    if (!sent) {
        return failWith(kPMServerNotResponding, job.printer->queue, reason);
    }
    if (jobID != nullptr) {
        *jobID = *sent;
    }
    return noErr;
}

OSStatus sendReady(const Job& job, SInt32* jobID) {
    const PrivateFile postScript;
    if (!postScript.isOpen()) {
        return failWith(kPMCannotWriteOutput, "temporary file", postScript.reason());
    }
    const OSStatus status = writeReadyJob(job, postScript.descriptor());
    return status == noErr ? send(job, postScript.path(), kReadyType, optionsOfReadyJob(job), jobID) : status;
}

}  // namespace

OSStatus PMPrinterWritePostScriptToURL(PMPrinter printer, PMTicketRef printSettings, PMTicketRef pageFormat,
                                       CFDataRef cover, CFDataRef setup, CFURLRef document, CFURLRef destination) {
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
    if (!output.isOpen()) {
        return failWith(kPMCannotWriteOutput, path, output.reason());
    }
    const OSStatus status = writeReadyJob(job, output.descriptor());
    if (status == noErr && !output.commit()) {
        return failWith(kPMCannotWriteOutput, path, output.reason());
    }
    return status;
}

OSStatus PMPrinterPrintWithFile(PMPrinter printer, PMTicketRef printSettings, PMTicketRef pageFormat, CFDataRef cover,
                                CFDataRef setup, CFURLRef document, SInt32* jobID) {
    clearLastError();
    Job job;
    if (const OSStatus status = makeJob(printer, printSettings, pageFormat, cover, setup, document, &job);
        status != noErr) {
        return status;
    }
    if (printer->queue.empty()) {
        return failWith(kPMNoSuchPrinter, utf8Text(printer->name.get()), "has no queue to print to");
    }
    if (mustBeReady(job)) {
        return sendReady(job, jobID);
    }
    OptionList options = filterOptions(job);
    setOption(&options, "copies", std::to_string(job.request.copies));
    return send(job, job.document, kPDFType, std::move(options), jobID);
}
