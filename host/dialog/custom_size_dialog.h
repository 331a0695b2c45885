// The window that asks for a paper size of the user's own.
#pragma once

#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"

#include <optional>
#include <string>

/// Begins with the session's paper. The answer is an option of "PageSize" within the printer's limits; nothing when the
/// user gives up, and for a printer without such sizes. `bundle` has the window and its texts.
std::optional<std::string> askCustomSize(CFBundleRef bundle, const PrintSession& session);
