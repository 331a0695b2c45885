#include "platform/toolbox/text_scale.h"

#include "platform/toolbox/view_widget.h"

#include <QApplication>
#include <QFontInfo>
#include <algorithm>

namespace {

constexpr double kDesignersPixels = 12;  // 9 points at 96 dots an inch

double textScale() {
    return std::max(1.0, QFontInfo(QApplication::font()).pixelSize() / kDesignersPixels);
}

bool holdsText(const QWidget* widget) {
    return dynamic_cast<const ViewWidget*>(widget) == nullptr || widget->property("followsText").toBool();
}

int scaled(int length, double scale) {
    return length < QWIDGETSIZE_MAX ? static_cast<int>(length * scale) : length;
}

QSize scaled(const QSize& size, double scale) {
    return {scaled(size.width(), scale), scaled(size.height(), scale)};
}

}  // namespace

void followTextSize(QWidget* window) {
    const double scale = textScale();
    if (scale == 1) {
        return;
    }
    if (window->testAttribute(Qt::WA_Resized)) {
        window->resize(scaled(window->size(), scale));
    }
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        if (holdsText(widget)) {
            widget->setMaximumSize(scaled(widget->maximumSize(), scale));
            widget->setMinimumSize(scaled(widget->minimumSize(), scale));
        }
    }
}
