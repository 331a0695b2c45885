#include "platform/fonts/ATSFont.h"

#include "platform/fonts/font_faces.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <vector>

#include <sys/stat.h>

namespace {

/// The fonts that were found so far; a reference is a place in the list, counted from 1.
std::vector<FontFace>& foundFonts() {
    static std::vector<FontFace> fonts;
    return fonts;
}

const FontFace* faceOf(FMFont font) {
    const std::vector<FontFace>& fonts = foundFonts();
    return font == kATSFontRefUnspecified || font > fonts.size() ? nullptr : &fonts[font - 1];
}

}  // namespace

ATSFontRef ATSFontFindFromPostScriptName(CFStringRef name, ATSOptionFlags /*options*/) {
    std::optional<FontFace> face = FindFontFace(utf8Text(name));
    if (!face) {
        return kATSFontRefUnspecified;
    }
    std::vector<FontFace>& fonts = foundFonts();
    auto known = std::find_if(fonts.begin(), fonts.end(), [&face](const FontFace& font) {
        return font.path == face->path && font.index == face->index;
    });
    if (known == fonts.end()) {
        known = fonts.insert(known, std::move(*face));
    }
    return static_cast<ATSFontRef>(known - fonts.begin()) + 1;
}

FMFont FMGetFontFromATSFontRef(ATSFontRef font) {
    return font;
}

OSStatus FMGetFontContainer(FMFont font, FSRef* file) {
    const FontFace* const face = faceOf(font);
    if (face == nullptr) {
        return kFMInvalidFontErr;
    }
    struct stat status;
    if (face->path.size() >= sizeof file->path || stat(face->path.c_str(), &status) != 0) {
        return fnfErr;
    }
    std::copy_n(face->path.c_str(), face->path.size() + 1, file->path);
    return noErr;
}

UInt32 FMGetFontIndex(FMFont font) {
    const FontFace* const face = faceOf(font);
    return face == nullptr ? 0 : face->index;
}
