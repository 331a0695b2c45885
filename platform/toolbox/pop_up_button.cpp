#include "platform/toolbox/pop_up_button.h"

#include "platform/toolbox/objects.h"

#include <QKeyEvent>
#include <QWheelEvent>

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
