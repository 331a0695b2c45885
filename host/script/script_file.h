// Scripts as files.
#pragma once

#include "host/script/script_parser.h"

#include <optional>

namespace script {

/// Reads and parses the file; nothing, with the system's reason, when it cannot be read. What does not parse is told on
/// standard error, one line each with the file, line and column, and stands in the script's errors.
std::optional<Script> readScriptFile(const std::string& path, std::string* reason,
                                     std::span<const std::string_view> ownActions = {});

}  // namespace script
