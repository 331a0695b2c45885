// The fonts that a watermark can have.
#pragma once

#include "platform/fonts/font_faces.h"
#include "watermark/font_refusal.h"

#include <QFont>
#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <string>
#include <vector>

QFont FontOfFace(const FontFace& face, int size);

/// A font by the name in a record.
struct NamedFont {
    std::optional<FontFace> face;  // nothing when it is not installed and none stands in for it
    FontRefusal refusal = FontRefusal::none;
};

/// The installed faces with outlines that can be embedded. A file is opened only for a face that was chosen.
class MarkFonts {
public:
    MarkFonts();

    [[nodiscard]] QStringList families() const;
    [[nodiscard]] QStringList styles(const QString& family) const;
    /// Empty when there is none.
    [[nodiscard]] std::string postScriptName(const QString& family, const QString& style) const;
    /// The style that a family begins with: its regular one if it has one.
    [[nodiscard]] QString firstStyle(const QString& family) const;

    /// The font that the name stands for, tried as it will be printed.
    const NamedFont& named(const std::string& postScriptName);

private:
    std::vector<FontFace> faces_;
    QHash<QString, NamedFont> named_;
};
