#include "watermark/editor/mark_fonts.h"

#include "platform/foundation/CFString.h"
#include "watermark/type42.h"

#include <QFile>
#include <algorithm>

namespace {

QString TextOf(const std::string& text) {
    return QString::fromStdString(text);
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
    const auto name = CFRef<CFStringRef>::adopt(
        CFStringCreateWithCString(nullptr, face.postScriptName.c_str(), kCFStringEncodingUTF8));
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

MarkFonts::MarkFonts() : faces_(InstalledFontFaces()) {
    std::erase_if(faces_, [](const FontFace& face) { return face.outlines != FontOutlines::trueType; });
}

QStringList MarkFonts::families() const {
    QStringList families;
    for (const FontFace& face : faces_) {
        if (const QString family = TextOf(face.family); families.isEmpty() || families.last() != family) {
            families.append(family);
        }
    }
    families.removeDuplicates();
    return families;
}

QStringList MarkFonts::styles(const QString& family) const {
    QStringList styles;
    for (const FontFace& face : faces_) {
        if (TextOf(face.family) == family) {
            styles.append(TextOf(face.style));
        }
    }
    styles.removeDuplicates();
    return styles;
}

std::string MarkFonts::postScriptName(const QString& family, const QString& style) const {
    const auto face = std::ranges::find_if(faces_, [&](const FontFace& candidate) {
        return TextOf(candidate.family) == family && TextOf(candidate.style) == style;
    });
    return face != faces_.end() ? face->postScriptName : std::string();
}

QString MarkFonts::firstStyle(const QString& family) const {
    const QStringList all = styles(family);
    for (const char* usual : {"Regular", "Book", "Roman", "Normal"}) {
        if (all.contains(QLatin1String(usual))) {
            return QLatin1String(usual);
        }
    }
    return all.value(0);
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
