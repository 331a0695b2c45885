// What a record may hold while it is edited, and what follows from it.
#pragma once

#include "watermark/records/watermark_record.h"

#include <iterator>
#include <string_view>

inline constexpr SInt32 kSmallestFont = 6;
inline constexpr SInt32 kLargestFont = 720;
inline constexpr SInt32 kSmallestScale = 1;
inline constexpr SInt32 kLargestScale = 1000;
inline constexpr float kFarthestOffset = 2000;  // points

/// How offsets are shown; the record keeps points. The row's place is the record's number.
struct OffsetUnit {
    const char* nameKey;
    const char* suffixKey;
    double points;
    int decimals;
    double step;  // of the arrows, in the unit
};
inline constexpr OffsetUnit kOffsetUnits[] = {
    // name, suffix, points, decimals, step
    {"Unit Inches", "Suffix Inches", 72.0, 2, 0.1},
    {"Unit Millimeters", "Suffix Millimeters", 72.0 / 25.4, 1, 1},
    {"Unit Points", "Suffix Points", 1.0, 0, 1},
};
static_assert(std::size(kOffsetUnits) == 3);

/// The record to begin with: that of a new watermark when the panel's is empty, else the panel's with every number
/// inside of its limits.
WatermarkRecord StartOfEditing(const WatermarkRecord& record);

/// The color that the ink has when the paper is white: the chosen one, thinned by the density.
WatermarkColor InkColor(const WatermarkColor& chosen, SInt32 density);

/// Copies a text into a field of the record. False, with nothing copied, when it is too long for it.
template <std::size_t kSize>
bool SetText(char (&field)[kSize], std::string_view text) {
    if (text.size() >= kSize) {
        return false;
    }
    field[text.copy(field, kSize - 1)] = '\0';
    return true;
}

/// The record as it is handed back: of text and picture only the one that its kind is about, because a stored record is
/// told by which of them it has.
WatermarkRecord EndOfEditing(WatermarkRecord record);
