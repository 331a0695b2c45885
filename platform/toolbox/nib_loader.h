// From a Designer file to a window with controls. Private to this folder.
#pragma once

#include "platform/toolbox/Controls.h"

class QString;
class QWidget;

/// Loads the file and makes controls of its widgets; texts come from the bundle's strings table of the nib's name.
/// Null, with the reason, when the file cannot be read or does not parse.
QWidget* loadNibWindow(const QString& path, CFBundleRef bundle, const QString& table, QString* reason);

/// What a widget's class says that it is.
ControlKind kindOfClass(const QWidget* widget);
