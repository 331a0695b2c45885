// A job's way through the filters.
#include "platform/files/plain_file.h"
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"
#include "platform/printing/filter_chain.h"
#include "platform/printing/filter_route.h"
#include "platform/printing/interruption.h"
#include "platform/printing/job_stream.h"
#include "platform/printing/last_error.h"
#include "platform/printing/ready_job.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <vector>

#include <pwd.h>
#include <unistd.h>

namespace {

std::string userName() {
    const passwd* const entry = getpwuid(getuid());
    return entry == nullptr ? std::to_string(getuid()) : entry->pw_name;
}

/// The choices that must not be among the options of the filters, as defaults of a PPD: what it chooses by default is
/// chosen as well.
///
/// A filter takes its options from its command line, and every user of the machine can read that, while a file can be
/// kept from others. And the filters take "Collate" out of the options, so that no sets would be uncollated.
std::string choicesByDefault(const Job& job) {
    std::string lines;
    for (const auto& [keyword, secret] : job.request.secrets) {
        lines.append("*Default").append(keyword).append(": Custom.").append(secret).append("\n");
    }
    if (isUncollated(job.request)) {
        lines += std::string("*Default") + kCollateKeyword + ": False\n";
    }
    return lines;
}

/// As much as the filters get of options: Linux takes 131,072 bytes in an argument.
constexpr std::size_t kLongestOptions = 100'000;

/// Of options that are too long for an argument, makes the choices of the PPD defaults of it, too.
std::string takeLongChoices(const Job& job, OptionList* options) {
    std::string lines;
    if (filterOptionsText(*options).size() > kLongestOptions) {
        std::erase_if(*options, [&](const auto& option) {
            const PPDOption* const known = job.printer->ppd.findOption(option.first);
            if (known != nullptr) {
                lines.append("*Default").append(known->keyword).append(": ").append(option.second).append("\n");
            }
            return known != nullptr;
        });
    }
    return lines;
}

/// What a message calls the printer's PPD.
std::string ppdName(const OpaquePMPrinter& printer) {
    return printer.queue.empty() ? printer.ppdPath : messageText("the PPD of %1", {printer.queue});
}

/// The printer's PPD as the job's filters get it: with further lines, of which the last default holds. It is kept in
/// memory, because a passcode may be in it.
struct JobPPD {
    std::optional<PrivateFile> own;
    FilterFile file;
};

OSStatus makePPD(const Job& job, const std::string& lines, JobPPD* made) {
    const OpaquePMPrinter& printer = *job.printer;
    made->file = {printer.ppdPath, printer.ppdCopy ? printer.ppdCopy->descriptor() : -1};
    if (lines.empty()) {
        return noErr;
    }
    const auto ppd = readPlainFile(printer.ppdPath, kPPDMaximumBytes);
    if (!ppd) {
        return failWith(kPMUnusableDescription, ppdName(printer), readFault(errno, kPPDMaximumBytes));
    }
    PrivateFile& own = made->own.emplace(PrivateFile::Place::memory);
    own.write(bytesOf(ppd.get()));
    own.write("\n" + lines);
    made->file = {{}, own.descriptor()};
    return isKept(own) ? noErr : kPMCannotWriteOutput;
}

/// The path of a file that filters read, for this program.
std::string pathOf(const FilterFile& file) {
    return file.descriptor < 0 ? file.path : "/proc/self/fd/" + std::to_string(file.descriptor);
}

std::uintmax_t sizeOf(const FilterFile& file) {
    std::error_code ignored;
    return std::filesystem::file_size(pathOf(file), ignored);
}

OSStatus copyFile(const FilterFile& file, ByteSink& output) {
    std::ifstream input(pathOf(file), std::ios::binary);
    std::vector<char> bytes(65536);
    while (input) {
        input.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (!output.write({bytes.data(), static_cast<std::size_t>(input.gcount())})) {
            return kPMCannotWriteOutput;
        }
    }
    return input.eof() ? noErr : failWith(kPMFilterFailed, file.path, messageText("cannot be read to its end"));
}

/// Runs some of a route's filters on a file. On failure the last error has the reason, but for `output`.
OSStatus runSome(std::span<const std::string> filters, const Job& job, const FilterJob& filterJob, ByteSink& output) {
    std::string reason;
    clearLastError();
    const OSStatus status = runFilters(filters, filterJob, output, &reason);
    if (isInterrupted()) {
        return failWith(kPMFilterFailed, job.document, messageText("was stopped"));
    }
    return status == noErr || reason.empty() ? status : failWith(status, job.document, reason);
}

/// Runs a route's filters on a file. The first one's work is kept in a file, since the next one would make a file of
/// its own of a pipe, and not see when there is no room for it.
OSStatus runRoute(const FilterRoute& route, const Job& job, FilterJob filterJob, ByteSink& output) {
    const std::span<const std::string> filters(route.filters);
    if (filters.empty()) {
        return copyFile(filterJob.document, output);
    }
    filterJob.finalContentType =
        route.finalContentType.empty() ? "printer/" + filterJob.printerName : route.finalContentType;
    if (filters.size() == 1) {
        return runSome(filters, job, filterJob, output);
    }
    PrivateFile pages;
    if (isKept(pages)) {
        if (const OSStatus status = runSome(filters.first(1), job, filterJob, pages);
            status != noErr && pages.error() == 0) {
            return status;
        }
    }
    if (!isKept(pages)) {
        return kPMCannotWriteOutput;
    }
    filterJob.document = {job.document, pages.descriptor()};
    return runSome(filters.subspan(1), job, filterJob, output);
}

/// A missing filter is a matter of the PPD and the machine, not of the document.
OSStatus failWithoutRoute(const Job& job, const std::string& reason) {
    return failWith(kPMFilterFailed, ppdName(*job.printer), reason);
}

/// Makes PostScript of the file.
OSStatus filterToPostScript(const Job& job, const FilterJob& filterJob, ByteSink& output) {
    std::string reason;
    const auto route = findRoute(filterJob.contentType, kReadyType, &reason);
    if (!route) {
        return failWithoutRoute(job, reason);
    }
    JobCounter counter(output);
    const OSStatus status = runRoute(*route, job, filterJob, counter);
    return status == noErr && counter.pages() < job.pageCount
               ? failWith(
                     kPMFilterFailed, job.document,
                     messageText("%1 wrote %2 of %3 pages", {route->filters.back(), counter.pages(), job.pageCount}))
               : status;
}

OSStatus filterForPrinter(const Job& job, const FilterJob& filterJob, ByteSink& output) {
    if (readsPostScript(*job.printer)) {
        return filterToPostScript(job, filterJob, output);
    }
    std::string reason;
    const auto route =
        findRouteToPrinter(filterJob.contentType, sizeOf(filterJob.document), job.printer->ppd.filters, &reason);
    return route ? runRoute(*route, job, filterJob, output) : failWithoutRoute(job, reason);
}

using Filtering = OSStatus (*)(const Job& job, const FilterJob& filterJob, ByteSink& output);

/// Puts together what all filters of a job get, and hands it over.
OSStatus filterJob(const Job& job, Filtering filter, ByteSink& output) {
    JobPPD ppd;
    OptionList options = filterOptions(job);
    // A secret has the last word about its option.
    const std::string defaults = takeLongChoices(job, &options) + choicesByDefault(job);
    if (const OSStatus status = makePPD(job, defaults, &ppd); status != noErr) {
        return status;
    }
    JobCounter counter(output);
    const OSStatus status = filter(job,
                                   {ppd.file,
                                    ppdName(*job.printer),
                                    utf8Text(job.printer->name.get()),
                                    job.contentType,
                                    kReadyType,
                                    job.request.owner.empty() ? userName() : job.request.owner,
                                    job.request.title,
                                    job.request.copies,
                                    filterOptionsText(options),
                                    {{}, job.file}},
                                   counter);
    return status == noErr && counter.bytes() == 0
               ? failWith(kPMFilterFailed, job.document, messageText("the filters wrote nothing"))
               : status;
}

}  // namespace

