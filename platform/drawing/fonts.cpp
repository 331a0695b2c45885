#include "platform/drawing/units.h"

#include <QStringList>

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

int pixels(double size) {
    return std::max(1, static_cast<int>(std::lround(size * kUnitsPerPoint)));
}

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

const FcChar8* property(const FcPattern* font, const char* name) {
    FcChar8* value = nullptr;
    return FcPatternGetString(font, name, 0, &value) == FcResultMatch ? value : nullptr;
}

}  // namespace

QFont pageFont(double size, bool bold) {
    QFont font;
    font.setFamilies({QStringLiteral("Liberation Sans"), QStringLiteral("DejaVu Sans"), QStringLiteral("sans-serif")});
    font.setStyleHint(QFont::SansSerif);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setPixelSize(pixels(size));
    font.setBold(bold);
    return font;
}

QFont fontByPostScriptName(const std::string& name, double size) {
    QFont font = pageFont(size, true);
    // As a property of a pattern: the name's own punctuation would mean something in the notation of patterns.
    const Pattern wanted(FcPatternCreate());
    FcPatternAddString(wanted.get(), FC_POSTSCRIPT_NAME, reinterpret_cast<const FcChar8*>(name.c_str()));
    const Properties properties(FcObjectSetBuild(FC_FAMILY, FC_STYLE, nullptr));
    const Fonts found(FcFontList(nullptr, wanted.get(), properties.get()));
    if (found == nullptr || found->nfont == 0) {
        return font;
    }
    const FcChar8* const family = property(found->fonts[0], FC_FAMILY);
    const FcChar8* const style = property(found->fonts[0], FC_STYLE);
    if (family != nullptr) {
        font.setFamilies({QString::fromUtf8(reinterpret_cast<const char*>(family))});
        font.setBold(false);
        font.setStyleName(QString::fromUtf8(reinterpret_cast<const char*>(style)));
    }
    return font;
}

QString textOf(const std::string& utf8) {
    return QString::fromStdString(utf8);
}
