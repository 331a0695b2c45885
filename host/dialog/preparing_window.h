// The window that is shown while somebody waits for a document.
#pragma once

#include "host/job/document.h"
#include "platform/foundation/CFBundle.h"

/// Waits for a document that is made into a PDF; where that takes more than a moment, in a window with a button that
/// ends the waiting. False when the user did that.
bool waitInWindow(CFBundleRef bundle, OpeningDocument* document);
