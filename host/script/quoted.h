// A text as a script would write it.
#pragma once

#include <string>

/// The text in quotation marks: \" \\ \n \t \b are escaped.
std::string quoted(const std::string& text);
