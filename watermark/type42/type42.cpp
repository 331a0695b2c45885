#include "watermark/type42/type42.h"

#include "platform/foundation/text.h"
#include "watermark/type42/type42_writer.h"

#include <algorithm>

namespace {

/// What can stand behind a slash in PostScript, and is not longer than a name can be.
bool isPostScriptName(std::string_view name) {
    constexpr std::size_t kLongestName = 127;
    return !name.empty() && name.size() <= kLongestName && std::all_of(name.begin(), name.end(), [](char c) {
        return c > ' ' && c < 0x7f && std::string_view("()<>[]{}/%").find(c) == std::string_view::npos;
    });
}

/// What the font's maker allows. Fonts are embedded whole, so that it does not matter whether parts of one may be.
FontRefusal embeddingRefusal(SfntBytes os2) {
    constexpr UInt16 kUsage = 0x000e;
    constexpr UInt16 kRestricted = 0x0002;  // alone: of several bits in old fonts, the most generous one counts
    constexpr UInt16 kBitmapsOnly = 0x0200;
    const UInt16 rights = os2.u16(8);
    if ((rights & kUsage) == kRestricted) {
        return FontRefusal::embeddingRestricted;
    }
    return (rights & kBitmapsOnly) != 0 ? FontRefusal::bitmapsOnly : FontRefusal::none;
}

FontRefusal outlinesRefusal(const SfntFace& face) {
    if (!face.table(FourCharCode("fvar")).empty()) {
        return FontRefusal::variableOutlines;
    }
    if (!face.table(FourCharCode("glyf")).empty()) {
        return FontRefusal::none;
    }
    const bool hasPostScript = !face.table(FourCharCode("CFF ")).empty() || !face.table(FourCharCode("CFF2")).empty();
    return hasPostScript ? FontRefusal::postScriptOutlines : FontRefusal::noOutlines;
}

FontRefusal open(SfntBytes file, UInt32 index, SfntFace* face) {
    FontRefusal refusal = SfntFace::open(file, index, face);
    if (refusal == FontRefusal::none) {
        refusal = outlinesRefusal(*face);
    }
    return refusal == FontRefusal::none ? embeddingRefusal(face->table(FourCharCode("OS/2"))) : refusal;
}

FontRefusal convert(SfntBytes file, UInt32 index, const std::string& name, CFRef<CFDataRef>* program) {
    if (!isPostScriptName(name)) {
        return FontRefusal::unusableName;
    }
    SfntFace face;
    if (const FontRefusal refusal = open(file, index, &face); refusal != FontRefusal::none) {
        return refusal;
    }
    const std::optional<GlyphOutlines> outlines = ReadGlyphOutlines(face);
    if (!outlines) {
        return FontRefusal::damaged;
    }
    if (outlines->offsets.back() == 0) {
        return FontRefusal::noOutlines;
    }
    const std::vector<FontCharacter> characters = CharactersOfFont(face.table(FourCharCode("cmap")), outlines->count);
    if (characters.empty()) {
        return FontRefusal::noCharacters;
    }
    *program =
        WriteType42(name, face, *outlines, NameGlyphs(characters, face.table(FourCharCode("post")), outlines->count));
    return *program ? FontRefusal::none : FontRefusal::tooLarge;
}

}  // namespace

CFRef<CFDataRef> convertTTFtoPS42(CFDataRef font, CFStringRef postScriptName, UInt32 face, FontRefusal* refusal) {
    CFRef<CFDataRef> program;
    const SfntBytes file(CFDataGetBytePtr(font), static_cast<std::size_t>(CFDataGetLength(font)));
    *refusal = convert(file, face, utf8Text(postScriptName), &program);
    return program;
}

FontRefusal RefusalAtFirstSight(SfntBytes file, UInt32 face) {
    SfntFace opened;
    return open(file, face, &opened);
}
