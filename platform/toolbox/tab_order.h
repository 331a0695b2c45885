// The order in which the Tab key goes through a window.
#pragma once

#include <QWidget>
#include <QWidgetList>

/// The stops that lie in the widget, itself included, in their order.
QWidgetList tabStopsIn(QWidget* widget);

/// Has stops of one window follow each other; those that were between them come behind.
void orderTabStops(const QWidgetList& stops);

/// The stop behind which the stops of a widget belong that is put into the container: the container's last one, else
/// the one before it. Null when there is none.
QWidget* tabStopBeforeNextIn(QWidget* container);

/// Puts the stops that lie in the widget behind `before`, in the order that they have; null leaves them where they
/// are. Both are in one window.
void putTabStopsBehind(QWidget* before, QWidget* widget);

/// Gives the focus of a window that is about to be shown to its first stop where something can be done: texts that are
/// only read come later.
void focusFirstTabStop(QWidget* window);
