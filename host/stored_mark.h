// A watermark or an image that the user keeps, as the plug-in stores it among the user's application data.
#pragma once

#include "platform/foundation/CFString.h"

#include <optional>
#include <string>

/// The stores.
#define kWatermarkStore CFSTR("com.tavro.printing.watermarks.plist")
#define kFaxImageStore CFSTR("com.tavro.printing.faximage.plist")

struct StoredMark {
    std::string text;      // of a text; empty for an image
    std::string filePath;  // of an image
    std::string fontName;  // its PostScript name
    double fontSize;       // points
    double angle;          // degrees, to the left
    double density;        // percent
    double scale;          // percent
    double xOffset;        // points from the middle of the page, to the right
    double yOffset;        // the same, upwards
};

/// The one of that name; nothing, with the reason, when there is none.
std::optional<StoredMark> readStoredMark(CFStringRef store, const std::string& name, std::string* reason);
