// What `controls` and --list-controls print.
#pragma once

#include "host/script/stage.h"

#include <cstdio>

namespace script {

/// The window's title and all its controls as a tree, one a line: kind, name, command, value, text, state; under it the
/// items of its menu. Secrets are dots.
std::string listWindow(WindowRef window);

/// Every panel of the window, each shown through the selector first, and before them the window's other controls.
std::string listPanels(WindowRef window);

/// Prints a listing, its lines safe for a terminal.
void printLines(std::FILE* stream, const std::string& listing);

}  // namespace script
