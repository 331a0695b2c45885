// What the user does in the Paper and Output panel.
#pragma once

#include "panels/paper_output/paper_output_context.h"
#include "platform/toolbox/Events.h"

/// Hits of the pane's controls. Not handled, so that the dialog sees them too.
OSStatus pdeShellPaperOutputEventHandler(EventHandlerCallRef next, EventRef event, void* context);

/// Commands of the pane's menus and buttons. Those of the panel are handled, but for the stock menu's, which it only
/// follows; any other is not.
OSStatus pdeShellPaperOutputCommandHandler(EventHandlerCallRef next, EventRef event, void* context);

/// Runs the fax setup on the context's options and recipients, which are made when there are none.
void RunFaxSetup(_PaperOutputContext* context);
