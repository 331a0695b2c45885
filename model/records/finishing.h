// What a finisher does with a set: a number in the ticket, an option of the PPD, and a name for the printer's
// controller, in one table.
//
// The finisher can staple, punch and fold the same set; several at once are one number too, made of those of its parts,
// so that a ticket says it all in one item (kFinishingOptionsItem). In the PPD each part has a main keyword of its own.
#pragma once

#include "platform/foundation/CFString.h"
#include "platform/printing/PMTicket.h"

#include <array>
#include <optional>
#include <span>
#include <vector>

// Values that other code asks for by name; the table has all but the default.
inline constexpr SInt32 kFinishingValueDefault = 0;
inline constexpr SInt32 kFinishingValueNone = 1;
inline constexpr SInt32 kFinishingValueCustom = 2;
inline constexpr SInt32 kFinishingValueSignatureBooklet = 3;

/// The parts of the finisher that can work on the same set.
enum class FinishingPart { none, staple, punch, halfSheetFold };

/// The PPD's main keywords of finishing by its place on the sheet. Each has an option "None".
inline constexpr std::array kFinishingMainKeywords{"TRStaple", "TRPunch", "TRFold", "TRBind", "TRBooklet"};
inline constexpr const char* kNoFinishingOption = "None";

struct Finishing {
    SInt32 value;             // below 100
    FinishingPart part;       // none for one that cannot be combined
    const char* mainKeyword;  // one of kFinishingMainKeywords; null for no finishing
    const char* option;       // of that
    const char* name;         // for the controller; those that begin with "tavro-" are our own
};

std::span<const Finishing> Finishings();
/// The row with that value; null for the printer's default, for several together and for what has no meaning.
const Finishing* FindFinishing(SInt32 value);

/// Several together: a value each, 0 for a part that does nothing.
struct MultipleFinishing {
    SInt32 staple = 0;
    SInt32 punch = 0;
    SInt32 halfSheetFold = 0;

    bool operator==(const MultipleFinishing&) const = default;
};

/// The value that stands for the parts together: a row's own when there is but one, kFinishingValueNone for none.
SInt32 FinishingValueOf(const MultipleFinishing& parts);
/// The parts of a value that stands for several, or for one row of a part. Nothing for any other value.
std::optional<MultipleFinishing> SplitFinishingValue(SInt32 value);

/// The rows that a value stands for: one, or those of its parts. None for the printer's default and for what has no
/// meaning.
std::vector<const Finishing*> FinishingsOf(SInt32 value);
/// The option of one of kFinishingMainKeywords that goes with the rows of a value.
const char* FinishingOptionOf(std::span<const Finishing* const> rows, const char* mainKeyword);

/// The value of what the ticket's PPD dictionary asks for; the printer's default when that is nothing, or no value
/// stands for it together.
SInt32 ReadPPDFinishing(PMTicketRef ticket);
