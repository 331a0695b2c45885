// Texts of others on a terminal: what a printer, a file or a person is called must not forge lines or colour them.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

/// Whether a UTF-16 code unit does something to a terminal, or to the order of what follows.
bool isTerminalCode(char16_t code);

/// The text, which is UTF-8, for one line of a terminal: line ends, control characters and those that turn the order of
/// what follows become blanks, bytes that are no UTF-8 the replacement character. Letters stay as they are.
std::string terminalText(std::string_view text);

/// Writes the text as one line.
void printLine(std::FILE* stream, std::string_view text);
