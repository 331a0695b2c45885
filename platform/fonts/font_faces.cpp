#include "platform/fonts/font_faces.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <mutex>
#include <string_view>
#include <tuple>

namespace {

template <auto destroy>
struct Destroy {
    template <typename T>
    void operator()(T* object) const {
        destroy(object);
    }
};
using Pattern = std::unique_ptr<FcPattern, Destroy<FcPatternDestroy>>;
using Properties = std::unique_ptr<FcObjectSet, Destroy<FcObjectSetDestroy>>;
using Fonts = std::unique_ptr<FcFontSet, Destroy<FcFontSetDestroy>>;
using Characters = std::unique_ptr<FcCharSet, Destroy<FcCharSetDestroy>>;
using LanguageTag = std::unique_ptr<FcChar8, Destroy<FcStrFree>>;

struct CommonFont {
    std::string_view postScriptName;
    const char* family;
    int weight;
    int slant;
};

// Fonts that documents and records name although few Linux machines have them: PostScript name, family, weight, slant.
constexpr CommonFont kCommonFonts[] = {
    {"ArialMT", "Arial", FC_WEIGHT_REGULAR, FC_SLANT_ROMAN},
    {"Arial-BoldMT", "Arial", FC_WEIGHT_BOLD, FC_SLANT_ROMAN},
    {"Arial-ItalicMT", "Arial", FC_WEIGHT_REGULAR, FC_SLANT_ITALIC},
    {"Arial-BoldItalicMT", "Arial", FC_WEIGHT_BOLD, FC_SLANT_ITALIC},
    {"Helvetica", "Helvetica", FC_WEIGHT_REGULAR, FC_SLANT_ROMAN},
    {"Helvetica-Bold", "Helvetica", FC_WEIGHT_BOLD, FC_SLANT_ROMAN},
    {"Helvetica-Oblique", "Helvetica", FC_WEIGHT_REGULAR, FC_SLANT_OBLIQUE},
    {"Helvetica-BoldOblique", "Helvetica", FC_WEIGHT_BOLD, FC_SLANT_OBLIQUE},
    {"TimesNewRomanPSMT", "Times New Roman", FC_WEIGHT_REGULAR, FC_SLANT_ROMAN},
    {"TimesNewRomanPS-BoldMT", "Times New Roman", FC_WEIGHT_BOLD, FC_SLANT_ROMAN},
    {"TimesNewRomanPS-ItalicMT", "Times New Roman", FC_WEIGHT_REGULAR, FC_SLANT_ITALIC},
    {"TimesNewRomanPS-BoldItalicMT", "Times New Roman", FC_WEIGHT_BOLD, FC_SLANT_ITALIC},
    {"CourierNewPSMT", "Courier New", FC_WEIGHT_REGULAR, FC_SLANT_ROMAN},
    {"CourierNewPS-BoldMT", "Courier New", FC_WEIGHT_BOLD, FC_SLANT_ROMAN},
    {"CourierNewPS-ItalicMT", "Courier New", FC_WEIGHT_REGULAR, FC_SLANT_ITALIC},
    {"CourierNewPS-BoldItalicMT", "Courier New", FC_WEIGHT_BOLD, FC_SLANT_ITALIC},
};
static_assert(std::size(kCommonFonts) == 16);

std::string textOf(const FcPattern* font, const char* property) {
    FcChar8* value = nullptr;
    return FcPatternGetString(font, property, 0, &value) == FcResultMatch ? reinterpret_cast<const char*>(value) : "";
}

FontFace faceOf(const FcPattern* font) {
    FontFace face;
    face.postScriptName = textOf(font, FC_POSTSCRIPT_NAME);
    face.family = textOf(font, FC_FAMILY);
    face.style = textOf(font, FC_STYLE);
    face.path = textOf(font, FC_FILE);
    int index = 0;
    FcPatternGetInteger(font, FC_INDEX, 0, &index);
    face.index = static_cast<UInt32>(index) & 0xffff;
    if (textOf(font, FC_FONTFORMAT) == "TrueType") {
        // The upper half numbers the instances of a variable font; the pattern of the whole font says that it varies.
        FcBool varies = FcFalse;
        FcPatternGetBool(font, FC_VARIABLE, 0, &varies);
        face.outlines = varies || index > 0xffff ? FontOutlines::variableTrueType : FontOutlines::trueType;
    }
    return face;
}

/// The faces that have what the pattern asks for, in an order that does not hang on the order of the font folders.
std::vector<FontFace> facesLike(const Pattern& wanted) {
    const Properties properties(FcObjectSetBuild(FC_POSTSCRIPT_NAME, FC_FAMILY, FC_STYLE, FC_FILE, FC_INDEX,
                                                 FC_FONTFORMAT, FC_VARIABLE, nullptr));
    const Fonts found(FcFontList(nullptr, wanted.get(), properties.get()));
    std::vector<FontFace> faces;
    for (int i = 0; found != nullptr && i < found->nfont; ++i) {
        FontFace face = faceOf(found->fonts[i]);
        if (!face.postScriptName.empty()) {
            faces.push_back(std::move(face));
        }
    }
    std::sort(faces.begin(), faces.end(), [](const FontFace& left, const FontFace& right) {
        const auto order = [](const FontFace& face) {
            return std::tie(face.postScriptName, face.outlines, face.path, face.index);
        };
        return order(left) < order(right);
    });
    return faces;
}

void applyUserSettings(const Pattern& wanted) {
    FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
}

/// What the user's settings choose for the pattern; null when there are no fonts.
Pattern bestFont(const Pattern& wanted) {
    applyUserSettings(wanted);
    FcResult result = FcResultNoMatch;
    return Pattern(FcFontMatch(nullptr, wanted.get(), &result));
}

Pattern patternOf(const char* family) {
    Pattern pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family));
    return pattern;
}

