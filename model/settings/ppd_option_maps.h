// PPD option maps: what number a PPD option has in the tickets.
//
// A map is an array of rows ended by a row whose keyword is null; 0 is a ticket value like any other. Two maps that say
// True and False disagree about their numbers (1 and 0 for the banner page, 2 and 1 for the true gray options), as the
// driver does.
#pragma once

#include "platform/printing/CompiledPPD.h"

#include <cstddef>

struct PPDOptionMap {
    const char* keyword;  // of the option; null ends the map
    SInt32 ticketValue;
};

/// The map of a main keyword such as "PageSize"; null for null and for a keyword that has none.
const PPDOptionMap* GetPPDOptionMapForMainKeyword(CFStringRef mainKeyword);

/// The keyword of the first row with that value, constant; null when no row has it, or for a null map.
CFStringRef GetPPDOptionKeywordForTicketValue(const PPDOptionMap* map, SInt32 value);

/// Of an option that a map lacks: nothing in the tickets can stand for it.
inline constexpr SInt32 kNoTicketValue = -1;

/// The value of the first row with that keyword; kNoTicketValue when no row has it, or for a null argument.
SInt32 GetTicketValueForPPDOptionKeyword(const PPDOptionMap* map, CFStringRef keyword);

/// A constant byte string with its length in front, as the compiled-PPD library takes its keywords.
template <std::size_t N>
struct PPDKeyword {
    static_assert(N <= 256, "the length of a keyword is one byte");

    consteval PPDKeyword(const char (&text)[N]) : bytes{} {  // NOLINT(google-explicit-constructor): it is a literal
        bytes[0] = static_cast<UInt8>(N - 1);
        for (std::size_t i = 0; i + 1 < N; ++i) {
            bytes[i + 1] = static_cast<UInt8>(text[i]);
        }
    }
    constexpr operator ConstPPDString() const { return bytes; }  // NOLINT(google-explicit-constructor)

    UInt8 bytes[N];
};

inline constexpr PPDKeyword kStockTypePPDKeyword = "MediaType";
inline constexpr PPDKeyword kStockColorPPDKeyword = "MediaColor";
inline constexpr PPDKeyword kCollateKey = "Collate";
inline constexpr PPDKeyword kStapleKey = "StapleLocation";
inline constexpr PPDKeyword kFoldPunchKey = "TRFoldOptions";
inline constexpr PPDKeyword kOutputBinKey = "OutputBin";
