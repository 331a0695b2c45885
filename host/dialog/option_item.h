// An option of the PPD as an item of a menu.
#pragma once

#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"
#include "platform/toolbox/Menus.h"

#include <string>

/// Adds the option at the end of the menu; one that needs what is not installed is gray, and says why. `texts` is the
/// program's own bundle.
void appendOption(MenuRef menu, CFStringRef title, const PrintSession& session, const std::string& mainKeyword,
                  const std::string& option, CFBundleRef texts);
