// Signs that something is wrong with a control. Private to this folder.
#pragma once

#include "platform/toolbox/objects.h"

class QIcon;

/// The sign, as the user's style draws it; made when it is first asked for.
const QIcon& alertSign();

/// Shows the help in the control's widget, behind the reason of its alert if there is one.
void setHelp(OpaqueControlRef& control, const ControlHelp& help);
