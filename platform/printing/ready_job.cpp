#include "platform/printing/ready_job.h"

#include "platform/printing/document_pages.h"
#include "platform/printing/last_error.h"

namespace {

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

/// A text of the user's that becomes a string of the PPD's PostScript: there a backslash begins something else, and
/// the print server's library escapes brackets only.
std::string escapedForPostScript(const PPDOption* option, const std::string& value) {
    if (option == nullptr || !option->hasTextCustom || option->isCommand || option->findChoice(value)) {
        return value;
    }
    std::string escaped;
    for (const char c : value) {
        escaped.append(c == '\\' ? 2 : 1, c);
    }
    return escaped;
}

}  // namespace

bool isUncollated(const JobRequest& request) {
    const std::string* const collate = findOption(request.choices, kCollateKeyword);
    return collate != nullptr && isSameOption(*collate, "False");
}

bool mustBeReady(const Job& job) {
    return !job.request.secrets.empty() || job.cover != nullptr || job.setup != nullptr ||
           (job.request.copies > 1 && isUncollated(job.request));
}

bool mustPickPages(const Job& job) {
    const OptionList& saved = job.printer->start.others;
    const std::string* const numberUp = findOption(saved, kNumberUpOption);
    const bool hasOtherSheets = (numberUp != nullptr && *numberUp != "1") || findOption(saved, "booklet") != nullptr;
    return job.cover != nullptr || (hasOtherSheets && findOption(job.request.layout, kPageRangesOption) != nullptr);
}

OSStatus pickPages(const Job& job, PrivateFile& pages) {
    if (!isKept(pages)) {
        return kPMCannotWriteOutput;
    }
    const std::string* const range = findOption(job.request.layout, kPageRangesOption);
    const Cover cover{job.cover, rotationAgainst(job.orientation)};
    std::string reason;
    if (writePages(cover, range == nullptr ? std::string() : *range, job.document, pages, &reason)) {
        return noErr;
    }
    return isKept(pages) ? failWith(kPMFilterFailed, job.document, reason) : kPMCannotWriteOutput;
}

OptionList filterOptions(const Job& job) {
    const StartingOptions& queue = job.printer->start;
    OptionList options = queue.others;
    // A portrait page must be asked for where the queue turns pages by itself.
    if (queue.orientation) {
        options.emplace_back(kOrientationOption, kPortraitRequested);
    }
    for (const auto& [name, value] : job.request.choices) {
        setOption(&options, name, escapedForPostScript(job.printer->ppd.findOption(name), value));
    }
    const bool hasScaling = findOption(queue.others, kScalingOption) != nullptr;
    for (const auto& [name, value] : job.request.layout) {
        const bool isDone = name == kPageRangesOption && mustPickPages(job);
        if (!isDone && (name != kScalingOption || !hasScaling)) {
            setOption(&options, name, value);
        }
    }
    return options;
}
