// One option in the text that a filter of the print server gets, without the server's library: loading it takes as long
// as a twentieth of a small job.
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The value of an option in "name=value name=value", as cupsParseOptions reads it: of several the last, "false" for
/// one that stands there as "noname", "true" for one without a value. Nothing when the text, which anybody may have
/// written, does not have it.
std::optional<std::string> optionInText(std::string_view text, std::string_view name);

/// What a print server takes, unless it is told otherwise (MaxCopies in cupsd.conf). Other numbers are somebody's joke.
inline constexpr int kMostCopies = 9999;
