#include "platform/printing/ready_job.h"

#include "platform/printing/document_pages.h"
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

constexpr const char* kCollateKeyword = "Collate";

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

bool isUncollated(const JobRequest& request) {
    const std::string* const collate = findOption(request.choices, kCollateKeyword);
    return collate != nullptr && *collate == "False";
}

/// The choices that must not be among the options of the filters, as defaults of a PPD: what it chooses by default is
/// chosen as well.
///
/// A filter takes its options from its command line, and every user of the machine can read that, while a file can be
/// kept from others. And the filters take "Collate" out of the options, so that no sets would be uncollated.
std::string choicesByDefault(const Job& job) {
    std::string lines;
    if (job.request.passcode) {
        lines += "*Default" + job.printer->ppd.passcodeKeyword + ": Custom." + *job.request.passcode + "\n";
    }
    if (isUncollated(job.request)) {
        lines += std::string("*Default") + kCollateKeyword + ": False\n";
    }
    return lines;
}

/// The printer's PPD with further lines. Of two defaults the last one holds.
bool addLines(const OpaquePMPrinter& printer, const std::string& lines, PrivateFile* copy) {
    std::ostringstream ppd;
    ppd << std::ifstream(printer.ppdPath, std::ios::binary).rdbuf();
    return copy->write(ppd.str() + "\n" + lines);
}

/// Runs the filters on a file that holds the job's document, or what was made of it.
OSStatus runFiltersOn(const std::string& input, const Job& job, int output) {
    std::string ppdPath = job.printer->ppdPath;
    std::optional<PrivateFile> ownPPD;
    if (const std::string lines = choicesByDefault(job); !lines.empty()) {
        ownPPD.emplace();
        if (!ownPPD->isOpen() || !addLines(*job.printer, lines, &*ownPPD)) {
            return failWith(kPMCannotWriteOutput, "temporary file", ownPPD->reason());
        }
        ppdPath = ownPPD->path();
    }
    const FilterJob filterJob{ppdPath,
                              utf8Text(job.printer->name.get()),
                              kReadyType,
                              userName(),
                              job.request.title,
                              job.request.copies,
                              filterOptionsText(filterOptions(job)),
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

OSStatus filterPages(const Job& job, int output) {
    if (!mustPickPages(job)) {
        return runFiltersOn(job.document, job, output);
    }
    const PrivateFile pages;
    const OSStatus status = pickPages(job, pages);
    return status == noErr ? runFiltersOn(pages.path(), job, output) : status;
}

}  // namespace

bool mustBeReady(const Job& job) {
    return job.request.passcode || job.cover != nullptr || job.setup != nullptr ||
           (job.request.copies > 1 && isUncollated(job.request));
}

bool mustPickPages(const Job& job) {
    const OptionList& saved = job.printer->start.others;
    const std::string* const numberUp = findOption(saved, kNumberUpOption);
    const bool hasOtherSheets = (numberUp != nullptr && *numberUp != "1") || findOption(saved, "booklet") != nullptr;
    return job.cover != nullptr || (hasOtherSheets && findOption(job.request.layout, kPageRangesOption) != nullptr);
}

OSStatus pickPages(const Job& job, const PrivateFile& pages) {
    if (!pages.isOpen()) {
        return failWith(kPMCannotWriteOutput, "temporary file", pages.reason());
    }
    const std::string* const range = findOption(job.request.layout, kPageRangesOption);
    const Cover cover{job.cover, rotationAgainst(job.orientation)};
    std::string reason;
    return writePages(cover, range == nullptr ? std::string() : *range, job.document, pages.path(), &reason)
               ? noErr
               : failWith(kPMFilterFailed, job.document, reason);
}

OptionList filterOptions(const Job& job) {
    const StartingOptions& queue = job.printer->start;
    OptionList options = queue.others;
    // A portrait page must be asked for where the queue turns pages by itself.
    if (queue.orientation) {
        options.emplace_back(kOrientationOption, kPortraitRequested);
    }
    setOptions(&options, job.request.choices);
    const bool hasScaling = findOption(queue.others, kScalingOption) != nullptr;
    for (const auto& [name, value] : job.request.layout) {
        const bool isDone = name == kPageRangesOption && mustPickPages(job);
        if (!isDone && (name != kScalingOption || !hasScaling)) {
            setOption(&options, name, value);
        }
    }
    return options;
}

OSStatus writeReadyJob(const Job& job, int output) {
    if (job.setup == nullptr) {
        return filterPages(job, output);
    }
    const PrivateFile plain;
    if (!plain.isOpen()) {
        return failWith(kPMCannotWriteOutput, "temporary file", plain.reason());
    }
    if (const OSStatus status = filterPages(job, plain.descriptor()); status != noErr) {
        return status;
    }
    std::string reason;
    return copyWithSetup(plain.path(), job.setup, output, &reason)
               ? noErr
               : failWith(kPMCannotWriteOutput, job.document, reason);
}
