#include "panels/paper_output/paper_output_sync.h"

#include "jobtypes/records/fax_options.h"
#include "model/records/booklet_fold.h"
#include "model/settings/plugin_state.h"
#include "model/settings/ppd_access.h"
#include "model/settings/ppd_choice.h"
#include "model/settings/ppd_option_maps.h"
#include "model/settings/ppd_ui_dictionary.h"
#include "model/settings/setting_map.h"
#include "model/settings/ticket_items.h"
#include "model/stock/stock_attributes.h"
#include "panels/paper_output/finishing_sync.h"
#include "platform/foundation/text.h"

namespace {

#define kCreator CFSTR("com.tavro.printingmanager")
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

bool ReadBoolean(PMTicketRef ticket, CFStringRef key) {
    CFBooleanRef value = nullptr;
    return PMTicketGetCFBoolean(ticket, kPMTopLevel, kPMTopLevel, key, &value) == noErr && value == kCFBooleanTrue;
}

void WriteBoolean(bool value, CFStringRef key, PMTicketRef ticket) {
    PMTicketSetCFBoolean(ticket, kCreator, key, value ? kCFBooleanTrue : kCFBooleanFalse, kPMUnlocked);
}

// ---- Paper

/// The numbers of the options that stand for the stock. Only panels that show all of a paper know any of its own.
SInt32 ColorOfOption(const Stock& stock) {
    return ShowsStockDetails() ? StockColorOfMap(stock) : stock.color();
}
SInt32 TypeOfOption(const Stock& stock) {
    return ShowsStockDetails() ? StockTypeOfMap(stock) : stock.type();
}

/// An option that no number stands for leaves the record without one, and stays as it is. One that stands for what the
/// record has leaves it alone: it may know more, such as the name of a color. A paper that becomes another one loses
/// its name.
void TakeStockChoice(PMTicketRef ticket, CFStringRef mainKeyword, SInt32 (*ofOption)(const Stock&),
                     SInt32 (Stock::*get)() const, void (Stock::*set)(SInt32), Stock* stock) {
    const SInt32 value = ReadPPDChoice(ticket, mainKeyword, kTicketValueUnset);
    const SInt32 own = ofOption(*stock);
    if (value == kTicketValueUnset || (value == own && own != (stock->*get)())) {
        return;
    }
    if (value != own) {
        stock->setCustomName(CFSTR(""));
    }
    (stock->*set)(value == kNoTicketValue ? kTicketValueUnset : value);
}

/// What a queue asks for beyond color and type. Its "Any" says nothing of what the record knows.
void TakeStockAttributes(PMTicketRef ticket, Stock* stock) {
    for (const StockAttributeRow& row : StockAttributes()) {
        CFStringRef option = nullptr;
        PPDGetMainKeywordValue(ticket, CFStringMakeConstant(row.mainKeyword), &option);
        if (const SInt32 value = StockAttributeValue(row, utf8Text(option)); value != kTicketValueUnset) {
            (stock->*row.set)(value);
        }
    }
}

void WriteStockAttributes(const Stock& stock, PMTicketRef ticket) {
    for (const StockAttributeRow& row : StockAttributes()) {
        const CFStringRef mainKeyword = CFStringMakeConstant(row.mainKeyword);
        if (PPDGetGlobalOptions(mainKeyword) != nullptr) {
            PPDSetMainKeyword(ticket, mainKeyword,
                              makeString(StockAttributeOption(row, StockAttributeOf(stock, row))).get());
        }
    }
}

/// The color comes first: a type that is transparent makes it clear.
Stock ReadStock(PMTicketRef ticket) {
    Stock stock;
    if (const CFDictionaryRef stored = GetDictionary(ticket, kJobLevelStockItem)) {
        stock = StockOfTicket(stored);
        TakeStockChoice(ticket, kMediaColorMainKeyword, ColorOfOption, &Stock::color, &Stock::setColor, &stock);
        TakeStockChoice(ticket, kMediaTypeMainKeyword, TypeOfOption, &Stock::type, &Stock::setType, &stock);
        if (ShowsStockDetails()) {
            TakeStockAttributes(ticket, &stock);
        }
    } else {
        DefaultStock(&stock, JobContext::job);
    }
    return stock;
}

void WriteStock(const PaperOutputSettings& settings, PMTicketRef ticket) {
    PMTicketSetCFDictionary(ticket, kCreator, kJobLevelStockItem, settings.stock.asTicket().get(), kPMUnlocked);
    WritePPDChoice(ColorOfOption(settings.stock), kMediaColorMainKeyword, ticket);
    WritePPDChoice(TypeOfOption(settings.stock), kMediaTypeMainKeyword, ticket);
    WriteStockAttributes(settings.stock, ticket);
}

// ---- Sets

/// A booklet fold was chosen elsewhere, and later: it takes the place of a fold of the menu, which is written over it.
void DropFoldBehindBookletFold(const PPDKeywordPairs& pairs, PaperOutputSettings* settings) {
    if (IsBookletFold(settings->foldOptions) && IsFoldChoice(settings->collateStaple, pairs)) {
        settings->collateStaple = kCollated;
    }
}

void ReadCollateStaple(PMTicketRef ticket, const PaperOutputScope& scope, PaperOutputSettings* settings) {
    const PPDKeywordPairs& pairs = scope.collateStaplePairs;
    const SInt32 stored = GetTicketNumber(ticket, kFinishingCollateStapleItem, kCollated);
    CFStringRef collate = nullptr;
    PPDGetMainKeywordValue(ticket, kCollateMainKeyword, &collate);
    settings->collateStaple =
        CollateStapleForOption(IsCollateStapleChoice(stored, pairs) ? stored : kCollated, collate);
    settings->foldOptions = ReadPPDChoice(ticket, kFoldMainKeyword, kFoldNone);
    if (settings->collateStaple != stored && IsFoldChoice(stored, pairs) && !IsBookletFold(settings->foldOptions)) {
        settings->foldOptions = kFoldNone;
    }
    DropFoldBehindBookletFold(pairs, settings);
}

void WriteCollateStaple(const PaperOutputSettings& settings, const PPDKeywordPairs& pairs, PMTicketRef ticket) {
    SetTicketNumber(ticket, kCreator, kFinishingCollateStapleItem, settings.collateStaple);
    CFMutableDictionaryRef ppdDictionary = nullptr;
    if (PMTicketGetPPDDict(ticket, kPMTopLevel, &ppdDictionary) == noErr) {
        ApplyCollateStaple(settings.collateStaple, pairs, ppdDictionary);
    }
}

// ---- Sides and booklet

SInt32 ReadDuplex(PMTicketRef ticket) {
    for (const CFStringRef key : {kFinishingDuplexItem, kDuplexingItem}) {
        if (const SInt32 duplex = GetTicketNumber(ticket, key, -1); IsOptionValue(kDuplexMainKeyword, duplex)) {
            return duplex;
        }
    }
    return ReadPPDChoice(ticket, kDuplexMainKeyword, kOneSided);
}

void WriteDuplex(SInt32 duplex, PMTicketRef ticket) {
    WritePPDChoice(duplex, kDuplexMainKeyword, ticket);
    SetTicketNumber(ticket, kCreator, kFinishingDuplexItem, duplex);
    SetTicketNumber(ticket, kCreator, kDuplexingItem, duplex);
}

void ReadBooklet(PMTicketRef ticket, PaperOutputSettings* settings) {
    settings->booklet = ReadBoolean(ticket, kBookletLayoutItem);
    settings->forceNewSize = false;
    settings->bookletSize = 0;
    if (!settings->booklet) {
        return;
    }
    settings->drawOutlines = GetTicketNumber(ticket, kBookletDrawOutlinesItem, 0);
    settings->forceNewSize = ReadBoolean(ticket, kBookletForceNewSizeItem);
    if (settings->forceNewSize) {
        SInt32 size = 0;
        ReadTicketValue(GetDictionary(ticket, kJobLevelStockItem), kStockSizeKey, &size);
        settings->bookletSize = IsOptionValue(kPageSizeMainKeyword, size) ? size : 0;
    }
}

void WriteBooklet(const PaperOutputSettings& settings, PMTicketRef ticket) {
    WriteBoolean(settings.booklet, kBookletLayoutItem, ticket);
    SetTicketNumber(ticket, kCreator, kBookletFoldStapleItem, settings.foldOptions);
    if (settings.booklet) {
        SetTicketNumber(ticket, kCreator, kBookletDrawOutlinesItem, settings.drawOutlines);
        WriteBoolean(settings.forceNewSize, kBookletForceNewSizeItem, ticket);
    }
    // Paper of the job has a size only where a booklet is printed on another one.
    const CFRef<CFMutableDictionaryRef> stock = settings.stock.asTicket();
    if (settings.booklet && settings.forceNewSize) {
        WriteTicketValue(stock.get(), kStockSizeKey, settings.bookletSize);
    } else {
        CFDictionaryRemoveValue(stock.get(), kStockSizeKey);
    }
    PMTicketSetCFDictionary(ticket, kCreator, kJobLevelStockItem, stock.get(), kPMUnlocked);
}

// ---- Output

/// A tray that no number stands for has no item, and stays as it is.
SInt32 ReadOutputDestination(PMTicketRef ticket) {
    const SInt32 destination = GetTicketNumber(ticket, kFinishingOutputDestinationItem, kNoTicketValue);
    if (destination != kNoTicketValue) {
        return destination;
    }
    return ReadPPDChoice(ticket, kOutputBinMainKeyword, kOutputAutomatic) == kNoTicketValue ? SInt32{kNoTicketValue}
                                                                                            : kOutputAutomatic;
}

void WriteOutputDestination(SInt32 destination, PMTicketRef ticket) {
    if (destination != kTicketValueUnset && destination != kNoTicketValue) {
        SetTicketNumber(ticket, kCreator, kFinishingOutputDestinationItem, destination);
    } else {
        PMTicketReleaseItem(ticket, kPMTopLevel, kFinishingOutputDestinationItem);
    }
}

// ---- The job's type, and faxes

void ReadJobType(PMTicketRef ticket, PaperOutputSettings* settings) {
    settings->jobDictionary = settings->job.read(ticket);
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
    settings->outputColor = GetTicketNumber(ticket, kFinishingOutputColorItem, kOutputInColor);
    SyncSeparatorsFromTicket(ticket, &settings->separatorOption, &settings->separatorColor);
    ReadJobType(ticket, settings);
    ReadBooklet(ticket, settings);
    settings->duplex = ReadDuplex(ticket);
    ReadFax(ticket, settings);
    ReadCollateStaple(ticket, scope, settings);
}

void WritePaperOutputSettings(PaperOutputSettings* settings, const PaperOutputScope& scope, PMTicketRef ticket) {
    WriteStock(*settings, ticket);
    WriteFinishing(&settings->finishing, scope.isShown, ticket);
    if (scope.hasDuplexControl) {
        WriteDuplex(settings->duplex, ticket);
    }
    WriteOutputDestination(settings->outputDestination, ticket);
    SetTicketNumber(ticket, kCreator, kFinishingOutputColorItem, settings->outputColor);
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

void ChooseCollateStaple(SInt32 choice, const PPDKeywordPairs& pairs, PaperOutputSettings* settings) {
    if (IsBookletFold(settings->foldOptions) || IsFoldChoice(settings->collateStaple, pairs)) {
        settings->foldOptions = kFoldNone;
    }
    if (settings->booklet) {
        settings->duplex = kLongEdge;
    }
    settings->collateStaple = choice;
}

void SettleBooklet(bool wasBooklet, const PPDKeywordPairs& pairs, PaperOutputSettings* settings) {
    if (settings->booklet) {
        settings->duplex = kShortEdge;
    } else if (wasBooklet) {
        settings->duplex = kLongEdge;
    }
    DropFoldBehindBookletFold(pairs, settings);
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
