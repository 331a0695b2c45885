// Notices in front of the print dialog.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Notices.h"

/// Shows a notice with an OK button; a script's runner answers it when there is nobody at the screen.
void showNotice(CFOptionFlags level, const CFRef<CFStringRef>& header, const CFRef<CFStringRef>& message);
