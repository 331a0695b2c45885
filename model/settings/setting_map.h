// Setting maps: tables that tie the items of a menu to ticket values and texts.
//
// A map is an array of rows ended by a row whose key is null. Menu items count from 1: item n stands for row n - 1,
// and the order of the rows is the order of the menu.
#pragma once

#include "platform/foundation/four_char_code.h"

#include <iterator>

struct SettingMap {
    const char* key;     // of the item's text in the table "Localizable"; null ends the map
    SInt32 ticketValue;  // kTicketValueUnset: the printer's or the job's own setting
    OSType command;      // the menu item's command code; 0 for none
};

// clang-format off
inline constexpr SettingMap CoverOptionMap[] = {
    // key                    value  command
    {"No Covers",             1,     0},
    {"Front Cover Only",      2,     0},
    {"Front and Back Covers", 4,     0},
    {},
};
static_assert(std::size(CoverOptionMap) == 3 + 1);

inline constexpr SettingMap CoverSidesImagedMap[] = {
    // key                     value  command
    {"CoverPrinted",           4,     0},
    {"CoverBlankorPreprinted", 1,     0},
    {},
};
static_assert(std::size(CoverSidesImagedMap) == 2 + 1);

inline constexpr SettingMap PlexMap[] = {
    // key          value  command
    {"Simplex",     1,     0},
    {"Duplex",      2,     0},
    {"DuplexShort", 3,     0},
    {},
};
static_assert(std::size(PlexMap) == 3 + 1);

inline constexpr SettingMap JobTypeMap[] = {
    // key             value  command
    {"Normal",         1,     0},
    {"Fax",            5,     0},
    {"SecurePrint",    6,     0},
    {"SampleSet",      8,     0},
    {"DelayedPrint",   7,     0},
    {"Save",           3,     0},
    {"Print and Save", 4,     0},
    {},
};
static_assert(std::size(JobTypeMap) == 7 + 1);

inline constexpr SettingMap FaxCoverSizeMap[] = {
    // key              value  command
    {"StockSizeLetter", 1,     0},
    {"StockSizeA4",     4,     0},
    {},
};
static_assert(std::size(FaxCoverSizeMap) == 2 + 1);

inline constexpr SettingMap SeparatorOptionMap[] = {
    // key                       value  command
    {"Separator Option None",    1,     0},
    {"Separator Option Blank",   2,     0},
    {"Separator Option Printed", 3,     0},
    {},
};
static_assert(std::size(SeparatorOptionMap) == 3 + 1);
// clang-format on

/// The number of rows before the end row.
CFIndex CountMaps(const SettingMap* map);

/// The ticket value of a menu item, which must exist (from 1).
SInt32 UIToTicket(const SettingMap* map, SInt32 item);

// The two look-ups by ticket value stop at the first row whose value equals the one that is looked for, or is 0: such
// a row stands for every value that no earlier row has.

/// The menu item (from 1) of a ticket value; -1 when the look-up ends at the end row.
SInt32 TicketToUI(const SettingMap* map, SInt32 value);

/// The text key of a ticket value, constant; null when the look-up ends at the end row.
CFStringRef LocalizedKeyForTicketValue(const SettingMap* map, SInt32 value);
