#include "host/settings/panel_choices.h"

#include "host/settings/dictionary_values.h"
#include "host/settings/panel_items.h"
#include "host/settings/ticket_items.h"

#include <algorithm>
#include <array>

namespace {

#define kSeparatorOptionItem CFSTR("com.tavro.print.SeparatorOption")
#define kSeparatorColorItem CFSTR("com.tavro.print.SeparatorColor")
#define kFinishingItem CFSTR("com.tavro.print.FinishingOptions")
#define kCustomFinishingItem CFSTR("com.tavro.print.FinishingCustom")
#define kSlipSheetItem CFSTR("com.tavro.print.FinishingSlipSheet")
#define kOffsetItem CFSTR("com.tavro.print.FinishingOffset")
#define kSubsetItem CFSTR("com.tavro.print.FinishingOffsetEnableSubset")
#define kPagesPerSubsetItem CFSTR("com.tavro.print.FinishingOffsetPagesPerSubset")
#define kBookletItem CFSTR("com.tavro.print.BookletLayout")
#define kOutlinesItem CFSTR("com.tavro.print.BookletDrawOutlines")
#define kForceNewSizeItem CFSTR("com.tavro.print.BookletForceNewSize")
#define kBookletOrderItem CFSTR("com.tavro.print.AdvancedBookletLayoutOrderStr")
#define kFrontCoverItem CFSTR("com.tavro.print.SpecialPages.FrontCover")
#define kBackCoverItem CFSTR("com.tavro.print.SpecialPages.BackCover")
#define kInsertsItem CFSTR("com.tavro.print.SpecialPages.InsertList")
#define kExceptionsItem CFSTR("com.tavro.print.SpecialPages.ExceptionList")
#define kImageShiftKey CFSTR("com.tavro.print.ImageShiftOptionsPage")
#define kInvertImageItem CFSTR("com.tavro.print.InvertImageOptions")
#define kRotateItem CFSTR("com.tavro.print.AdvancedRotateImage180")
#define kJobInstructionsItem CFSTR("com.tavro.print.EmitTPIF")
#define kJobNotesMessageItem CFSTR("com.tavro.print.JobNotesMessage")
#define kJobNotesSheetMessageItem CFSTR("com.tavro.print.JobNotesSheetMessage")

constexpr SInt32 kOn = 2;  // of slip sheets and offset
constexpr SInt32 kRightToLeft = 1;
constexpr SInt32 kLeftToRight = 2;
constexpr SInt32 kWatermarkBehind = 1;
constexpr SInt32 kWatermarkInFront = 2;

SInt32 wholeNumberIn(CFDictionaryRef dictionary, CFStringRef key, SInt32 fallback = 0) {
    const double number = numberIn(dictionary, key).value_or(fallback);
    return number >= INT32_MIN && number <= INT32_MAX ? static_cast<SInt32>(number) : fallback;
}

/// Numbers that the panels count from 1; below is none of theirs.
SInt32 choiceIn(CFDictionaryRef dictionary, CFStringRef key) {
    return std::max(wholeNumberIn(dictionary, key), 0);
}

PanelChoices::Paper readPaper(CFDictionaryRef stock) {
    PanelChoices::Paper paper;
    paper.size = choiceIn(stock, CFSTR("Size"));
    paper.color = choiceIn(stock, CFSTR("Color"));
    paper.type = choiceIn(stock, CFSTR("Type"));
    paper.weight = choiceIn(stock, CFSTR("Weight"));
    const std::array details{CFSTR("Weight"),     CFSTR("Modulus"),     CFSTR("Punched"),
                             CFSTR("CustomType"), CFSTR("CustomColor"), CFSTR("SidesCoated"),
                             CFSTR("Finish"),     CFSTR("kGrain"),      CFSTR("CustomName")};
    paper.hasDetails =
        std::ranges::any_of(details, [&](CFStringRef key) { return CFDictionaryGetValue(stock, key) != nullptr; });
    return paper;
}

CFDictionaryRef dictionaryIn(CFDictionaryRef dictionary, CFStringRef key) {
    const void* const value = CFDictionaryGetValue(dictionary, key);
    return CFGetTypeID(value) == CFDictionaryGetTypeID() ? static_cast<CFDictionaryRef>(value) : nullptr;
}

std::optional<PanelChoices::Cover> readCover(PMTicketRef ticket, CFStringRef key) {
    const CFDictionaryRef cover = dictionaryItem(ticket, key);
    if (cover == nullptr) {
        return std::nullopt;
    }
    return PanelChoices::Cover{wholeNumberIn(cover, CFSTR("SidesImaged"), PanelChoices::blankSides),
                               readPaper(dictionaryIn(cover, CFSTR("Stock")))};
}

PanelChoices::Exception readException(CFDictionaryRef page) {
    return {wholeNumberIn(page, CFSTR("StartPage")),       wholeNumberIn(page, CFSTR("EndPage")),
            readPaper(dictionaryIn(page, CFSTR("Stock"))), choiceIn(page, CFSTR("SidesImaged")),
            wholeNumberIn(page, CFSTR("LightenDarken")),   dictionaryIn(page, kImageShiftKey) != nullptr};
}

/// Hands over each element that is a dictionary. Returns their number.
template <typename Take>
std::size_t eachDictionary(CFArrayRef list, Take take) {
    std::size_t count = 0;
    for (CFIndex i = 0; i < CFArrayGetCount(list); ++i) {
        const void* const element = CFArrayGetValueAtIndex(list, i);
        if (CFGetTypeID(element) == CFDictionaryGetTypeID()) {
            take(static_cast<CFDictionaryRef>(element));
            ++count;
        }
    }
    return count;
}

void readSpecialPages(PMTicketRef ticket, PanelChoices* choices) {
    choices->frontCover = readCover(ticket, kFrontCoverItem);
    choices->backCover = readCover(ticket, kBackCoverItem);
    choices->insertCount = eachDictionary(arrayItem(ticket, kInsertsItem), [](CFDictionaryRef) {});
    choices->exceptionCount = eachDictionary(arrayItem(ticket, kExceptionsItem), [&](CFDictionaryRef page) {
        if (choices->exceptions.size() < kMostExceptions) {
            choices->exceptions.push_back(readException(page));
        }
    });
}

void readPaperAndFinishing(PMTicketRef ticket, PanelChoices* choices) {
    choices->paper = readPaper(dictionaryItem(ticket, kJobLevelStockItem));
    choices->separators = numberItem(ticket, kSeparatorOptionItem, PanelChoices::noSeparators);
    choices->separatorColor = numberItem(ticket, kSeparatorColorItem, 1);
    choices->finishing = numberItem(ticket, kFinishingItem, 0);
    choices->customFinishing = stringItem(ticket, kCustomFinishingItem);
    choices->hasSlipSheets = numberItem(ticket, kSlipSheetItem, 0) == kOn;
    choices->isOffset = numberItem(ticket, kOffsetItem, 1) == kOn;
    if (choices->isOffset && numberItem(ticket, kSubsetItem, 0) != 0) {
        choices->pagesPerSubset = std::max(numberItem(ticket, kPagesPerSubsetItem, 1), 1);
    }
    choices->isBlackAndWhite = numberItem(ticket, kOutputColorItem, kOutputColor) == kOutputBlackAndWhite;
}

void readBooklet(PMTicketRef ticket, PanelChoices* choices) {
    choices->isBooklet = booleanItem(ticket, kBookletItem);
    if (choices->isBooklet) {
        choices->hasOutlines = numberItem(ticket, kOutlinesItem, 0) == 1;
        choices->bookletSize = booleanItem(ticket, kForceNewSizeItem) ? choices->paper.size : 0;
        choices->isRightToLeft = numberItem(ticket, kBookletOrderItem, kLeftToRight) == kRightToLeft;
    }
}

void readJob(PMTicketRef ticket, PanelChoices* choices) {
    choices->jobType = wholeNumberIn(dictionaryItem(ticket, kJobTypeItem), kJobTypeEntry, PanelChoices::normalJob);
    if (choices->jobType == PanelChoices::faxJob) {
        choices->faxRecipientCount = eachDictionary(arrayItem(ticket, kFaxRecipientsItem), [](CFDictionaryRef) {});
        choices->hasFaxCoverSheet =
            booleanIn(dictionaryItem(ticket, kFaxOptionsItem), CFSTR("CoverSheet")).value_or(false);
    }
    choices->hasJobInstructions = numberItem(ticket, kJobInstructionsItem, 1) != 0;
    choices->hasJobNotes =
        !stringItem(ticket, kJobNotesMessageItem).empty() || !stringItem(ticket, kJobNotesSheetMessageItem).empty();
}

void readImages(PMTicketRef ticket, PanelChoices* choices) {
    const CFDictionaryRef invert = dictionaryItem(ticket, kInvertImageItem);
    choices->isNegative = wholeNumberIn(invert, CFSTR("NegativeImage")) != 0;
    choices->isMirrored = wholeNumberIn(invert, CFSTR("MirrorImage")) != 0;
    choices->isRotated = numberItem(ticket, kRotateItem, 0) == 1;
    choices->watermark = stringItem(ticket, kWatermarkItem);
    choices->isWatermarkOnFirstPageOnly = numberItem(ticket, kWatermarkFirstPageOnlyItem, 0) != 0;
    choices->isWatermarkBehind = numberItem(ticket, kWatermarkOptionItem, kWatermarkInFront) == kWatermarkBehind;
}

}  // namespace

PanelChoices readPanelChoices(PMTicketRef printSettings) {
    PanelChoices choices;
    readSpecialPages(printSettings, &choices);
    readPaperAndFinishing(printSettings, &choices);
    readBooklet(printSettings, &choices);
    readJob(printSettings, &choices);
    readImages(printSettings, &choices);
    return choices;
}
