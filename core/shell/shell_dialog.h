// The shell's place in the print dialog: its handlers on the dialog's buttons and window, the panels' panes, and the
// shell pane with the selector.
#pragma once

#include "core/shell/shell_context.h"

/// Attaches the shell to the dialog that the pane lies in: bundle and handlers on its default and cancel buttons.
void AttachToDialog(ControlRef parentPane, PDEShellContext* context);

/// Gives every panel a hidden pane in the dialog, as large as the panel area. kPMInvalidPDEContext, with a line on
/// standard error, when the shell's nib cannot be used.
OSStatus CreatePanelPanes(PDEShellContext* context);

/// Puts the shell pane into the dialog, with the selector filled and the panels' panes in its container. Returns the
/// platform's status; on failure nothing has been put there.
OSStatus BuildShellPane(PDEShellContext* context);

// The handler for commands on the dialog's window: there is one, however often it is installed.
void InstallWindowHandler(PDEShellContext* context);
void RemoveWindowHandler(PDEShellContext* context);

/// Takes the handlers, the panes and the shell pane out of the dialog again. Returns the status of the last handler's
/// removal, 0 when none was installed.
OSStatus DetachFromDialog(PDEShellContext* context);
