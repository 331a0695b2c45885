// The tabs above the maker's panels, where the printer has more than one extension of the plug-in.
#pragma once

#include "host/dialog/plugin_host.h"
#include "platform/toolbox/Events.h"

class ExtensionTabs {
public:
    /// The dialog's window and the plug-in must outlive this.
    ExtensionTabs(WindowRef window, PluginHost& plugin);

    /// The extensions of the session that has begun; tabs for one alone are hidden.
    void fill();
    /// Shows what the user has chosen.
    void choose();

private:
    static OSStatus handleCommand(EventHandlerCallRef next, EventRef event, void* self);
    /// Shows the panel behind the one that is shown or, with -1, before it, if it is in another extension.
    bool step(SInt32 steps) const;

    WindowRef window_;
    PluginHost& plugin_;
};
