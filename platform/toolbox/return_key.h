// Return and the Enter of the keypad. Private to this folder.
#pragma once

#include <QKeyEvent>

class QApplication;

/// Either of the two, without Shift and its like.
inline bool isReturn(const QKeyEvent& key) {
    return (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) && !(key.modifiers() & ~Qt::KeypadModifier);
}

/// Return presses a tool button that has the focus, in all windows of the process. Push buttons of dialogs do so by
/// themselves.
void letReturnPressToolButtons(QApplication* application);
