// What the pieces of the About panel share.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/toolbox/Events.h"
#include "platform/toolbox/Views.h"

#include <array>

/// A window event that counts as kEventWindowClose.
inline constexpr UInt32 kEventWindowEnds = 35;

/// One About panel in one dialog.
struct AboutContext {
    CFBundleRef bundle;  // lent
    CFRef<CFStringRef> title;
    ControlRef hostPane;  // the shell's, from Initialize
    ControlRef pane;      // null until the first Open
    ControlRef logoButton;
    CFStringRef deviceMimicFile;  // lent; null when the printer's configuration is not known
    // While the panel is open, the mouse is watched over the logo button, for the pane and for the button itself.
    RgnHandle trackingRegion;
    std::array<MouseTrackingRef, 2> tracking;
};

/// The pane's handler (user data: the context): the logo button's command, the suite's logo, the cursor over the logo
/// button; and the end of the modal loop when the pane stands in a window of its own.
OSStatus pdeShellAboutEventHandler(EventHandlerCallRef next, EventRef event, void* userData);

/// The handler of the printer's picture (user data: the context).
OSStatus DeviceMimicHandler(EventHandlerCallRef next, EventRef event, void* userData);
