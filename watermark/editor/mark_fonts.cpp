#include "watermark/editor/mark_fonts.h"

#include "platform/foundation/CFString.h"
#include "platform/foundation/text.h"
#include "watermark/type42/type42.h"

#include <QFile>
#include <algorithm>

namespace {

QString TextOf(const std::string& text) {
    return QString::fromStdString(text);
}

/// Of an installed face, by the beginning and the rights of its file.
FontRefusal RefusalAtFirstSight(const FontFace& face) {
    if (face.outlines != FontOutlines::trueType) {
        return face.outlines == FontOutlines::other ? FontRefusal::postScriptOutlines : FontRefusal::variableOutlines;
    }
    QFile file(TextOf(face.path));
    const uchar* bytes = file.open(QIODevice::ReadOnly) ? file.map(0, file.size()) : nullptr;
    return bytes != nullptr ? RefusalAtFirstSight(SfntBytes(bytes, static_cast<std::size_t>(file.size())), face.index)
                            : FontRefusal::notAFont;
}

/// What converting the face comes to.
FontRefusal RefusalOf(const FontFace& face) {
    QFile file(TextOf(face.path));
    if (!file.open(QIODevice::ReadOnly)) {
        return FontRefusal::notAFont;
    }
    const QByteArray bytes = file.readAll();
    const auto data =
        CFRef<CFDataRef>::adopt(CFDataCreate(nullptr, reinterpret_cast<const UInt8*>(bytes.constData()), bytes.size()));
    const CFRef<CFStringRef> name = makeString(face.postScriptName);
    FontRefusal refusal = FontRefusal::none;
    const CFRef<CFDataRef> program = convertTTFtoPS42(data.get(), name.get(), face.index, &refusal);
    return program ? FontRefusal::none : refusal;
}

}  // namespace

QFont FontOfFace(const FontFace& face, int size) {
    QFont font;
    font.setFamilies({TextOf(face.family)});
    font.setStyleName(TextOf(face.style));
    font.setPixelSize(size);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

MarkFonts::MarkFonts() {
    for (FontFace& face : InstalledFontFaces()) {
        const QString family = TextOf(face.family);
        const QString style = TextOf(face.style);
        faces_.push_back({std::move(face), family, style, std::nullopt});
    }
}

QStringList MarkFonts::families() const {
    QStringList families;
    for (const Face& face : faces_) {
        if (families.isEmpty() || families.last() != face.family) {
            families.append(face.family);
        }
    }
    families.removeDuplicates();
    return families;
}

QStringList MarkFonts::styles(const QString& family) const {
    QStringList styles;
    for (const Face& face : faces_) {
        if (face.family == family) {
            styles.append(face.style);
        }
    }
    styles.removeDuplicates();
    return styles;
}

std::optional<std::size_t> MarkFonts::find(const QString& family, const QString& style) const {
    std::optional<std::size_t> found;
    for (std::size_t i = 0; i < faces_.size(); ++i) {
        if (faces_[i].family == family && faces_[i].style == style &&
            (!found || faces_[i].face.outlines < faces_[*found].face.outlines)) {
            found = i;
        }
    }
    return found;
}

std::string MarkFonts::postScriptName(const QString& family, const QString& style) const {
    const auto place = find(family, style);
    return place ? faces_[*place].face.postScriptName : std::string();
}

QString MarkFonts::firstStyle(const QString& family) {
    QStringList all = styles(family);
    for (const char* usual : {"Normal", "Roman", "Book", "Regular"}) {
        if (const qsizetype at = all.indexOf(QLatin1String(usual)); at > 0) {
            all.move(at, 0);
        }
    }
    const auto embeddable =
        std::ranges::find_if(all, [&](const QString& style) { return refusal(family, style) == FontRefusal::none; });
    return embeddable != all.end() ? *embeddable : all.value(0);
}

FontRefusal MarkFonts::refusal(const QString& family, const QString& style) {
    const auto place = find(family, style);
    if (!place) {
        return FontRefusal::notAFont;
    }
    Face& face = faces_[*place];
    if (!face.refusal) {
        face.refusal = RefusalAtFirstSight(face.face);
    }
    return *face.refusal;
}

const NamedFont& MarkFonts::named(const std::string& postScriptName) {
    const QString key = TextOf(postScriptName);
    const auto known = named_.constFind(key);
    if (known != named_.cend()) {
        return *known;
    }
    NamedFont font{FindFontFace(postScriptName), FontRefusal::none};
    if (font.face) {
        font.refusal = RefusalOf(*font.face);
    }
    return *named_.insert(key, font);
}
