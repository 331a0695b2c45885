#include "panels/paper_output/finishing_sync.h"

#include "core/features/installable_options.h"
#include "model/settings/ppd_access.h"
#include "model/settings/ppd_choice.h"
#include "model/settings/ppd_option_maps.h"
#include "model/settings/ppd_ui_dictionary.h"
#include "model/settings/ticket_access.h"
#include "panels/paper_output/finishing_offset_dialog.h"

namespace {

#define kCreator CFSTR("com.tavro.printingmanager")
#define kJogMainKeyword CFSTR("Jog")

// Values of the option map of "Jog".
constexpr SInt32 kJogNone = 0;
constexpr SInt32 kJogEndOfSet = 1;

// ---- The finishing menu

/// Null when the PPD lacks the main keyword.
CFStringRef DefaultOptionOf(CFStringRef mainKeyword) {
    const CFArrayRef options = PPDGetGlobalOptions(mainKeyword);
    for (CFIndex row = 0; row < CFArrayGetCount(options); ++row) {
        if (CFEqual(GetKeywordInfo(options, row, KeywordInfo::isDefault), CFSTR("true"))) {
            return GetKeywordInfo(options, row, KeywordInfo::optionKeyword);
        }
    }
    return nullptr;
}

bool IsAskedFor(PMTicketRef ticket, CFStringRef mainKeyword, CFStringRef option) {
    CFStringRef asked = nullptr;
    return PPDGetMainKeywordValue(ticket, mainKeyword, &asked) == noErr && CFEqual(asked, option);
}

/// Whether nothing is asked for where the printer would do something by itself.
bool IsDefaultSwitchedOff(PMTicketRef ticket) {
    const CFStringRef none = CFStringMakeConstant(kNoFinishingOption);
    for (const char* const name : kFinishingMainKeywords) {
        const CFStringRef mainKeyword = CFStringMakeConstant(name);
        const CFStringRef usual = DefaultOptionOf(mainKeyword);
        if (usual != nullptr && !CFEqual(usual, none) && IsAskedFor(ticket, mainKeyword, none)) {
            return true;
        }
    }
    return false;
}

SInt32 ReadOptions(PMTicketRef ticket) {
    const SInt32 stored = GetTicketNumber(ticket, kFinishingOptionsItem, kTicketValueUnset);
    if (stored != kTicketValueUnset) {
        return stored;
    }
    const SInt32 asked = ReadPPDFinishing(ticket);
    return asked == kFinishingValueDefault && IsDefaultSwitchedOff(ticket) ? kFinishingValueNone : asked;
}

void WriteOptions(SInt32 value, PMTicketRef ticket) {
    const auto before = FinishingsOf(GetTicketNumber(ticket, kFinishingOptionsItem, kTicketValueUnset));
    const auto rows = FinishingsOf(value);
    for (const char* const name : kFinishingMainKeywords) {
        const CFStringRef mainKeyword = CFStringMakeConstant(name);
        CFStringRef option = nullptr;
        if (!rows.empty()) {
            option = CFStringMakeConstant(FinishingOptionOf(rows, name));
        } else if (value == kFinishingValueDefault && !before.empty() &&
                   IsAskedFor(ticket, mainKeyword, CFStringMakeConstant(FinishingOptionOf(before, name)))) {
            option = DefaultOptionOf(mainKeyword);
        }
        if (FindPPDKeyPairsMatch(PPDGetGlobalOptions(mainKeyword), mainKeyword, option) >= 0) {
            PPDSetMainKeyword(ticket, mainKeyword, option);
        }
    }
    SetTicketNumber(ticket, kCreator, kFinishingOptionsItem, value);
}

// ---- Offset

/// Takes over how the PPD dictionary offsets sets. Subsets are no matter of the PPD.
void TakeJog(PMTicketRef ticket, FinishingSettings* finishing) {
    const SInt32 item = OffsetItem(*finishing);
    if (!getInstalledFeature(CFSTR("Offset")) || item == kOffsetItemSubsets) {
        return;
    }
    const SInt32 jog = ReadPPDChoice(ticket, kJogMainKeyword, kNoTicketValue);
    if (jog == kJogEndOfSet && item == kOffsetItemNone) {
        SetOffsetItem(finishing, kOffsetItemSets, 0);
    } else if (jog == kJogNone && item == kOffsetItemSets) {
        SetOffsetItem(finishing, kOffsetItemNone, 0);
    }
}

FinishingSettings ReadOffset(PMTicketRef ticket) {
    FinishingSettings finishing;
    finishing.offset = GetTicketNumber(ticket, kFinishingOffsetItem, kOffsetOff);
    finishing.enableSubset = GetTicketNumber(ticket, kFinishingOffsetEnableSubsetItem, 0);
    if (finishing.enableSubset != 0) {
        finishing.pagesPerSubset = GetTicketNumber(ticket, kFinishingOffsetPagesPerSubsetItem, 1);
    }
    return finishing;
}

void WriteOffset(FinishingSettings* finishing, bool isShown, PMTicketRef ticket) {
    if (!isShown && OffsetItem(ReadOffset(ticket)) == OffsetItem(*finishing)) {
        TakeJog(ticket, finishing);
    }
    SetTicketNumber(ticket, kCreator, kFinishingOffsetItem, finishing->offset);
    SetTicketNumber(ticket, kCreator, kFinishingOffsetEnableSubsetItem, finishing->enableSubset);
    if (finishing->enableSubset != 0) {
        SetTicketNumber(ticket, kCreator, kFinishingOffsetPagesPerSubsetItem, finishing->pagesPerSubset);
    }
    if (getInstalledFeature(CFSTR("Offset"))) {
        WritePPDChoice(OffsetItem(*finishing) == kOffsetItemSets ? kJogEndOfSet : kJogNone, kJogMainKeyword, ticket);
    }
}

}  // namespace

FinishingSettings ReadFinishing(PMTicketRef ticket) {
    FinishingSettings finishing = ReadOffset(ticket);
    TakeJog(ticket, &finishing);
    finishing.options = ReadOptions(ticket);
    finishing.slipSheet = GetTicketNumber(ticket, kFinishingSlipSheetItem, 0);
    CFStringRef custom = nullptr;
    PMTicketGetCFString(ticket, kPMTopLevel, kPMTopLevel, kFinishingCustomItem, &custom);
    finishing.custom = CFRef<CFStringRef>::retain(custom != nullptr ? custom : CFSTR(""));
    return finishing;
}

void WriteFinishing(FinishingSettings* finishing, bool isShown, PMTicketRef ticket) {
    WriteOptions(finishing->options, ticket);
    WriteOffset(finishing, isShown, ticket);
    SetTicketNumber(ticket, kCreator, kFinishingSlipSheetItem, finishing->slipSheet);
    PMTicketSetCFString(ticket, kCreator, kFinishingCustomItem, finishing->custom ? finishing->custom.get() : CFSTR(""),
                        kPMUnlocked);
}
