// A watermark, as the panel, its store and the watermark editor exchange it.
//
// The editor is a module of its own, so the layout is fixed to the byte: the platform's alignment of C, native byte
// order, no pointers.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"

#include <cstddef>
#include <type_traits>

/// Each from 0 to 1.
struct WatermarkColor {
    float red;
    float green;
    float blue;
    float alpha;
};

// The kinds; every other number but 0 is a text watermark too.
inline constexpr SInt32 kImageWatermark = 0;
inline constexpr SInt32 kTextWatermark = 1;

/// Texts are zero-terminated UTF-8.
struct WatermarkRecord {
    char text[512];       // of a text watermark
    char fileName[512];   // of an image watermark, without folders
    char filePath[8192];  // of the image, absolute
    char fontName[512];   // the font's PostScript name
    float xOffset;
    float yOffset;
    WatermarkColor fontColor;
    WatermarkColor wellColor;
    SInt32 angle;         // degrees
    SInt32 density;       // percent
    SInt32 scale;         // percent
    SInt32 units;         // the editor's
    SInt32 fontSize;      // points
    SInt32 kind;          // not stored: the name says whether it is the text or the picture
    double paperExtentA;  // points, as is B; set by the panel before editing, not stored
    double paperExtentB;
    double xPosition;
    double yPosition;
};

static_assert(std::is_standard_layout_v<WatermarkRecord> && std::is_trivial_v<WatermarkRecord>);
static_assert(offsetof(WatermarkRecord, text) == 0);
static_assert(offsetof(WatermarkRecord, fileName) == 512);
static_assert(offsetof(WatermarkRecord, filePath) == 1024);
static_assert(offsetof(WatermarkRecord, fontName) == 9216);
static_assert(offsetof(WatermarkRecord, xOffset) == 9728);
static_assert(offsetof(WatermarkRecord, yOffset) == 9732);
static_assert(offsetof(WatermarkRecord, fontColor) == 9736);
static_assert(offsetof(WatermarkRecord, wellColor) == 9752);
static_assert(offsetof(WatermarkRecord, angle) == 9768);
static_assert(offsetof(WatermarkRecord, density) == 9772);
static_assert(offsetof(WatermarkRecord, scale) == 9776);
static_assert(offsetof(WatermarkRecord, units) == 9780);
static_assert(offsetof(WatermarkRecord, fontSize) == 9784);
static_assert(offsetof(WatermarkRecord, kind) == 9788);
static_assert(offsetof(WatermarkRecord, paperExtentA) == 9792);
static_assert(offsetof(WatermarkRecord, paperExtentB) == 9800);
static_assert(offsetof(WatermarkRecord, xPosition) == 9808);
static_assert(offsetof(WatermarkRecord, yPosition) == 9816);
static_assert(sizeof(WatermarkRecord) == 9824);

/// The box of a text is this much higher than its font's size, whatever the font is; its base line lies this far above
/// the lower edge. Whoever draws a watermark does so.
inline constexpr double kTextBoxHeight = 1.17;
inline constexpr double kTextBaseLine = 0.265;

/// The name by which the record is listed and stored: the text of a text watermark, the file name of an image
/// watermark; it may be empty. Null when it is no UTF-8.
[[nodiscard]] CFRef<CFStringRef> CreateWatermarkName(const WatermarkRecord& record);

/// The stored form. A text that is no UTF-8 and a number that is not finite are left out.
[[nodiscard]] CFRef<CFMutableDictionaryRef> CreateWatermarkDictionary(const WatermarkRecord& record);

/// Copies what a dictionary holds into the record, and sets its kind by the name under which it is stored: that of the
/// picture means an image watermark, whatever text it holds, any other name a text watermark if it has a text. A text
/// that is too long is cut between two characters; what is missing, of another type, or a number that does not fit
/// leaves its field as it was.
void ReadWatermarkDictionary(CFDictionaryRef dictionary, CFStringRef name, WatermarkRecord* record);
