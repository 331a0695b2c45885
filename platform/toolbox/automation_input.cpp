// Input events, and what stands between them and a widget.

#include "platform/toolbox/automation_input.h"

#include "platform/toolbox/screen_fit.h"

#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QWindow>

namespace {

bool isBlocked(const QWidget* widget) {
    const QWidget* modal = QApplication::activeModalWidget();
    const QWindow* front = modal ? modal->windowHandle() : nullptr;
    const QWindow* own = widget->window()->windowHandle();
    return front && own && own != front && !front->isAncestorOf(own, QWindow::IncludeTransients);
}

bool isInFront(const QWidget* widget, QPoint place) {
    const QWidget* hit = widget->window()->childAt(widget->mapTo(widget->window(), place));
    return hit && (hit == widget || widget->isAncestorOf(hit));
}

/// A button with a mark takes clicks only on the mark and its text, which may be narrow.
QPoint clickPlace(const QWidget* widget) {
    QStyleOptionButton option;
    option.initFrom(widget);
    if (qobject_cast<const QCheckBox*>(widget)) {
        return widget->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, widget).center();
    }
    if (qobject_cast<const QRadioButton*>(widget)) {
        return widget->style()->subElementRect(QStyle::SE_RadioButtonIndicator, &option, widget).center();
    }
    return widget->rect().center();
}

/// Sends what the left button does, one after the other, as long as the window is there.
bool sendMouse(QWidget* widget, QPoint place, std::initializer_list<QEvent::Type> types,
               Qt::KeyboardModifiers modifiers) {
    if (!isInFront(widget, place)) {
        return false;
    }
    const QPoint inWindow = widget->mapTo(widget->window(), place);
    const QPointF onScreen = widget->mapToGlobal(place);
    const QPointer<QWindow> handle(widget->window()->windowHandle());
    for (const QEvent::Type type : types) {
        if (handle) {
            const bool down = type != QEvent::MouseButtonRelease;
            QMouseEvent event(type, inWindow, onScreen, Qt::LeftButton, down ? Qt::LeftButton : Qt::NoButton,
                              modifiers);
            QCoreApplication::sendEvent(handle, &event);
        }
    }
    return true;
}

}  // namespace

bool userReaches(QWidget* widget) {
    if (!widget->isVisible() || !widget->isEnabled() || isBlocked(widget)) {
        return false;
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    scrollTo(widget);
    const QRegion visible = widget->visibleRegion();
    return !visible.isEmpty() && isInFront(widget, visible.boundingRect().center());
}

bool userClicks(QWidget* widget, QPoint place, Qt::KeyboardModifiers modifiers) {
    return sendMouse(widget, place, {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}, modifiers);
}

bool userDoubleClicks(QWidget* widget, QPoint place) {
    return sendMouse(
        widget, place,
        {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease},
        Qt::NoModifier);
}

bool userClicks(QWidget* widget) {
    return userClicks(widget, clickPlace(widget));
}

void userPresses(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text) {
    const QPointer<QWindow> handle(widget->window()->windowHandle());
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        if (handle) {
            QKeyEvent event(type, key, modifiers, text);
            QCoreApplication::sendEvent(handle, &event);
        }
    }
}

bool userFocuses(QWidget* widget) {
    if (widget->focusPolicy() != Qt::NoFocus) {
        widget->setFocus(Qt::TabFocusReason);
    }
    return widget->window()->focusWidget() == widget;
}
