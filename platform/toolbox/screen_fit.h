// Windows on screens that are smaller than they are. Private to this folder.
#pragma once

class QWidget;

/// Prepares a window for being shown. It becomes no larger than its screen: what stands above its last row, which has
/// the buttons, is scrolled then. With a parent, which is shown, it belongs to that for the window manager, and one
/// that nobody has moved yet is over its middle.
void placeOnScreen(QWidget* window, const QWidget* parent);
