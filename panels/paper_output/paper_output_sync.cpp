#include "panels/paper_output/paper_output_sync.h"

#include "jobtypes/fax_options.h"
#include "model/booklet_fold.h"
#include "model/ppd_access.h"
#include "model/ppd_option_maps.h"
#include "model/setting_map.h"
#include "panels/paper_output/finishing_offset_dialog.h"
#include "panels/paper_output/ppd_choice.h"

namespace {

#define kCreator CFSTR("com.tavro.printingmanager")
#define kJobLevelStockKey CFSTR("com.tavro.print.JobLevelStock")
#define kFinishingOptionsKey CFSTR("com.tavro.print.FinishingOptions")
#define kOffsetKey CFSTR("com.tavro.print.FinishingOffset")
#define kEnableSubsetKey CFSTR("com.tavro.print.FinishingOffsetEnableSubset")
#define kPagesPerSubsetKey CFSTR("com.tavro.print.FinishingOffsetPagesPerSubset")
#define kSlipSheetKey CFSTR("com.tavro.print.FinishingSlipSheet")
#define kCustomFinishingKey CFSTR("com.tavro.print.FinishingCustom")
#define kFinishingDuplexKey CFSTR("com.tavro.print.FinishingDuplex")
#define kPMDuplexingKey CFSTR("com.apple.print.PrintSettings.PMDuplexing")
#define kOutputDestinationKey CFSTR("com.tavro.print.FinishingOutputDestination")
#define kCollateStapleKey CFSTR("com.tavro.print.FinishingCollateStaple")
#define kBookletLayoutKey CFSTR("com.tavro.print.BookletLayout")
#define kFoldStapleKey CFSTR("com.tavro.print.BookletFoldStaple")
#define kDrawOutlinesKey CFSTR("com.tavro.print.BookletDrawOutlines")
#define kForceNewSizeKey CFSTR("com.tavro.print.BookletForceNewSize")
#define kStockSizeKey CFSTR("Size")

#define kMediaColorMainKeyword CFSTR("MediaColor")
#define kMediaTypeMainKeyword CFSTR("MediaType")
#define kPageSizeMainKeyword CFSTR("PageSize")
#define kDuplexMainKeyword CFSTR("Duplex")
#define kOutputBinMainKeyword CFSTR("OutputBin")
#define kFoldMainKeyword CFSTR("TRFoldOptions")
#define kCollateMainKeyword CFSTR("Collate")

// Values of the option map of "Duplex".
constexpr SInt32 kOneSided = 1;
constexpr SInt32 kLongEdge = 2;
constexpr SInt32 kShortEdge = 3;

bool IsOptionValue(CFStringRef mainKeyword, SInt32 value) {
    return GetPPDOptionKeywordForTicketValue(GetPPDOptionMapForMainKeyword(mainKeyword), value) != nullptr;
}

bool IsBookletFold(SInt32 foldOptions) {
    return foldOptions == kFoldBooklet || foldOptions == kFoldAndStapleBooklet;
}

CFDictionaryRef GetDictionary(PMTicketRef ticket, CFStringRef key) {
    CFDictionaryRef dictionary = nullptr;
    PMTicketGetCFDictionary(ticket, kPMTopLevel, kPMTopLevel, key, &dictionary);
    return dictionary;
}

/// The number of an item that has a meaning from `first` to `last` only.
SInt32 ReadNumber(PMTicketRef ticket, CFStringRef key, SInt32 missing, SInt32 first, SInt32 last) {
    const SInt32 number = GetTicketNumber(ticket, key, missing);
    return number >= first && number <= last ? number : missing;
}

bool ReadBoolean(PMTicketRef ticket, CFStringRef key) {
    CFBooleanRef value = nullptr;
    return PMTicketGetCFBoolean(ticket, kPMTopLevel, kPMTopLevel, key, &value) == noErr && value == kCFBooleanTrue;
}

void WriteBoolean(bool value, CFStringRef key, PMTicketRef ticket) {
    PMTicketSetCFBoolean(ticket, kCreator, key, value ? kCFBooleanTrue : kCFBooleanFalse, kPMUnlocked);
}

// ---- Paper

/// The color comes first: a type that is transparent makes it clear.
Stock ReadStock(PMTicketRef ticket) {
    Stock stock;
    if (const CFDictionaryRef stored = GetDictionary(ticket, kJobLevelStockKey)) {
        stock = Stock(stored);
        if (const SInt32 color = ReadPPDChoice(ticket, kMediaColorMainKeyword, -1); color != -1) {
            stock.setColor(color);
        }
        if (const SInt32 type = ReadPPDChoice(ticket, kMediaTypeMainKeyword, -1); type != -1) {
            stock.setType(type);
        }
    } else {
        DefaultStock(&stock, JobContext::job);
    }
    return stock;
}

/// Paper of the job has a size only where a booklet is printed on another one.
void WriteStock(const PaperOutputSettings& settings, PMTicketRef ticket) {
    const CFRef<CFMutableDictionaryRef> stock = settings.stock.asTicket();
    if (settings.booklet && settings.forceNewSize) {
        WriteTicketValue(stock.get(), kStockSizeKey, settings.bookletSize);
    } else {
        CFDictionaryRemoveValue(stock.get(), kStockSizeKey);
    }
    PMTicketSetCFDictionary(ticket, kCreator, kJobLevelStockKey, stock.get(), kPMUnlocked);
    WritePPDChoice(settings.stock.color(), kMediaColorMainKeyword, ticket);
    WritePPDChoice(settings.stock.type(), kMediaTypeMainKeyword, ticket);
}

// ---- Finishing

FinishingSettings ReadFinishing(PMTicketRef ticket) {
    FinishingSettings finishing;
    finishing.options = GetTicketNumber(ticket, kFinishingOptionsKey, kFinishingValueDefault);
    if (FindFinishingChoice(finishing.options) == nullptr && !SplitFinishingValue(finishing.options)) {
        finishing.options = kFinishingValueDefault;
    }
    finishing.offset = ReadNumber(ticket, kOffsetKey, kOffsetOff, kOffsetOff, kOffsetOn);
    finishing.enableSubset = ReadNumber(ticket, kEnableSubsetKey, 0, 0, 1);
    if (finishing.enableSubset != 0) {
        finishing.pagesPerSubset = ReadNumber(ticket, kPagesPerSubsetKey, 1, 1, kMostPagesPerSubset);
    }
    finishing.slipSheet = ReadNumber(ticket, kSlipSheetKey, 0, kSlipSheetsOn, kSlipSheetsOn);
    CFStringRef custom = nullptr;
    PMTicketGetCFString(ticket, kPMTopLevel, kPMTopLevel, kCustomFinishingKey, &custom);
    finishing.custom = CFRef<CFStringRef>::retain(custom != nullptr ? custom : CFSTR(""));
    return finishing;
}

void WriteFinishing(const FinishingSettings& finishing, PMTicketRef ticket) {
    SetTicketNumber(ticket, kCreator, kFinishingOptionsKey, finishing.options);
    SetTicketNumber(ticket, kCreator, kOffsetKey, finishing.offset);
    SetTicketNumber(ticket, kCreator, kEnableSubsetKey, finishing.enableSubset);
    if (finishing.enableSubset != 0) {
        SetTicketNumber(ticket, kCreator, kPagesPerSubsetKey, finishing.pagesPerSubset);
    }
    SetTicketNumber(ticket, kCreator, kSlipSheetKey, finishing.slipSheet);
    PMTicketSetCFString(ticket, kCreator, kCustomFinishingKey, finishing.custom ? finishing.custom.get() : CFSTR(""),
                        kPMUnlocked);
}

/// A booklet fold was chosen elsewhere, and later: it takes the place of a staple or fold of the menu.
void DropChoiceBehindBookletFold(PaperOutputSettings* settings) {
    if (IsBookletFold(settings->foldOptions) && settings->collateStaple > kCollated) {
        settings->collateStaple = kCollated;
    }
}

void ReadCollateStaple(PMTicketRef ticket, const PaperOutputScope& scope, PaperOutputSettings* settings) {
    const PPDKeywordPairs& pairs = scope.collateStaplePairs;
    const SInt32 stored = GetTicketNumber(ticket, kCollateStapleKey, kCollated);
    CFStringRef collate = nullptr;
    PPDGetMainKeywordValue(ticket, kCollateMainKeyword, &collate);
    settings->collateStaple =
        CollateStapleForOption(IsCollateStapleOffered(stored, pairs) ? stored : kCollated, collate);
    settings->foldOptions = ReadPPDChoice(ticket, kFoldMainKeyword, kFoldNone);
    if (settings->collateStaple != stored && IsFoldChoice(stored, pairs) && !IsBookletFold(settings->foldOptions)) {
        settings->foldOptions = kFoldNone;
    }
    DropChoiceBehindBookletFold(settings);
}

// ---- Sides and booklet

SInt32 ReadDuplex(PMTicketRef ticket) {
    for (const CFStringRef key : {kFinishingDuplexKey, kPMDuplexingKey}) {
        if (const SInt32 duplex = GetTicketNumber(ticket, key, -1); IsOptionValue(kDuplexMainKeyword, duplex)) {
            return duplex;
        }
    }
    return ReadPPDChoice(ticket, kDuplexMainKeyword, kOneSided);
}

void WriteDuplex(SInt32 duplex, PMTicketRef ticket) {
    WritePPDChoice(duplex, kDuplexMainKeyword, ticket);
    SetTicketNumber(ticket, kCreator, kFinishingDuplexKey, duplex);
    SetTicketNumber(ticket, kCreator, kPMDuplexingKey, duplex);
}

void ReadBooklet(PMTicketRef ticket, PaperOutputSettings* settings) {
    settings->booklet = ReadBoolean(ticket, kBookletLayoutKey);
    settings->forceNewSize = false;
    settings->bookletSize = 0;
    if (!settings->booklet) {
        return;
    }
    settings->drawOutlines = ReadNumber(ticket, kDrawOutlinesKey, 0, 0, 1);
    settings->forceNewSize = ReadBoolean(ticket, kForceNewSizeKey);
    if (settings->forceNewSize) {
        SInt32 size = 0;
        ReadTicketValue(GetDictionary(ticket, kJobLevelStockKey), kStockSizeKey, &size);
        settings->bookletSize = IsOptionValue(kPageSizeMainKeyword, size) ? size : 0;
    }
}

void WriteBooklet(const PaperOutputSettings& settings, PMTicketRef ticket) {
    WriteBoolean(settings.booklet, kBookletLayoutKey, ticket);
    SetTicketNumber(ticket, kCreator, kFoldStapleKey, settings.foldOptions);
    if (settings.booklet) {
        SetTicketNumber(ticket, kCreator, kDrawOutlinesKey, settings.drawOutlines);
        WriteBoolean(settings.forceNewSize, kForceNewSizeKey, ticket);
    }
}

// ---- Output

SInt32 ReadOutputDestination(PMTicketRef ticket) {
    const SInt32 destination = GetTicketNumber(ticket, kOutputDestinationKey, kOutputAutomatic);
    return destination == kTicketValueUnset || IsOutputDestinationInstalled(destination) ? destination
                                                                                         : kOutputAutomatic;
}

void WriteOutputDestination(SInt32 destination, PMTicketRef ticket) {
    if (destination != kTicketValueUnset) {
        SetTicketNumber(ticket, kCreator, kOutputDestinationKey, destination);
    } else {
        PMTicketReleaseItem(ticket, kPMTopLevel, kOutputDestinationKey);
    }
}

// ---- The job's type, and faxes

void ReadJobType(PMTicketRef ticket, PaperOutputSettings* settings) {
    settings->jobDictionary = settings->job.read(ticket);
    if (TicketToUI(JobTypeMap, settings->job.jobType) == -1 && settings->job.jobType != kJobTypeOfOtherEditions) {
        settings->job.jobType = kJobTypeNormal;
    }
}

void WriteJobType(PaperOutputSettings* settings, PMTicketRef ticket) {
    if (!settings->jobDictionary) {
        settings->jobDictionary = CreateRecordDictionary();
    }
    settings->job.write(settings->jobDictionary.get(), ticket);
    PMTicketSetCFDictionary(ticket, kCreator, kJobTypeTicketKey, settings->jobDictionary.get(), kPMUnlocked);
}

CFArrayRef GetRecipients(PMTicketRef ticket) {
    CFArrayRef recipients = nullptr;
    PMTicketGetCFArray(ticket, kPMTopLevel, kPMTopLevel, kFaxRecipientListTicketKey, &recipients);
    return recipients;
}

void ReadFax(PMTicketRef ticket, PaperOutputSettings* settings) {
    const CFDictionaryRef options = GetDictionary(ticket, kFaxOptionsTicketKey);
    settings->faxOptions = CFRef<CFMutableDictionaryRef>::adopt(
        options != nullptr ? CFDictionaryCreateMutableCopy(kCFAllocatorDefault, 0, options) : nullptr);
    const CFArrayRef recipients = GetRecipients(ticket);
    if (recipients == nullptr || recipients != settings->faxRecipientsInTicket.get()) {
        settings->faxRecipients = recipients != nullptr ? std::make_unique<FaxRecipientList>(recipients) : nullptr;
        settings->faxRecipientsInTicket = CFRef<CFArrayRef>::retain(recipients);
    }
}

void WriteFax(PaperOutputSettings* settings, PMTicketRef ticket) {
    if (settings->faxOptions) {
        PMTicketSetCFDictionary(ticket, kCreator, kFaxOptionsTicketKey, settings->faxOptions.get(), kPMUnlocked);
    }
    const CFArrayRef known = settings->faxRecipientsInTicket.get();
    if (settings->faxRecipients && (known == nullptr || known != GetRecipients(ticket))) {
        PMTicketSetCFArray(ticket, kCreator, kFaxRecipientListTicketKey, settings->faxRecipients->toTicket().get(),
                           kPMUnlocked);
        settings->faxRecipientsInTicket = CFRef<CFArrayRef>::retain(GetRecipients(ticket));
    }
}

}  // namespace

