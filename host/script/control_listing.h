// What `controls` and --list-controls print.
#pragma once

#include "host/script/listed_controls.h"

#include <cstdio>
#include <string>

namespace script {

/// The window's title and its controls as a tree, one a line: kind, name, command, value, text, state; under it the
/// items of its menu. Behind them each panel. Secrets are dots.
std::string listing(const ListedWindow& window);

/// Prints a listing, its lines safe for a terminal.
void printLines(std::FILE* stream, const std::string& listing);

}  // namespace script
