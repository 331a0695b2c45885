// The shell's events: the selector, the dialog's buttons, and commands that reach the dialog's window.
#pragma once

#include "platform/toolbox/Events.h"

/// For the shell's controls and the dialog's window; the user data is the PDEShellContext.
OSStatus pdeShellEventHandler(EventHandlerCallRef next, EventRef event, void* userData);
