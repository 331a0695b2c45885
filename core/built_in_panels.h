// The panels that the bundle brings along.
#pragma once

#include "core/shell_context.h"

/// Finds the panels' getters in the bundle by name, in the order of the selector, and adds a record for each panel
/// whose Prologue agrees. A panel that is missing is passed over without a gap in the numbers; without memory the
/// loading ends.
void LoadBuiltInPanels(PDEShellContext* context);
