// The Paper and Output panel, as the shell knows it.
#pragma once

#include "core/features/panel_interface.h"

/// Whether the operations are this panel's.
bool IsPaperOutputPanel(const PDEOperations& operations);
