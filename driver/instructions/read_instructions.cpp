#include "driver/instructions/read_instructions.h"

#include "driver/instructions/page_options.h"
#include "driver/instructions/read_color.h"
#include "driver/instructions/read_job.h"
#include "driver/instructions/read_paper.h"
#include "driver/instructions/read_special_pages.h"
#include "driver/instructions/ticket_values.h"
#include "jobtypes/records/fax_options.h"
#include "jobtypes/records/job_type.h"
#include "model/records/finishing.h"
#include "model/settings/ppd_access.h"
#include "model/settings/ppd_option_maps.h"
#include "model/settings/ticket_items.h"
#include "platform/printing/PMPrinter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <utility>

namespace {

constexpr SInt32 kBannerOn = 1;  // in the option map

/// What the plug-in counts the option by; -1 for none that it knows.
SInt32 numberOfChoice(PMTicketRef ticket, CFStringRef mainKeyword) {
    CFStringRef option = nullptr;
    PPDGetMainKeywordValue(ticket, mainKeyword, &option);
    return GetTicketValueForPPDOptionKeyword(GetPPDOptionMapForMainKeyword(mainKeyword), option);
}

/// "1-3,7,10-"; what is no range is left out.
std::vector<PageSpan> spansOf(const std::string& range) {
    std::vector<PageSpan> spans;
    const char* at = range.data();
    const char* const end = at + range.size();
    while (at < end) {
        PageSpan span{0, std::numeric_limits<std::int64_t>::max()};
        const auto first = std::from_chars(at, end, span.first);
        at = first.ptr;
        if (at < end && *at == '-') {
            at = std::from_chars(at + 1, end, span.last).ptr;
        } else {
            span.last = span.first;
        }
        if (first.ec == std::errc() && span.first <= span.last) {
            spans.push_back(span);
        }
        at = std::find(at, end, ',');
        at += at < end ? 1 : 0;
    }
    return spans;
}

Orientation orientationOf(PMTicketRef pageFormat) {
    switch (GetTicketNumber(pageFormat, kPMOrientationKey, 1)) {
        case 2:
            return Orientation::landscape;
        case 3:
            return Orientation::reverseLandscape;
        default:
            return Orientation::portrait;
    }
}

/// The options of the PPD say what paper the job is on; the panel's own item knows more of it.
Paper readJobPaper(PMTicketRef ticket) {
    Paper paper = readPaper(dictionaryOf(ticket, kJobLevelStockItem));
    paper.size = choiceOf(ticket, CFSTR("PageSize"));
    paper.color = choiceOf(ticket, CFSTR("MediaColor"));
    paper.type = choiceOf(ticket, CFSTR("MediaType"));
    takePaperAttributes(ticket, &paper);
    return paper;
}

void readPages(PMTicketRef ticket, PMTicketRef pageFormat, JobInstructions* job) {
    job->pages = spansOf(textOf(ticket, kPMPageRangeKey));
    job->copies = std::max(GetTicketNumber(ticket, kPMCopiesKey, 1), 1);
    job->isCollated = choiceOf(ticket, CFSTR("Collate")) != "False";
    job->orientation = orientationOf(pageFormat);
}

void readLayout(PMTicketRef ticket, JobInstructions* job) {
    if (flagOf(ticket, kBookletLayoutItem)) {
        BookletInstruction booklet;
        booklet.hasOutlines = GetTicketNumber(ticket, kBookletDrawOutlinesItem, 0) == 1;
        booklet.isRightToLeft =
            GetTicketNumber(ticket, kBookletLayoutOrderItem, kBookletOrderLeftToRight) == kBookletOrderRightToLeft;
        if (flagOf(ticket, kBookletForceNewSizeItem)) {
            booklet.paperSize = readPaper(dictionaryOf(ticket, kJobLevelStockItem)).size;
        }
        job->booklet = booklet;
    }
    const CFDictionaryRef invert = dictionaryOf(ticket, kInvertImageOptionsItem);
    job->isNegative = numberIn(invert, kNegativeImageKey) != 0;
    job->isMirrored = numberIn(invert, kMirrorImageKey) != 0;
    job->isRotated = GetTicketNumber(ticket, kRotateImage180Item, 0) == 1;
    if (const std::string name = textOf(ticket, kWatermarkItem); !name.empty()) {
        job->watermark = {name, GetTicketNumber(ticket, kWatermarkFirstPageOnlyItem, 0) != 0,
                          GetTicketNumber(ticket, kWatermarkOptionItem, kWatermarkInFront) == kWatermarkBehind};
    }
}

void readFinishing(PMTicketRef ticket, JobInstructions* job) {
    FinishingInstruction& finishing = job->finishing;
    finishing.value = GetTicketNumber(ticket, kFinishingOptionsItem, kFinishingValueDefault);
    if (finishing.value == kFinishingValueDefault) {
        finishing.value = ReadPPDFinishing(ticket);
    }
    finishing.custom = textOf(ticket, kFinishingCustomItem);
    finishing.hasSlipSheets = GetTicketNumber(ticket, kFinishingSlipSheetItem, 0) == kSlipSheetsOn;
    if (GetTicketNumber(ticket, kFinishingOffsetItem, kOffsetOff) == kOffsetOn) {
        const bool hasSubsets = GetTicketNumber(ticket, kFinishingOffsetEnableSubsetItem, 0) != 0;
        finishing.offset = hasSubsets ? Offset::subsets : Offset::sets;
        finishing.pagesPerSubset = std::max(GetTicketNumber(ticket, kFinishingOffsetPagesPerSubsetItem, 1), 1);
    }
    finishing.outputTray = choiceOf(ticket, CFSTR("OutputBin"));
    finishing.staples = choiceOf(ticket, CFSTR("StapleLocation"));
    finishing.folds = choiceOf(ticket, CFSTR("TRFoldOptions"));
    const SInt32 color = GetTicketNumber(ticket, kFinishingOutputColorItem, 0);
    job->outputColor = color == kOutputInBlackAndWhite ? OutputColor::blackAndWhite
                       : color == kOutputInColor       ? OutputColor::color
                                                       : OutputColor::asPrinter;
}

/// All but the lists.
JobInstructions readFacts(PMTicketRef printSettings, PMTicketRef pageFormat) {
    JobInstructions job;
    readPages(printSettings, pageFormat, &job);
    readLayout(printSettings, &job);
    readPageOptions(printSettings, &job);
    job.paper = readJobPaper(printSettings);
    job.sides = sidesOf(numberOfChoice(printSettings, CFSTR("Duplex"))).value_or(Sides::one);
    readCoversAndSeparators(printSettings, &job);
    readFinishing(printSettings, &job);
    job.colors = readColors(printSettings);
    job.usualColors = readColorOptions(printSettings);
    job.hasBanner = numberOfChoice(printSettings, CFSTR("JCLBanner")) == kBannerOn;
    readJob(printSettings, &job);
    return job;
}

/// What was read of a list, if that was the same one. Tickets hold copies that nobody changes, so a list that is
/// another one has another address as long as the first is retained.
template <typename Element>
bool takeList(CFArrayRef list, std::vector<Element> (*read)(CFArrayRef), CFRef<CFArrayRef>* known,
              std::vector<Element>* was, std::vector<Element>* now) {
    const bool isKnown = list == known->get();
    *now = isKnown ? std::move(*was) : read(list);
    *known = CFRef<CFArrayRef>::retain(list);
    return isKnown;
}

}  // namespace

