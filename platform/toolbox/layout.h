// Layouts of widgets that have not been shown. Private to this folder.
#pragma once

class QWidget;

/// Gives the widget and everything in it its place, as showing it would: Qt leaves the layouts of a hidden widget
/// alone, but its bounds are read before it is shown.
void activateLayouts(QWidget* widget);
