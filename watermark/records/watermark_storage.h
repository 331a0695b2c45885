// The stores of watermarks and their fonts, and of lists of fax cover images.
//
// A store's root holds side by side: "WatermarkListEntries", the names in the order of display; under each name that
// watermark's record; under a font's PostScript name that font as a Type 42 program. They share one space of keys, and
// the last one that is saved under a key stays: nothing is escaped.
//
// Any argument may be null: the function then does nothing. Writing fails without a word to the caller, and the old
// store stays. When a store is missing or cannot be parsed, saving a list or a record starts a new one, everything
// else does nothing.
#pragma once

#include "watermark/records/watermark_record.h"

/// The store of watermarks.
#define kWatermarkStore CFSTR("com.tavro.printing.watermarks.plist")
/// The store of the pictures that a fax's cover sheet can show.
#define kFaxImageStore CFSTR("com.tavro.printing.faximage.plist")

/// Where a store has its list.
#define kWatermarkListKey CFSTR("WatermarkListEntries")

/// Replaces the list of names.
void saveWatermarkList(CFStringRef fileName, CFArrayRef names);

/// Hands over the list, the caller's, whose strings can be changed where they are. False when there is none.
Boolean loadWatermarkList(CFStringRef fileName, CFMutableArrayRef* names);

/// Adds the record under its name (CreateWatermarkName) or replaces the one that is there.
void saveWatermarkData(CFStringRef fileName, const WatermarkRecord* record);

/// Reads the record of that name over *record, as ReadWatermarkDictionary does. When there is none the whole record
/// becomes zero, and false is returned.
Boolean loadWatermarkData(CFStringRef fileName, CFStringRef name, WatermarkRecord* record);

void removeWatermarkData(CFStringRef fileName, CFStringRef name);

/// Keeps a font for its watermarks.
void storeFontData(CFStringRef fileName, CFStringRef postScriptName, CFDataRef font);

/// Appends the font to the data; nothing when there is none.
void loadFontData(CFStringRef fileName, CFStringRef postScriptName, CFMutableDataRef font);
