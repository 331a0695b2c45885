#include "platform/printing/ready_job.h"

#include "platform/printing/cover_page.h"
#include "platform/printing/document_setup.h"
#include "platform/printing/filter_chain.h"
#include "platform/printing/last_error.h"
#include "platform/printing/text.h"

#include <fstream>
#include <sstream>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// The way of a PDF to a PostScript printer, as the scheduler goes it: the first filter picks the pages and turns
// them, the second makes PostScript with the PPD's code around it.
constexpr FilterStep kPDFToPostScript[] = {
    // program, content type of its input
    {"pdftopdf", kPDFType},
    {"pdftops", "application/vnd.cups-pdf"},
};

std::string userName() {
    const passwd* const entry = getpwuid(getuid());
    return entry == nullptr ? std::to_string(getuid()) : entry->pw_name;
}

bool isEmpty(int file) {
    struct stat status {};
    return fstat(file, &status) != 0 || status.st_size == 0;
}

OSStatus checkOpen(const PrivateFile& file) {
    return file.isOpen() ? noErr : failWith(kPMCannotWriteOutput, "temporary file", file.reason());
}

/// How far a cover is turned so that it stands upright when the job's pages are turned.
int rotationAgainst(SInt32 orientation) {
    switch (orientation) {
        case 2:
            return 90;
        case 3:
            return 270;
        default:
            return 0;
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
OSStatus runFiltersOn(const std::string& input, const Job& job, int output) {
    std::string ppdPath = job.printer->ppdPath;
    std::optional<PrivateFile> secretPPD;
    if (job.request.passcode) {
        secretPPD.emplace();
        if (!secretPPD->isOpen() || !addPasscode(job.printer, *job.request.passcode, &*secretPPD)) {
            return failWith(kPMCannotWriteOutput, "secure print", secretPPD->reason());
        }
        ppdPath = secretPPD->path();
    }
    OptionList options = filterOptions(job);
    if (const std::string* const range = job.cover == nullptr ? nullptr : findOption(options, kPageRangesOption)) {
        setOption(&options, kPageRangesOption, rangeWithCover(*range));
    }
    const FilterJob filterJob{ppdPath,
                              utf8Text(job.printer->name.get()),
                              kReadyType,
                              userName(),
                              job.request.title,
                              job.request.copies,
                              filterOptionsText(options),
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

OSStatus filterWithCover(const Job& job, int output) {
    if (job.cover == nullptr) {
        return runFiltersOn(job.document, job, output);
    }
    const PrivateFile both;
    if (const OSStatus status = checkOpen(both); status != noErr) {
        return status;
    }
    std::string reason;
    return writeWithCover(job.cover, rotationAgainst(job.orientation), job.document, both.path(), &reason)
               ? runFiltersOn(both.path(), job, output)
               : failWith(kPMFilterFailed, job.document, reason);
}

}  // namespace

OptionList filterOptions(const Job& job) {
    const StartingOptions& queue = job.printer->start;
    OptionList options = queue.others;
    // A portrait page must be asked for where the queue turns pages by itself.
    if (queue.orientation) {
        options.emplace_back(kOrientationOption, kPortraitRequested);
    }
    const OptionList& saved = queue.others;
    for (const OptionList* const asked : {&job.request.choices, &job.request.layout}) {
        for (const auto& [name, value] : *asked) {
            if (name != kScalingOption || findOption(saved, name) == nullptr) {
                setOption(&options, name, value);
            }
        }
    }
    return options;
}

OSStatus writeReadyJob(const Job& job, int output) {
    if (job.setup == nullptr) {
        return filterWithCover(job, output);
    }
    const PrivateFile plain;
    OSStatus status = checkOpen(plain);
    if (status == noErr) {
        status = filterWithCover(job, plain.descriptor());
    }
    if (status != noErr) {
        return status;
    }
    std::string reason;
    return copyWithSetup(plain.path(), job.setup, output, &reason)
               ? noErr
               : failWith(kPMCannotWriteOutput, job.document, reason);
}
