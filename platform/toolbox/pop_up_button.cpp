#include "platform/toolbox/pop_up_button.h"

#include "platform/toolbox/objects.h"

#include <QKeyEvent>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace {

// Qt's closed pop-up goes to another item by its place, and by the letter that it begins with, whatever is held down.

bool isPlaceKey(const QKeyEvent& key) {
    switch (key.key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Home:
        case Qt::Key_End:
            return true;
        default:
            return false;
    }
}

bool isLetterKey(const QKeyEvent& key) {
    return !key.text().isEmpty() && key.text().front().isPrint();
}

bool isCommandKey(const QKeyEvent& key) {
    return key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

}  // namespace

void PopUpButton::showPopup() {
    if (OpaqueControlRef* control = OpaqueControlRef::of(this)) {
        control->menu->aboutToShow();
    }
    QComboBox::showPopup();
}

QSize PopUpButton::heldSize() const {
    constexpr int kLeastHeight = 14;  // these are Qt's own
    constexpr int kAroundText = 2;
    constexpr int kBesideIcon = 4;
    const QFontMetrics metrics = fontMetrics();
    const int text = metrics.horizontalAdvance(u'X') * minimumContentsLength();
    const QSize icon = iconSize();
    const int height = static_cast<int>(std::ceil(QFontMetricsF(metrics).height()));
    const QSize contents(text + icon.width() + kBesideIcon,
                         std::max({height, kLeastHeight, icon.height()}) + kAroundText);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    return style()->sizeFromContents(QStyle::CT_ComboBox, &option, contents, this);
}

void PopUpButton::keyPressEvent(QKeyEvent* event) {
    if (!actsAtOnce() || !(isPlaceKey(*event) || isLetterKey(*event))) {
        QComboBox::keyPressEvent(event);
    } else if (isLetterKey(*event) && isCommandKey(*event)) {
        event->ignore();
    } else {
        showPopup();
    }
}

void PopUpButton::wheelEvent(QWheelEvent* event) {
    if (actsAtOnce()) {
        event->ignore();
    } else {
        QComboBox::wheelEvent(event);
    }
}
