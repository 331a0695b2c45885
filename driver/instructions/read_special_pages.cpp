#include "driver/instructions/read_special_pages.h"

#include "driver/instructions/read_paper.h"
#include "driver/instructions/ticket_values.h"
#include "model/records/page_layers.h"
#include "model/records/special_page.h"
#include "model/settings/setting_map.h"
#include "model/settings/ticket_items.h"

#include <algorithm>

namespace {

constexpr SInt32 kMostShade = 3;
constexpr const char* kPrintersOwnType = "SystemDefault";  // of MediaType: says nothing

/// Hands over each element that is a dictionary.
template <typename Take>
void eachDictionary(CFArrayRef list, Take take) {
    for (CFIndex i = 0; i < CFArrayGetCount(list); ++i) {
        const void* const element = CFArrayGetValueAtIndex(list, i);
        if (CFGetTypeID(element) == CFDictionaryGetTypeID()) {
            take(static_cast<CFDictionaryRef>(element));
        }
    }
}

Paper paperOf(CFDictionaryRef page) {
    return readPaper(GetRecordDictionary(page, CFSTR("Stock")));
}

std::optional<CoverInstruction> readCover(PMTicketRef ticket, CFStringRef item) {
    const CFDictionaryRef dictionary = dictionaryOf(ticket, item);
    if (dictionary == nullptr) {
        return std::nullopt;
    }
    const SInt32 sides = Cover(dictionary).sidesImaged();
    return CoverInstruction{sides == kCoverSide1       ? CoverPrint::side1
                            : sides == kCoverSide2     ? CoverPrint::side2
                            : sides == kCoverBothSides ? CoverPrint::both
                                                       : CoverPrint::blank,
                            paperOf(dictionary)};
}

/// The cover that the printer's own options ask for.
CoverInstruction coverOfOptions(PMTicketRef ticket, bool isPair, bool isBlank) {
    const std::string media = isPair ? "JCLFrontBackMedia" : "JCLMedia";
    Paper paper;
    paper.color = choiceOf(ticket, makeString(media + "Color").get());
    paper.type = choiceOf(ticket, makeString(media + "Type").get());
    if (paper.type == kPrintersOwnType) {
        paper.type.clear();
    }
    return {isBlank ? CoverPrint::blank : CoverPrint::both, paper};
}

/// The panels' records have the last word. Options without records come from a queue, and of a pair of equal covers
/// the panels may leave the record of the front one.
void readCovers(PMTicketRef ticket, JobInstructions* job) {
    job->frontCover = readCover(ticket, kFrontCoverItem);
    job->backCover = readCover(ticket, kBackCoverItem);
    const std::string covers = choiceOf(ticket, CFSTR("JCLCovers"));
    if (job->backCover || covers.empty() || covers == "None") {
        return;
    }
    const bool isPair = covers.ends_with("Back");
    if (!job->frontCover) {
        job->frontCover = coverOfOptions(ticket, isPair, covers.starts_with("Blank"));
    }
    if (isPair) {
        job->backCover = job->frontCover;
    }
}

/// Points. A shift that has no option is none.
ImageShift shiftOf(const _IS_Options& options) {
    if (options.option == kTicketValueUnset) {
        return {};
    }
    const double unit = options.inches != 0 ? 72 : 72 / 25.4;
    return {options.x1 * unit, options.x2 * unit};
}

ExceptionInstruction exceptionOf(CFDictionaryRef dictionary) {
    const ExceptionPage page(dictionary);
    ExceptionInstruction exception;
    exception.paper = paperOf(dictionary);
    exception.sides = sidesOf(page.plex());
    exception.shift = shiftOf(page.imageShift());
    if (page.lightenDarken() != kTicketValueUnset) {
        exception.lightenDarken = std::clamp(page.lightenDarken(), -kMostShade, kMostShade);
    }
    return exception;
}

void readSeparators(PMTicketRef ticket, JobInstructions* job) {
    constexpr SInt32 kBlank = 2;
    constexpr SInt32 kPrinted = 3;
    const SInt32 option = GetTicketNumber(ticket, kSeparatorOptionItem, 0);
    job->separators = option == kBlank     ? Separators::blank
                      : option == kPrinted ? Separators::printed
                                           : Separators::none;
    if (job->separators != Separators::none) {
        job->separatorColor =
            paperOption(CFSTR("MediaColor"), GetTicketNumber(ticket, kSeparatorColorItem, kStockColorWhite));
    }
}

}  // namespace

std::optional<Sides> sidesOf(SInt32 value) {
    switch (value) {
        case 1:
            return Sides::one;
        case 2:
            return Sides::longEdge;
        case 3:
            return Sides::shortEdge;
        default:
            return std::nullopt;
    }
}

std::vector<InsertInstruction> readInserts(CFArrayRef list) {
    std::vector<InsertInstruction> inserts;
    eachDictionary(list, [&inserts](CFDictionaryRef dictionary) {
        const Insert insert(dictionary);
        inserts.push_back(
            {std::max<SInt32>(insert.startPage(), 0), std::max<SInt32>(insert.quantity(), 0), paperOf(dictionary)});
    });
    std::ranges::stable_sort(inserts, {}, &InsertInstruction::page);
    return inserts;
}

std::vector<ExceptionInstruction> readExceptions(CFArrayRef list) {
    std::vector<PageLayer> layers;
    std::vector<ExceptionInstruction> asked;
    eachDictionary(list, [&](CFDictionaryRef dictionary) {
        const ExceptionPage page(dictionary);
        layers.push_back({std::max<SInt32>(page.startPage(), 1), page.endPage()});
        asked.push_back(exceptionOf(dictionary));
    });
    std::vector<ExceptionInstruction> exceptions;
    for (const VisiblePages& visible : visiblePages(layers)) {
        exceptions.push_back(asked[visible.layer]);
        exceptions.back().pages = {visible.first, visible.last};
    }
    return exceptions;
}

void readCoversAndSeparators(PMTicketRef ticket, JobInstructions* job) {
    readCovers(ticket, job);
    readSeparators(ticket, job);
}
