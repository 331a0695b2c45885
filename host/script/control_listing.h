// What `controls` and --list-controls print.
#pragma once

#include "host/script/stage.h"

namespace script {

/// The window's title and all its controls as a tree, one a line: kind, name, command, value, text, state; under it the
/// items of its menu. Secrets are dots.
std::string listWindow(WindowRef window);

/// Every panel of the window, each shown through the selector first, and before them the window's other controls.
std::string listPanels(WindowRef window);

}  // namespace script
