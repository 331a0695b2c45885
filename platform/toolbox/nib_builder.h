// From the tree of a nib's window to widgets. Private to this folder.
#pragma once

#include "platform/toolbox/nib_element.h"

#include <functional>

class QWidget;

struct NibBuilding {
    std::function<QString(const QString& key)> text;
    /// Called with each widget when all are there, parents before their children.
    std::function<void(QWidget* widget, const NibElement& element)> made;
};

/// Makes the window; the caller owns it.
QWidget* buildNibWindow(const NibWindowTree& tree, const NibBuilding& building);