bool readsPostScript(const OpaquePMPrinter& printer) {
    std::string ignored;
    const auto route = findRouteToPrinter(kReadyType, 0, printer.ppd.filters, &ignored);
    return route && route->filters.empty();
}

OSStatus writePrinterJob(const Job& job, ByteSink& output) {
    return filterJob(job, filterForPrinter, output);
}

OSStatus writePostScriptJob(const Job& job, ByteSink& output) {
    return filterJob(job, filterToPostScript, output);
}

OSStatus PMWritePostScript(int pages, CFURLRef document, CFStringRef resolution, ByteSink* output) {
    const Interruption interruption;
    clearLastError();
    const std::string name = filePath(document);
    FilterJob job;
    job.ppdName = name;
    job.printerName = "printer";
    job.contentType = kPDFType;
    job.finalContentType = kReadyType;
    job.user = userName();
    job.options = filterOptionsText({{"Resolution", utf8Text(resolution)}});
    job.document.descriptor = pages;
    std::string reason;
    const std::string filter = "pdftops";
    const OSStatus status = runFilters({&filter, 1}, job, *output, &reason);
    if (isInterrupted()) {
        return failWith(kPMFilterFailed, name, messageText("was stopped"));
    }
    return status == noErr || reason.empty() ? status : failWith(status, name, reason);
}
