// From a Designer file to a window with controls. Private to this folder.
#pragma once

#include "platform/toolbox/Controls.h"

class QString;
class QWidget;

/// Loads PATH.window, which is compiled, or else the Designer file PATH.ui, and makes controls of its widgets; texts
/// come from the bundle's strings table of the nib's name. Null, with the file and the reason, when it cannot be read
/// or does not parse.
QWidget* loadNibWindow(const QString& path, CFBundleRef bundle, const QString& table, QString* reason);

/// What a widget's class says that it is.
ControlKind kindOfClass(const QWidget* widget);
