// A watermark or an image that the user keeps, as the plug-in stores it among the user's application data.
#pragma once

#include "platform/foundation/CFString.h"

#include <optional>
#include <string>

/// The stores.
#define kWatermarkStore CFSTR("com.tavro.printing.watermarks.plist")
#define kFaxImageStore CFSTR("com.tavro.printing.faximage.plist")

/// From 0 to 1.
struct MarkColor {
    double red;
    double green;
    double blue;
};

struct StoredMark {
    std::string text;      // of a text; empty for an image
    std::string filePath;  // of an image
    std::string fontName;  // its PostScript name
    MarkColor color;       // of a text, as it looks on white paper: the density is in it
    double fontSize;       // points
    double angle;          // degrees, to the left
    double density;        // percent, of an image
    double scale;          // percent
    double xOffset;        // points from the middle of the page, to the right
    double yOffset;        // the same, upwards
};

/// The one of that name; nothing, with the reason, when there is none.
std::optional<StoredMark> readStoredMark(CFStringRef store, const std::string& name, std::string* reason);

/// The Type 42 font program that is stored under a font's PostScript name; nothing, with the reason, when there is
/// none.
std::optional<std::string> readStoredFont(CFStringRef store, const std::string& name, std::string* reason);
