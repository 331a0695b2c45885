// The panels that the bundle brings along.
#pragma once

#include "core/shell/shell_context.h"

/// Finds the panels' getters in the bundle by name, in the order of the selector, and adds a record for each panel
/// whose Prologue agrees. A panel that is missing is passed over without a gap in the numbers; without memory the
/// loading ends.
void LoadBuiltInPanels(PDEShellContext* context);

/// Gives the panels of these getters their numbers, in this order, and loads those that are not there yet; all others
/// are passed over from now on. Names that are none of the plug-in's panels are passed over, too. Null, or a list
/// without a panel, stands for the panels that LoadBuiltInPanels loads.
void ChoosePanels(PDEShellContext* context, CFArrayRef getters);
