// What the finisher can do with a set: one table of choices, from which the menu, the dialogs and the summary are made.
//
// A choice is a number in the ticket (model/records/finishing.h). Which choices there are depends on what is installed
// (core/features/installable_options.h).
#pragma once

#include "model/records/finishing.h"
#include "model/settings/ticket_items.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/four_char_code.h"

#include <optional>
#include <span>
#include <vector>

// Kinds of finishing, each the command of its item in the menu.
inline constexpr OSType kFinishingDefault = FourCharCode("Pdef");
inline constexpr OSType kFinishingNone = FourCharCode("None");
inline constexpr OSType kFinishingFold = FourCharCode("Fold");
inline constexpr OSType kFinishingMultiple = FourCharCode("FMul");
inline constexpr OSType kFinishingSignatureBooklet = FourCharCode("FSBM");
inline constexpr OSType kFinishingCustom = FourCharCode("Cust");

struct FinishingKind {
    OSType command;
    const char* menuText;  // text key of the menu's item
    const char* name;      // text key of the kind's name, for summaries and titles
};

struct FinishingChoice {
    SInt32 value;          // of kFinishingOptionsItem
    OSType kind;           // a FinishingKind's command
    const char* position;  // text key of the place on the sheet, or way of folding; null where a kind has one choice
    const char* picture;   // file name; null where no dialog shows it
};

/// All kinds, in the order of the menu.
std::span<const FinishingKind> FinishingKinds();
std::span<const FinishingChoice> FinishingChoices();

/// The kind of a command; null when it is none.
const FinishingKind* FindFinishingKind(OSType command);
/// The choice with that value; null for the value of several together and for one that has no meaning.
const FinishingChoice* FindFinishingChoice(SInt32 value);

/// The installed feature that offers the choice; null: every printer does.
const char* FeatureOf(const FinishingChoice& choice);

/// The choices of a kind that the printer offers, in the order of the table.
std::vector<const FinishingChoice*> InstalledFinishingChoices(OSType kind);
/// The choices of all kinds of a part that the printer offers.
std::vector<const FinishingChoice*> InstalledFinishingChoices(FinishingPart part);

/// Whether the menu has the kind's item. Several together need at least two parts that the printer has. A booklet maker
/// for signatures takes the place of the custom finishing.
bool IsFinishingOffered(OSType kind);

/// The kind that a value belongs to. A value that has no meaning belongs to the printer's default.
OSType FinishingKindOfValue(SInt32 value);

/// A choice in words: its kind, and where it has several, which one ("1 Staple: Top Left").
CFRef<CFStringRef> CopyFinishingChoiceText(CFBundleRef bundle, const FinishingChoice& choice);

/// What the panel keeps of the finishing, with its values when the ticket has none.
struct FinishingSettings {
    SInt32 options = kFinishingValueDefault;  // kFinishingOptionsItem
    SInt32 offset = 1;                        // kFinishingOffsetItem
    SInt32 enableSubset = 0;                  // kFinishingOffsetEnableSubsetItem
    SInt32 pagesPerSubset = 1;                // kFinishingOffsetPagesPerSubsetItem
    SInt32 slipSheet = 0;                     // kFinishingSlipSheetItem: kSlipSheetsOn with slip sheets
    CFRef<CFStringRef> custom;                // kFinishingCustomItem; null is as good as empty
};

/// A new text of the settings in words, in lines: the finishing, one line for each of several together, then slip
/// sheets and offset when they are on.
void CreateFinishingString(CFBundleRef bundle, const FinishingSettings& settings, CFStringRef* text);
