// How the sets of a job leave the printer: collated or not, and stapled, folded or punched.
//
// The choice is a number, the position of what it asks for in a list of the PPD's options: "True" and "False" of
// "Collate", then those of "StapleLocation", then those of "TRFoldOptions", the option that does nothing before those
// that do. The PPD may have them in another order.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"
#include "platform/toolbox/Menus.h"

#include <optional>
#include <vector>

inline constexpr SInt32 kUncollated = 1;
inline constexpr SInt32 kCollated = 2;  // and neither stapled, nor folded or punched from this menu

inline constexpr OSType kCollatedCommand = FourCharCode("Coll");
inline constexpr OSType kUncollatedCommand = FourCharCode("Ucol");

/// An option of a main keyword.
struct PPDKeywordPair {
    CFRef<CFStringRef> mainKeyword;
    CFRef<CFStringRef> option;
};
using PPDKeywordPairs = std::vector<PPDKeywordPair>;

/// Appends a pair for each option, in the PPD's order, that the printer's PPD (model/settings/ppd_ui_dictionary.h) has
/// for the main keyword.
void retrievePPDKeywords(CFStringRef mainKeyword, PPDKeywordPairs* pairs);
/// The pairs that the choices count. Empty when the PPD cannot both collate and not collate.
[[nodiscard]] PPDKeywordPairs CollateStaplePairs();

/// Whether the printer's PPD has what the choice stands for, installed or not.
bool IsCollateStapleChoice(SInt32 choice, const PPDKeywordPairs& pairs);
/// Whether the choice folds or punches.
bool IsFoldChoice(SInt32 choice, const PPDKeywordPairs& pairs);

/// The choice that goes with the PPD's "Collate" option, which other dialogs change too: sets that are not collated are
/// not stapled either. Null for no option.
SInt32 CollateStapleForOption(SInt32 choice, CFStringRef collateOption);

/// Asks for the choice in a PPD dictionary. Staples that are not asked for any more go; folds are the caller's. Nothing
/// happens without pairs.
void ApplyCollateStaple(SInt32 choice, const PPDKeywordPairs& pairs, CFMutableDictionaryRef ppdDictionary);

/// Replaces all items of the menu by the choices that the printer has. An item's reference value is its choice.
void PopulateCollateStapleMenu(MenuRef menu, CFBundleRef bundle, const PPDKeywordPairs& pairs);

/// The choice of a command of the menu; nothing for any other command, and for an option that the PPD lacks. Commands
/// that several items share stand for the first that the PPD has.
std::optional<SInt32> CollateStapleChoiceOfCommand(OSType command, const PPDKeywordPairs& pairs);
