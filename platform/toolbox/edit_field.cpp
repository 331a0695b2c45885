// The field of one line: how Qt's events and editing actions meet the announcements.

#include "platform/toolbox/edit_field.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>

ControlEditTextSelectionRec EditField::selection() const {
    if (hasSelectedText()) {
        return {selectionStart(), selectionEnd()};
    }
    return {cursorPosition(), cursorPosition()};
}

void EditField::setSelection(ControlEditTextSelectionRec selection) {
    const int length = static_cast<int>(text().size());
    const int start = std::clamp(selection.selStart, 0, length);
    const int end = std::clamp(selection.selEnd, start, length);
    if (start == end) {
        setCursorPosition(start);
    } else {
        QLineEdit::setSelection(start, end - start);
    }
}

bool EditField::sendStepKey(const QKeyEvent& key) {
    OpaqueControlRef* control = OpaqueControlRef::of(this);
    const bool steps = key.key() == Qt::Key_Up || key.key() == Qt::Key_Down;
    if (control == nullptr || !steps || (key.modifiers() & ~Qt::KeypadModifier)) {
        return false;
    }
    return sendKey(control, key.key() == Qt::Key_Up ? kUpArrowCharCode : kDownArrowCharCode);
}

void EditField::sendFocus(ControlPartCode part, Qt::FocusReason reason) {
    const bool borrowed =
        reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason || reason == Qt::MenuBarFocusReason;
    OpaqueControlRef* control = OpaqueControlRef::of(this);
    if (control != nullptr && !borrowed) {
        ScopedEvent(kEventClassControl, kEventControlSetFocusPart)
            .with(kEventParamDirectObject, typeControlRef, ControlRef(control))
            .with(kEventParamControlPart, typeControlPartCode, part)
            .sendTo(control);
    }
}

void EditField::perform(EditAction action) {
    switch (action) {
        case EditAction::backspace:
            backspace();
            break;
        case EditAction::deleteForward:
            del();
            break;
        case EditAction::deleteBackwardWord:
            cursorWordBackward(true);
            del();
            break;
        case EditAction::deleteForwardWord:
            cursorWordForward(true);
            del();
            break;
        case EditAction::deleteLine:
            selectAll();
            copy();
            del();
            break;
        case EditAction::deleteToLineEnd:
            end(true);
            copy();
            del();
            break;
        case EditAction::cut:
            if (echoMode() == Normal) {
                cut();
            }
            break;
        case EditAction::undo:
            undo();
            break;
        case EditAction::redo:
            redo();
            break;
    }
}

void EditField::keyPressEvent(QKeyEvent* event) {
    if (!isReadOnly() && (sendStepKey(*event) || enterKey(*event))) {
        event->accept();
    } else if (!isReadOnly() && isCommandKey(*event)) {
        event->ignore();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

void EditField::inputMethodEvent(QInputMethodEvent* event) {
    if (isReadOnly()) {
        event->ignore();  // Qt's own field would take it
    } else {
        compose(*event);
    }
}

void EditField::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton) {
        if (!isReadOnly() && QGuiApplication::clipboard()->supportsSelection()) {
            deselect();
            enterClipboard(QClipboard::Selection);
        }
        return;
    }
    QLineEdit::mouseReleaseEvent(event);
}

void EditField::dropEvent(QDropEvent* event) {
    QDragLeaveEvent leave;
    dragLeaveEvent(&leave);
    if (isReadOnly() || !event->mimeData()->hasText()) {
        event->ignore();
        return;
    }
    // Never a move: the source would delete its text although a handler may refuse it here.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    setCursorPosition(cursorPositionAt(event->position().toPoint()));
    enter(event->mimeData()->text());
}

void EditField::contextMenuEvent(QContextMenuEvent* event) {
    QMenu* menu = createStandardContextMenu();
    if (!isReadOnly()) {
        announceEntries(*menu);
    }
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
}

void EditField::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    wheel_.forget();
    sendFocus(kControlEditTextPart, event->reason());
}

void EditField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    sendFocus(kControlFocusNoPart, event->reason());
}

void EditField::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    if (property("fault").toBool()) {
        constexpr QColor kOnLight(0xC0, 0x1C, 0x28);
        constexpr QColor kOnDark(0xFF, 0x7B, 0x72);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().base().color().lightness() > 128 ? kOnLight : kOnDark, 2));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 2, 2);
    }
}

void EditField::wheelEvent(QWheelEvent* event) {
    if (!hasFocus() || isReadOnly()) {
        event->ignore();
        return;
    }
    event->setAccepted(wheel_.turn(OpaqueControlRef::of(this), *event));
}
