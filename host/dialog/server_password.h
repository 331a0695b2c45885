// The window that asks for the password of a print server.
#pragma once

#include "platform/foundation/CFBundle.h"

#include <functional>

/// From now on, whoever talks to a print server that wants a password asks for it in a window. `bundle` gives the
/// bundle with the window and its texts, once the toolbox is open; null when no window can be shown.
void askServerPasswordsInWindows(std::function<CFBundleRef()> bundle);
