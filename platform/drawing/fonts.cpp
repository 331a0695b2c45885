#include "platform/drawing/units.h"

#include "platform/fonts/font_faces.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

int pixels(double size) {
    return std::max(1, static_cast<int>(std::lround(size * kUnitsPerPoint)));
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
    if (const std::optional<FontFace> face = FindFontFace(name)) {
        font.setFamilies({textOf(face->family)});
        font.setBold(false);
        font.setStyleName(textOf(face->style));
    }
    return font;
}

QString textOf(const std::string& utf8) {
    return QString::fromStdString(utf8);
}
