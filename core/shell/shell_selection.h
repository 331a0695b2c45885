// Which panel is shown.
#pragma once

#include "core/shell/shell_context.h"

/// The number of the panel that is shown in this dialog; 0 before the first is.
extern SInt16 gCurrentPanel;
/// The number of the panel that was selected last. It outlives the dialog, so that the next one opens there.
extern SInt16 lastTabIndex;

/// Lets the panel that is left write its controls into the tickets, all others read theirs anew, and shows the panel.
/// Selecting the panel that is shown only writes its controls.
void selectPanel(SInt16 number, PDEShellContext* context);

/// The same with the panel after or before the one that is shown, the first following the last; the selector follows.
void SelectNextPanel(PDEShellContext* context);
void SelectPreviousPanel(PDEShellContext* context);