bool hasLanguage(const Pattern& font, const FcChar8* language) {
    FcLangSet* languages = nullptr;
    return FcPatternGetLangSet(font.get(), FC_LANG, 0, &languages) == FcResultMatch &&
           FcLangSetHasLang(languages, language) != FcLangDifferentLang;
}

/// What the user's settings choose for the family, as long as it has outlines of TrueType.
std::optional<FontFace> standInFor(const CommonFont& font) {
    const Pattern wanted(FcPatternBuild(nullptr, FC_FAMILY, FcTypeString, font.family, FC_WEIGHT, FcTypeInteger,
                                        font.weight, FC_SLANT, FcTypeInteger, font.slant, nullptr));
    applyUserSettings(wanted);
    FcResult result = FcResultNoMatch;
    const Fonts sorted(FcFontSort(nullptr, wanted.get(), FcTrue, nullptr, &result));
    for (int i = 0; sorted != nullptr && i < sorted->nfont; ++i) {
        FontFace face = faceOf(sorted->fonts[i]);
        if (face.outlines == FontOutlines::trueType && !face.postScriptName.empty()) {
            return face;
        }
    }
    return std::nullopt;
}

std::vector<std::string> findFamilies(const std::string& family, const std::string& language) {
    const Characters english(FcCharSetCreate());
    for (FcChar32 character = ' '; character <= '~'; ++character) {
        FcCharSetAddChar(english.get(), character);
    }
    const Pattern wanted = patternOf(family.c_str());
    FcPatternAddCharSet(wanted.get(), FC_CHARSET, english.get());
    const Pattern first = bestFont(wanted);
    if (first == nullptr) {
        return {};
    }
    std::vector<std::string> families{textOf(first.get(), FC_FAMILY)};
    const LanguageTag tag(FcLangNormalize(reinterpret_cast<const FcChar8*>(language.c_str())));
    if (tag != nullptr && !hasLanguage(first, tag.get())) {
        const Pattern letters = patternOf("sans-serif");
        FcPatternAddString(letters.get(), FC_LANG, tag.get());
        if (const Pattern second = bestFont(letters); second != nullptr && hasLanguage(second, tag.get())) {
            families.push_back(textOf(second.get(), FC_FAMILY));
        }
    }
    return families;
}

}  // namespace

std::optional<FontFace> FindFontFace(const std::string& postScriptName) {
    // As a property of a pattern: the name's own punctuation would mean something in the notation of patterns.
    const Pattern wanted(FcPatternCreate());
    FcPatternAddString(wanted.get(), FC_POSTSCRIPT_NAME, reinterpret_cast<const FcChar8*>(postScriptName.c_str()));
    const std::vector<FontFace> faces = facesLike(wanted);
    if (!faces.empty()) {
        return faces.front();
    }
    const auto* const common =
        std::find_if(std::begin(kCommonFonts), std::end(kCommonFonts),
                     [&postScriptName](const CommonFont& font) { return font.postScriptName == postScriptName; });
    return common == std::end(kCommonFonts) ? std::nullopt : standInFor(*common);
}

std::vector<FontFace> InstalledFontFaces() {
    const Pattern any(FcPatternCreate());
    std::vector<FontFace> faces = facesLike(any);
    faces.erase(std::unique(faces.begin(), faces.end(),
                            [](const FontFace& left, const FontFace& right) {
                                return left.postScriptName == right.postScriptName;
                            }),
                faces.end());
    std::sort(faces.begin(), faces.end(), [](const FontFace& left, const FontFace& right) {
        return std::tie(left.family, left.style, left.postScriptName) <
               std::tie(right.family, right.style, right.postScriptName);
    });
    return faces;
}

std::vector<std::string> FamiliesForText(const std::string& family, const std::string& language) {
    static std::mutex mutex;
    static std::map<std::pair<std::string, std::string>, std::vector<std::string>> found;
    const std::scoped_lock lock(mutex);
    const auto [answer, isNew] = found.try_emplace({family, language});
    if (isNew) {
        answer->second = findFamilies(family, language);
    }
    return answer->second;
}

FontsAhead::FontsAhead(std::string family, std::string language)
    : reader_([family = std::move(family), language = std::move(language)] {
          FcInit();
          if (!language.empty()) {
              FamiliesForText(family, language);
          }
      }) {}
