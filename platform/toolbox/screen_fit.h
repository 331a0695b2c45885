// Windows on screens that are smaller than they are. Private to this folder.
#pragma once

#include <QRect>

class QWidget;

/// Prepares a window for being shown. It becomes no larger than its screen: what stands above its last row, which has
/// the buttons, is scrolled then. With a parent, which is shown, it belongs to that for the window manager, and one
/// that nobody has moved yet is over its middle.
void placeOnScreen(QWidget* window, const QWidget* parent);

/// The rectangle, moved as little as it takes to lie in the place; of one that is larger the beginning does.
QRect movedInto(const QRect& place, QRect rect);

/// Qt's offscreen platform has a screen that nobody sees, and that is smaller than most, unless somebody describes one.
bool isScreenSeen();

/// Where a window's content has room on its screen. One that nobody sees has room for all.
QRect roomOnScreen(const QWidget* window);

/// Brings the widget into sight where it lies in an area that scrolls.
void scrollTo(QWidget* widget);