PaperOutputSettings::PaperOutputSettings() {
    DefaultStock(&stock, JobContext::job);
}

void ReadPaperOutputSettings(PMTicketRef ticket, const PaperOutputScope& scope, PaperOutputSettings* settings) {
    settings->stock = ReadStock(ticket);
    settings->finishing = ReadFinishing(ticket);
    settings->outputDestination = ReadOutputDestination(ticket);
    settings->outputColor = ReadOutputColor(ticket);
    SyncSeparatorsFromTicket(ticket, &settings->separatorOption, &settings->separatorColor);
    ReadJobType(ticket, settings);
    ReadBooklet(ticket, settings);
    settings->duplex = ReadDuplex(ticket);
    ReadFax(ticket, settings);
    ReadCollateStaple(ticket, scope, settings);
}

void WritePaperOutputSettings(PaperOutputSettings* settings, const PaperOutputScope& scope, PMTicketRef ticket) {
    WriteStock(*settings, ticket);
    WriteFinishing(settings->finishing, ticket);
    if (scope.hasDuplexControl) {
        WriteDuplex(settings->duplex, ticket);
    }
    WriteOutputDestination(settings->outputDestination, ticket);
    WriteOutputColor(settings->outputColor, ticket);
    WriteJobType(settings, ticket);
    WriteFax(settings, ticket);
    SyncSeparatorsToTicket(ticket, settings->separatorOption, settings->separatorColor);
    WritePPDChoice(settings->outputDestination, kOutputBinMainKeyword, ticket);
    // A choice of the collate and staple menu that folds or punches overrides the fold options.
    WritePPDChoice(settings->foldOptions, kFoldMainKeyword, ticket);
    WriteCollateStaple(*settings, scope.collateStaplePairs, ticket);
    if (scope.isBookletControlActive) {
        WriteBooklet(*settings, ticket);
    }
}

