// Mouse and keys as a program's hands: real input events, given to the native window so that everything that stands
// between a user and a widget (modal windows, disabled parents, widgets in front) stands here as well.
#pragma once

#include <QPoint>
#include <QString>
#include <Qt>

class QWidget;

/// Brings the widget into view if it can be scrolled to. False when a user cannot reach it: hidden, disabled, without
/// size, or behind a modal window.
bool userReaches(QWidget* widget);
/// A click with the left button. False, and no click, when another widget lies in front there.
bool userClicks(QWidget* widget, QPoint place, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Two clicks in quick succession.
bool userDoubleClicks(QWidget* widget, QPoint place);
/// One click where the widget surely takes it.
bool userClicks(QWidget* widget);
/// A key for whatever has the focus in the widget's window, or in the menu that is open.
void userPresses(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                 const QString& text = {});
/// Moves the focus to the widget as the Tab key does: a click might do more. False when it does not take the focus.
bool userFocuses(QWidget* widget);
