// Jobs: to a file through the CUPS filters, or to a queue.
#include "platform/printing/PMPrinter.h"
#include "platform/printing/cover_page.h"
#include "platform/printing/document_setup.h"
#include "platform/printing/filter_chain.h"
#include "platform/printing/job_options.h"
#include "platform/printing/last_error.h"
#include "platform/printing/pending_file.h"
#include "platform/printing/printer_record.h"
#include "platform/printing/private_file.h"
#include "platform/printing/text.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr const char* kPDF = "application/pdf";

// The way of a PDF to a PostScript printer, as the scheduler goes it: the first filter picks the pages and turns
// them, the second makes PostScript with the PPD's code around it.
constexpr FilterStep kPDFToPostScript[] = {
    // program, content type of its input
    {"pdftopdf", kPDF},
    {"pdftops", "application/vnd.cups-pdf"},
};
constexpr const char* kPrinterPostScript = "application/vnd.cups-postscript";

struct Job {
    std::string document;
    JobRequest request;
};

std::string documentName(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

/// The request of a job for a document that can be read.
OSStatus makeJob(PMPrinter printer, PMTicketRef printSettings, PMTicketRef pageFormat, CFURLRef document, Job* job) {
    job->document = filePath(document);
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

std::string userName() {
    const passwd* const entry = getpwuid(getuid());
    return entry == nullptr ? std::to_string(getuid()) : entry->pw_name;
}

bool isEmpty(int file) {
    struct stat status {};
    return fstat(file, &status) != 0 || status.st_size == 0;
}

/// How far a cover is turned so that it stands upright when the job's pages are turned.
int rotationAgainst(PMTicketRef pageFormat) {
    switch (jobOrientation(pageFormat)) {
        case 2:
            return 90;
        case 3:
            return 270;
        default:
            return 0;
    }
}

void replaceRange(JobRequest* request) {
    for (auto& [name, value] : request->options) {
        if (name == kPageRangesOption) {
            value = rangeWithCover(value);
        }
    }
}

/// The printer's PPD with the passcode for its default.
///
/// A filter takes its options from its command line, and every user of the machine can read that. What a PPD chooses by
/// default is chosen as well, and a file can be kept from others. The passcode's own option must not be among the
/// options then.
bool addPasscode(PMPrinter printer, const std::string& passcode, PrivateFile* copy) {
    std::ostringstream ppd;
    ppd << std::ifstream(printer->ppdPath, std::ios::binary).rdbuf();
    // Of two defaults the last one holds.
    ppd << "\n*Default" << printer->ppd.passcodeKeyword << ": Custom." << passcode << "\n";
    return copy->write(ppd.str());
}

/// Runs the filters on a file that holds the job's document, or the document and more.
OSStatus runFiltersInto(int output, PMPrinter printer, const Job& job, const std::string& input) {
    std::string ppdPath = printer->ppdPath;
    std::optional<PrivateFile> secretPPD;
    if (job.request.passcode) {
        secretPPD.emplace();
        if (!secretPPD->isOpen() || !addPasscode(printer, *job.request.passcode, &*secretPPD)) {
            return failWith(kPMCannotWriteOutput, "secure print", secretPPD->reason());
        }
        ppdPath = secretPPD->path();
    }
    const FilterJob filterJob{ppdPath,
                              utf8Text(printer->name.get()),
                              kPrinterPostScript,
                              userName(),
                              job.request.title,
                              job.request.copies,
                              filterOptionsText(job.request.options),
                              input};
    std::string reason;
    if (!runFilters(kPDFToPostScript, filterJob, output, &reason)) {
        return failWith(kPMFilterFailed, job.document, reason);
    }
    if (isEmpty(output)) {
        return failWith(kPMFilterFailed, job.document, "the filters wrote nothing");
    }
    return noErr;
}

OSStatus filterWithSetup(const PendingFile& output, PMPrinter printer, const Job& job, const std::string& input,
                         CFDataRef setup, const std::string& path) {
    const PendingFile plain(path);  // stays pending: it goes when it has been copied
    if (!plain.isOpen()) {
        return failWith(kPMCannotWriteOutput, path, plain.reason());
    }
    if (const OSStatus status = runFiltersInto(plain.descriptor(), printer, job, input); status != noErr) {
        return status;
    }
    std::string reason;
    return copyWithSetup(plain.path(), setup, output.descriptor(), &reason)
               ? noErr
               : failWith(kPMCannotWriteOutput, path, reason);
}

OSStatus writePostScript(PMPrinter printer, const Job& job, const std::string& input, CFDataRef setup,
                         const std::string& path) {
    PendingFile output(path);
    if (!output.isOpen()) {
        return failWith(kPMCannotWriteOutput, path, output.reason());
    }
    const OSStatus status = setup == nullptr ? runFiltersInto(output.descriptor(), printer, job, input)
                                             : filterWithSetup(output, printer, job, input, setup, path);
    if (status != noErr) {
        return status;
    }
    if (!output.commit()) {
        return failWith(kPMCannotWriteOutput, path, output.reason());
    }
    return noErr;
}

}  // namespace

OSStatus PMPrinterWritePostScriptToURL(PMPrinter printer, PMTicketRef printSettings, PMTicketRef pageFormat,
                                       CFDataRef cover, CFDataRef setup, CFURLRef document, CFURLRef destination) {
    clearLastError();
    Job job;
    if (const OSStatus status = makeJob(printer, printSettings, pageFormat, document, &job); status != noErr) {
        return status;
    }
    const std::string path = filePath(destination);
    if (path.empty()) {
        return failWith(paramErr, "print job", "no file to write to");
    }
    if (cover == nullptr) {
        return writePostScript(printer, job, job.document, setup, path);
    }
    const PendingFile both(path);  // stays pending: it goes when the filters have read it
    if (!both.isOpen()) {
        return failWith(kPMCannotWriteOutput, path, both.reason());
    }
    std::string reason;
    if (!writeWithCover(cover, rotationAgainst(pageFormat), job.document, both.path(), &reason)) {
        return failWith(kPMFilterFailed, job.document, reason);
    }
    replaceRange(&job.request);
    return writePostScript(printer, job, both.path(), setup, path);
}

OSStatus PMPrinterPrintWithFile(PMPrinter printer, PMTicketRef printSettings, PMTicketRef pageFormat, CFURLRef document,
                                SInt32* jobID) {
    clearLastError();
    Job job;
    if (const OSStatus status = makeJob(printer, printSettings, pageFormat, document, &job); status != noErr) {
        return status;
    }
    if (printer->queue.empty()) {
        return failWith(kPMNoSuchPrinter, utf8Text(printer->name.get()), "has no queue to print to");
    }
    OptionList options = job.request.options;
    if (!job.request.holdUntil.empty()) {
        options.emplace_back("job-hold-until", job.request.holdUntil);
    }
    std::string reason;
    std::optional<int> sent;
    if (job.request.passcode) {
        // The server would show the passcode as an option of the job, and hand it to its filters on their command
        // lines: it gets what the filters make of it, copies and all.
        const PrivateFile postScript;
        if (!postScript.isOpen()) {
            return failWith(kPMCannotWriteOutput, "secure print", postScript.reason());
        }
        if (const OSStatus status = runFiltersInto(postScript.descriptor(), printer, job, job.document);
            status != noErr) {
            return status;
        }
        sent = sendToQueue(printer->queue, postScript.path(), kPrinterPostScript, job.request.title, options, &reason);
    } else {
        options.emplace_back("copies", std::to_string(job.request.copies));
        sent = sendToQueue(printer->queue, job.document, kPDF, job.request.title, options, &reason);
    }
    if (!sent) {
        return failWith(kPMServerNotResponding, printer->queue, reason);
    }
    if (jobID != nullptr) {
        *jobID = *sent;
    }
    return noErr;
}
