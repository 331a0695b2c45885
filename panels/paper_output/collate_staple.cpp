#include "panels/paper_output/collate_staple.h"

#include "core/features/installable_options.h"
#include "model/settings/ppd_access.h"
#include "model/settings/ppd_ui_dictionary.h"
#include "platform/foundation/CFString.h"
#include "ui/localization.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

#define kCollateMainKeyword CFSTR("Collate")
#define kStapleMainKeyword CFSTR("StapleLocation")
#define kFoldMainKeyword CFSTR("TRFoldOptions")

struct CollateStapleRow {
    OSType command;
    const char* mainKeyword;
    const char* option;
    const char* feature;  // that must be installed; null for the end of what any other row of the main keyword asks for
};
// clang-format off
constexpr CollateStapleRow kRows[] = {
    // command              main keyword      option         feature
    {FourCharCode("C1St"),  "StapleLocation", "1Staple",     "SingleStapleKey"},
    {FourCharCode("C2St"),  "StapleLocation", "2Staples",    "DualStapleKey"},
    {FourCharCode("C4St"),  "StapleLocation", "4Staples",    "MultipleStapleKey"},
    {FourCharCode("Cfld"),  "TRFoldOptions",  "CTriFoldOpt", "CFoldKey"},
    {FourCharCode("Zfld"),  "TRFoldOptions",  "ZTriFoldOpt", "ZFoldKey"},
    {FourCharCode("HPun"),  "TRFoldOptions",  "HolePunch",   "GenericPunchKey"},
    {FourCharCode("HPun"),  "TRFoldOptions",  "2HolePunch",  "DualPunchKey"},
    {FourCharCode("HPun"),  "TRFoldOptions",  "3HolePunch",  "TriplePunchKey"},
    {FourCharCode("HPun"),  "TRFoldOptions",  "4HolePunch",  "QuadruplePunchKey"},
    {FourCharCode("0FPn"),  "TRFoldOptions",  "None",        nullptr},
};
static_assert(std::size(kRows) == 10);
// clang-format on

bool IsPair(const PPDKeywordPair& pair, const char* mainKeyword, const char* option) {
    return CFEqual(pair.mainKeyword.get(), CFStringMakeConstant(mainKeyword)) &&
           CFEqual(pair.option.get(), CFStringMakeConstant(option));
}

PPDKeywordPairs::const_iterator FindPair(const PPDKeywordPairs& pairs, const char* mainKeyword, const char* option) {
    return std::ranges::find_if(pairs, [&](const PPDKeywordPair& pair) { return IsPair(pair, mainKeyword, option); });
}

/// Appends the main keyword's pairs, that of "None" first, which "Collated" stands for when it comes right behind the
/// two of "Collate". A pair of nothing takes its place in a PPD that has none.
void AppendNothingFirst(CFStringRef mainKeyword, const char* mainKeywordText, PPDKeywordPairs* pairs) {
    PPDKeywordPairs own;
    retrievePPDKeywords(mainKeyword, &own);
    const auto nothing = FindPair(own, mainKeywordText, "None");
    if (!own.empty() && nothing == own.end() && pairs->size() == kCollated) {
        pairs->emplace_back();
    }
    if (nothing != own.end()) {
        std::rotate(own.begin(), own.begin() + (nothing - own.cbegin()), own.begin() + (nothing - own.cbegin()) + 1);
    }
    std::ranges::move(own, std::back_inserter(*pairs));
}

/// The position of the row's option; nothing when the PPD lacks it.
std::optional<SInt32> ChoiceOfRow(const CollateStapleRow& row, const PPDKeywordPairs& pairs) {
    const auto found = FindPair(pairs, row.mainKeyword, row.option);
    return found != pairs.end() ? std::optional(static_cast<SInt32>(found - pairs.begin())) : std::nullopt;
}

bool IsInstalled(const CollateStapleRow& row) {
    if (row.feature != nullptr) {
        return getInstalledFeature(CFStringMakeConstant(row.feature));
    }
    return std::ranges::any_of(kRows, [&](const CollateStapleRow& other) {
        return other.feature != nullptr && std::string_view(other.mainKeyword) == row.mainKeyword && IsInstalled(other);
    });
}

/// The pair that a choice beyond collating or not stands for; null when it stands for none.
const PPDKeywordPair* FinishingPair(SInt32 choice, const PPDKeywordPairs& pairs) {
    return choice > kCollated && static_cast<std::size_t>(choice) < pairs.size()
               ? &pairs[static_cast<std::size_t>(choice)]
               : nullptr;
}

void SetPair(const PPDKeywordPair& pair, CFMutableDictionaryRef ppdDictionary) {
    CFDictionarySetValue(ppdDictionary, pair.mainKeyword.get(), pair.option.get());
}

