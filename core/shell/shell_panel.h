// The shell: the one panel that the print dialog sees. It hosts the built-in panels and forwards every operation to
// them.
#pragma once

#include "core/features/panel_interface.h"

/// The shell's own seven operations.
///
/// Initialize answers kPMInvalidPDEContext, with a line on standard error, for a session or printer that the plug-in
/// cannot serve; Terminate then undoes what had been done. Terminate must come while the dialog's window lives: it
/// takes the shell's pane out of it.
extern const PDEOperations kShellOperations;