JobInstructions readInstructions(PMTicketRef printSettings, PMTicketRef pageFormat) {
    return InstructionsReader().read(printSettings, pageFormat);
}

const JobInstructions& InstructionsReader::read(PMTicketRef printSettings, PMTicketRef pageFormat) {
    JobInstructions job = readFacts(printSettings, pageFormat);
    std::vector<InsertInstruction> inserts;
    std::vector<ExceptionInstruction> exceptions;
    std::vector<FaxRecipientInstruction> recipients;
    std::vector<FaxRecipientInstruction> knownRecipients;
    if (job_.fax) {
        std::swap(knownRecipients, job_.fax->recipients);
    }
    const CFArrayRef recipientList = job.fax ? arrayOf(printSettings, kFaxRecipientListTicketKey) : nullptr;
    const std::array areKnown{
        takeList(arrayOf(printSettings, kInsertListItem), readInserts, &inserts_, &job_.inserts, &inserts),
        takeList(arrayOf(printSettings, kExceptionListItem), readExceptions, &exceptions_, &job_.exceptions,
                 &exceptions),
        takeList(recipientList, readFaxRecipients, &recipients_, &knownRecipients, &recipients)};
    job_.inserts.clear();
    job_.exceptions.clear();
    if (job != job_ || std::ranges::find(areKnown, false) != areKnown.end()) {
        ++version_;
    }
    job_ = std::move(job);
    job_.inserts = std::move(inserts);
    job_.exceptions = std::move(exceptions);
    if (job_.fax) {
        job_.fax->recipients = std::move(recipients);
    }
    return job_;
}

JobSecrets readSecrets(PMTicketRef printSettings) {
    JobSecrets secrets;
    const JobKind kind = readJobKind(printSettings);
    if (kind == JobKind::secure) {
        secrets.passcode = textIn(dictionaryOf(printSettings, kJobTypeTicketKey), kSecurePrintPasswordKey);
    } else if (kind == JobKind::fax) {
        const CFDictionaryRef options = dictionaryOf(printSettings, kFaxOptionsTicketKey);
        secrets.creditCard = textIn(options, kFaxCreditCardProperty);
        secrets.dialingPrefix = textIn(options, kFaxDialingPrefixProperty);
    }
    return secrets;
}
