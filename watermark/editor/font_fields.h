// The font of a text: its family and its style.
#pragma once

#include "watermark/editor/font_menu.h"
#include "watermark/editor/mark_fonts.h"

#include <QComboBox>
#include <QFormLayout>

class FontFields {
public:
    /// Adds the fields to the form, whose widgets live as long as the object. So do the fonts.
    FontFields(MarkFonts* fonts, QFormLayout* form);

    void show(const NamedFont& font);

    /// Called with the PostScript name of the font that the user chose.
    std::function<void(const std::string&)> chosen;

private:
    MarkFonts* fonts_;
    QComboBox* family_;
    QComboBox* style_;
    FontMenu* styles_;
};