/// The name of the feature as it is installed, else what the PPD calls the option.
CFRef<CFStringRef> CopyRowTitle(const CollateStapleRow& row, CFBundleRef bundle) {
    if (row.feature != nullptr) {
        const CFStringRef name =
            CopyLocalizedStringForInstalledFeatureFromPlugin(CFStringMakeConstant(row.feature), bundle);
        if (name != CFSTR("STRING NOT FOUND")) {
            return CFRef<CFStringRef>::adopt(name);
        }
    }
    const CFStringRef mainKeyword = CFStringMakeConstant(row.mainKeyword);
    const CFArrayRef options = PPDGetGlobalOptions(mainKeyword);
    const CFIndex option = FindPPDKeyPairsMatch(options, mainKeyword, CFStringMakeConstant(row.option));
    return CFRef<CFStringRef>::retain(GetKeywordInfo(options, option, KeywordInfo::alias));
}

void AppendChoice(MenuRef menu, CFStringRef title, OSType command, SInt32 choice) {
    MenuItemIndex item = 0;
    if (AppendMenuItemTextWithCFString(menu, title, 0, command, &item) == noErr) {
        SetMenuItemRefCon(menu, item, choice);
    }
}

}  // namespace

void retrievePPDKeywords(CFStringRef mainKeyword, PPDKeywordPairs* pairs) {
    const CFArrayRef options = PPDGetGlobalOptions(mainKeyword);
    for (CFIndex row = 0; row < CFArrayGetCount(options); ++row) {
        pairs->push_back({CFRef<CFStringRef>::retain(GetKeywordInfo(options, row, KeywordInfo::mainKeyword)),
                          CFRef<CFStringRef>::retain(GetKeywordInfo(options, row, KeywordInfo::optionKeyword))});
    }
}

PPDKeywordPairs CollateStaplePairs() {
    PPDKeywordPairs collate;
    retrievePPDKeywords(kCollateMainKeyword, &collate);
    PPDKeywordPairs pairs;
    for (const char* option : {"True", "False"}) {
        const auto found = FindPair(collate, "Collate", option);
        if (found == collate.end()) {
            return {};
        }
        pairs.push_back(*found);
    }
    AppendNothingFirst(kStapleMainKeyword, "StapleLocation", &pairs);
    AppendNothingFirst(kFoldMainKeyword, "TRFoldOptions", &pairs);
    return pairs;
}

bool IsCollateStapleChoice(SInt32 choice, const PPDKeywordPairs& pairs) {
    return choice == kCollated || choice == kUncollated || FinishingPair(choice, pairs) != nullptr;
}

bool IsFoldChoice(SInt32 choice, const PPDKeywordPairs& pairs) {
    const PPDKeywordPair* pair = FinishingPair(choice, pairs);
    return pair != nullptr && CFEqual(pair->mainKeyword.get(), kFoldMainKeyword);
}

SInt32 CollateStapleForOption(SInt32 choice, CFStringRef collateOption) {
    if (CFEqual(collateOption, CFSTR("False"))) {
        return kUncollated;
    }
    return choice == kUncollated && CFEqual(collateOption, CFSTR("True")) ? kCollated : choice;
}

void ApplyCollateStaple(SInt32 choice, const PPDKeywordPairs& pairs, CFMutableDictionaryRef ppdDictionary) {
    if (pairs.empty()) {
        return;
    }
    const auto noStaple = FindPair(pairs, "StapleLocation", "None");
    if (noStaple != pairs.end()) {
        SetPair(*noStaple, ppdDictionary);
    }
    if (const PPDKeywordPair* pair = FinishingPair(choice, pairs)) {
        SetPair(*pair, ppdDictionary);
    }
    SetPair(pairs[choice >= kCollated ? 0 : 1], ppdDictionary);
}

void PopulateCollateStapleMenu(MenuRef menu, CFBundleRef bundle, const PPDKeywordPairs& pairs) {
    DeleteMenuItems(menu, 1, CountMenuItems(menu));
    if (pairs.empty()) {
        return;
    }
    AppendChoice(menu, CopyLocalizedText(bundle, CFSTR("Collated")).get(), kCollatedCommand, kCollated);
    AppendChoice(menu, CopyLocalizedText(bundle, CFSTR("Uncollated")).get(), kUncollatedCommand, kUncollated);
    for (const CollateStapleRow& row : kRows) {
        const auto choice = ChoiceOfRow(row, pairs);
        if (choice && IsInstalled(row)) {
            AppendChoice(menu, CopyRowTitle(row, bundle).get(), row.command, *choice);
        }
    }
}

std::optional<SInt32> CollateStapleChoiceOfCommand(OSType command, const PPDKeywordPairs& pairs) {
    if (command == kCollatedCommand || command == kUncollatedCommand) {
        return command == kCollatedCommand ? kCollated : kUncollated;
    }
    for (const CollateStapleRow& row : kRows) {
        if (row.command == command) {
            if (const auto choice = ChoiceOfRow(row, pairs)) {
                return choice;
            }
        }
    }
    return std::nullopt;
}
