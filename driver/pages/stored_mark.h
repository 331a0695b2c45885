// A watermark or an image that the user keeps, with all that is needed to draw it.
#pragma once

#include "platform/files/file_stamp.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"

#include <optional>
#include <string>

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
    std::string font;      // of a text: its font, a Type 42 program; empty when it is not stored
    MarkColor color;       // of a text, as it looks on white paper: the density is in it
    double fontSize;       // points
    double angle;          // degrees, to the left
    double density;        // percent, of an image
    double scale;          // percent
    double xOffset;        // points from the middle of the page, to the right
    double yOffset;        // the same, upwards
};

enum class MarkStore { watermarks, faxPictures };

/// The one of that name; nothing, with the reason, when there is none.
std::optional<StoredMark> readStoredMark(MarkStore store, const std::string& name, std::string* reason);

/// A stored text, without its font, to travel with settings: a dictionary. Null, with the reason, for a picture or when
/// there is none.
CFRef<CFDictionaryRef> copyMarkToTravel(const std::string& name, std::string* reason);
/// The one that came so under that name, with its font as it is installed here; nothing with the reason.
std::optional<StoredMark> readTravelledMark(CFDictionaryRef watermark, const std::string& name, std::string* reason);

/// Another one when the store has been written since; nothing when there is none.
std::optional<FileStamp> stampOfStore(MarkStore store);
