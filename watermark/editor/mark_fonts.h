// The fonts that a watermark can have.
#pragma once

#include "platform/fonts/font_faces.h"
#include "watermark/type42/font_refusal.h"

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

/// The installed faces. A file is opened only for a face that is asked about.
class MarkFonts {
public:
    MarkFonts();

    [[nodiscard]] QStringList families() const;
    [[nodiscard]] QStringList styles(const QString& family) const;
    /// Empty when there is none.
    [[nodiscard]] std::string postScriptName(const QString& family, const QString& style) const;
    /// The style that a family begins with: one that can be embedded if there is any, its regular one if that can.
    [[nodiscard]] QString firstStyle(const QString& family);

    /// What speaks against a face as far as that is quickly told; against a family, when something does against each
    /// of its faces.
    FontRefusal refusal(const QString& family, const QString& style);
    FontRefusal refusal(const QString& family) { return refusal(family, firstStyle(family)); }

    /// The font that the name stands for, tried as it will be printed.
    const NamedFont& named(const std::string& postScriptName);

private:
    struct Face {
        FontFace face;
        QString family;
        QString style;
        std::optional<FontRefusal> refusal;
    };

    /// The place of the face among them, of several that of the likeliest to be embedded; nothing for none.
    [[nodiscard]] std::optional<std::size_t> find(const QString& family, const QString& style) const;

    std::vector<Face> faces_;  // by family and style
    QHash<QString, NamedFont> named_;
};
