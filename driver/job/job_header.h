// The instructions in front of a job for the printer's controller: comments among its commands, which a printer that
// does not know them passes over. docs/job-instructions.md lists their names.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Names to values, in their order; a name may come several times.
using Instructions = std::vector<std::pair<std::string, std::string>>;

/// One instruction as a command line of its own: "@PJL COMMENT TPIF name=value" and a line's end. Characters that could
/// end the line, blanks at the value's end and what the commands' character set lacks are escaped as in a URL (%0A).
std::string instructionLine(const std::string& name, const std::string& value);

/// The instruction in a command without its "@PJL "; nothing when it is none.
std::optional<std::pair<std::string, std::string>> readInstruction(std::string_view command);
