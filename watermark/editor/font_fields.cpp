#include "watermark/editor/font_fields.h"

#include "watermark/editor/editor_fields.h"

#include <QSignalBlocker>

FontFields::FontFields(MarkFonts* fonts, QFormLayout* form)
    : fonts_(fonts),
      family_(Described(new QComboBox, "family", "Font Tip")),
      style_(Described(new QComboBox, "style", "Style Tip")),
      styles_(new FontMenu([this](const QString& style) { return fonts_->refusal(family_->currentText(), style); },
                           style_)) {
    auto* families = new FontMenu([fonts](const QString& family) { return fonts->refusal(family); }, family_);
    families->setNames(fonts->families());
    family_->setModel(families);
    family_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    family_->setMinimumContentsLength(18);
    style_->setModel(styles_);
    QObject::connect(family_, &QComboBox::currentTextChanged, family_, [this](const QString& family) {
        chosen(fonts_->postScriptName(family, fonts_->firstStyle(family)));
    });
    QObject::connect(style_, &QComboBox::currentTextChanged, style_,
                     [this](const QString& style) { chosen(fonts_->postScriptName(family_->currentText(), style)); });
    AddRow(form, "Font Label", family_);
    AddRow(form, "Style Label", style_);
}

void FontFields::show(const NamedFont& font) {
    const QSignalBlocker noFamily(family_);
    const QSignalBlocker noStyle(style_);
    const QString family = font.face ? QString::fromStdString(font.face->family) : QString();
    family_->setCurrentIndex(family_->findText(family));
    styles_->setNames(fonts_->styles(family));
    style_->setCurrentIndex(font.face ? style_->findText(QString::fromStdString(font.face->style)) : -1);
}
