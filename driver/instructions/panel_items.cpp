#include "driver/instructions/panel_items.h"

#include "driver/instructions/job_instructions.h"
#include "driver/instructions/read_paper.h"
#include "driver/instructions/ticket_values.h"
#include "jobtypes/records/job_type.h"
#include "model/settings/ppd_access.h"
#include "model/settings/ppd_option_maps.h"
#include "model/settings/ticket_items.h"
#include "platform/printing/PMPrinter.h"

#include <array>

namespace {

struct ItemRow {
    const char* mainKeyword;
    CFStringRef (*item)();
};
// clang-format off
constexpr std::array kItems{
    // main keyword                  item
    ItemRow{"Duplex",                [] { return kFinishingDuplexItem; }},
    ItemRow{"Duplex",                [] { return kDuplexingItem; }},
    ItemRow{"Duplex",                [] { return kBookletLayoutItem; }},  // a booklet is printed on both sides
    ItemRow{"OutputBin",             [] { return kFinishingOutputDestinationItem; }},
    ItemRow{"Collate",               [] { return kFinishingCollateStapleItem; }},
    ItemRow{"StapleLocation",        [] { return kFinishingCollateStapleItem; }},
    ItemRow{"TRFoldOptions",         [] { return kFinishingCollateStapleItem; }},
    ItemRow{"Jog",                   [] { return kFinishingOffsetItem; }},
    ItemRow{"TRStaple",              [] { return kFinishingOptionsItem; }},
    ItemRow{"TRPunch",               [] { return kFinishingOptionsItem; }},
    ItemRow{"TRFold",                [] { return kFinishingOptionsItem; }},
    ItemRow{"TRBind",                [] { return kFinishingOptionsItem; }},
    ItemRow{"TRBooklet",             [] { return kFinishingOptionsItem; }},
    ItemRow{kColorCorrectionKeyword, [] { return kFinishingOutputColorItem; }},
};
// clang-format on

void fill(PMTicketRef ticket, CFStringRef key, SInt32 value) {
    const auto items = CFRef<CFDictionaryRef>::adopt(PMTicketCopyItems(ticket));
    if (CFDictionaryGetValue(items.get(), key) == nullptr) {
        SetTicketNumber(ticket, kDriverClient, key, value);
    }
}

}  // namespace

void fillPaperAndTray(PMTicketRef printSettings) {
    const auto items = CFRef<CFDictionaryRef>::adopt(PMTicketCopyItems(printSettings));
    if (CFDictionaryGetValue(items.get(), kJobLevelStockItem) == nullptr) {
        // The panel fills an empty record from the PPD dictionary.
        PMTicketSetCFDictionary(printSettings, kDriverClient, kJobLevelStockItem, CreateRecordDictionary().get(),
                                kPMUnlocked);
    }
    CFStringRef tray = nullptr;
    PPDGetMainKeywordValue(printSettings, CFSTR("OutputBin"), &tray);
    const SInt32 destination =
        GetTicketValueForPPDOptionKeyword(GetPPDOptionMapForMainKeyword(CFSTR("OutputBin")), tray);
    if (destination != kNoTicketValue) {
        fill(printSettings, kFinishingOutputDestinationItem, destination);
    }
}

void fillSets(PMTicketRef printSettings, SInt32 item) {
    fill(printSettings, kFinishingCollateStapleItem, item);
}

void fillOutputColor(PMTicketRef printSettings) {
    if (choiceOf(printSettings, makeString(kColorCorrectionKeyword).get()) == kBlackAndWhiteCorrection &&
        GetTicketNumber(printSettings, kFinishingOutputColorItem, 0) == 0) {
        SetTicketNumber(printSettings, kDriverClient, kFinishingOutputColorItem, kOutputInBlackAndWhite);
    }
}

void setDocumentName(PMTicketRef printSettings, const std::string& name) {
    const auto text = makeString(name);
    const std::string inNotes = textOf(printSettings, kJobNotesJobNameItem);
    if (!inNotes.empty() && inNotes == textOf(printSettings, kPMJobNameKey)) {
        PMTicketSetCFString(printSettings, kDriverClient, kJobNotesJobNameItem, text.get(), kPMUnlocked);
    }
    PMTicketSetCFString(printSettings, kDriverClient, kPMJobNameKey, text.get(), kPMUnlocked);
}

void clearPanelItems(PMTicketRef printSettings, const std::string& mainKeyword) {
    for (const ItemRow& row : kItems) {
        if (row.mainKeyword == mainKeyword) {
            PMTicketReleaseItem(printSettings, kPMTopLevel, row.item());
        }
    }
}

void makeNormalJob(PMTicketRef printSettings) {
    if (const CFDictionaryRef job = dictionaryOf(printSettings, kJobTypeTicketKey)) {
        const auto normal = CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutableCopy(nullptr, 0, job));
        WriteTicketValue(normal.get(), kJobTypeKey, kJobTypeNormal);
        PMTicketSetCFDictionary(printSettings, kDriverClient, kJobTypeTicketKey, normal.get(), kPMUnlocked);
    }
}

std::string panelPaperType(PMTicketRef printSettings) {
    const CFDictionaryRef stock = dictionaryOf(printSettings, kJobLevelStockItem);
    return stock == nullptr ? std::string() : readPaper(stock).type;
}