void WriteCollateStaple(const PaperOutputSettings& settings, const PPDKeywordPairs& pairs, PMTicketRef ticket) {
    SetTicketNumber(ticket, kCreator, kCollateStapleKey, settings.collateStaple);
    CFMutableDictionaryRef ppdDictionary = nullptr;
    if (PMTicketGetPPDDict(ticket, kPMTopLevel, &ppdDictionary) == noErr) {
        ApplyCollateStaple(settings.collateStaple, pairs, ppdDictionary);
    }
}

void ChooseCollateStaple(SInt32 choice, const PPDKeywordPairs& pairs, PaperOutputSettings* settings) {
    if (IsBookletFold(settings->foldOptions) || IsFoldChoice(settings->collateStaple, pairs)) {
        settings->foldOptions = kFoldNone;
    }
    if (settings->booklet) {
        settings->duplex = kLongEdge;
    }
    settings->collateStaple = choice;
}

void SettleBooklet(bool wasBooklet, PaperOutputSettings* settings) {
    if (settings->booklet) {
        settings->duplex = kShortEdge;
    } else if (wasBooklet) {
        settings->duplex = kLongEdge;
    }
    DropChoiceBehindBookletFold(settings);
}

SInt32 ShownDuplex(const PaperOutputSettings& settings) {
    return settings.booklet ? kLongEdge : settings.duplex;
}

void MakeFaxRecords(PaperOutputSettings* settings) {
    if (!settings->faxOptions) {
        settings->faxOptions = CreateRecordDictionary();
    }
    if (!settings->faxRecipients) {
        settings->faxRecipients = std::make_unique<FaxRecipientList>();
    }
    settings->faxRecipientsInTicket = nullptr;
}
