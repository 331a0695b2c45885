#include "watermark/editor/color_button.h"

#include "watermark/editor/editor_texts.h"

#include <QColorDialog>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

ColorButton::ColorButton(QWidget* parent) : QPushButton(parent) {
    setIconSize({40, 16});
    setLayoutDirection(Qt::LeftToRight);  // as colors are written
    connect(this, &QPushButton::clicked, this, [this] { ask(); });
}

void ColorButton::setColor(const QColor& color) {
    color_ = color;
    QPixmap swatch(iconSize() * devicePixelRatio());
    swatch.setDevicePixelRatio(devicePixelRatio());
    QPainter painter(&swatch);
    const QRect all({}, iconSize());
    painter.fillRect(all, Qt::white);
    painter.fillRect(all, QBrush(QColor(190, 190, 190), Qt::Dense4Pattern));  // shows through
    painter.fillRect(all, color);
    painter.setPen(QColor(120, 120, 120));
    painter.drawRect(all.adjusted(0, 0, -1, -1));
    painter.end();
    setIcon(swatch);
    setText(color.name().toUpper());
}

/// Qt aligns the text beside an icon as the program's windows run, not as the button does.
void ColorButton::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    painter.setLayoutDirection(layoutDirection());
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.drawControl(QStyle::CE_PushButton, option);
}

void ColorButton::ask() {
    const QColor color = QColorDialog::getColor(color_, window(), EditorText("Color Title"),
                                                QColorDialog::ShowAlphaChannel | QColorDialog::DontUseNativeDialog);
    if (color.isValid()) {
        chosen(color);
    }
}
