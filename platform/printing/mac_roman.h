// Texts of a PPD in the form in which the compiled-PPD library hands them out.
#pragma once

#include "platform/foundation/CFBase.h"

#include <string_view>
#include <vector>

/// A byte string whose first byte is the number of bytes that follow.
using PPDByteString = std::vector<UInt8>;

/// The UTF-8 text in Mac Roman. A character that Mac Roman lacks becomes its nearest spelling ("é" its own code, "ő"
/// an "o", "×" an "x"). A text with one that has no spelling, as those of other scripts, is kept in UTF-8 instead,
/// behind kPPDTextIsUTF8. A '<' before a hexadecimal digit becomes "<3C>", because readers decode hexadecimal
/// substrings. What is longer than 255 bytes is cut, never inside such an escape or a character.
PPDByteString ppdByteString(std::string_view utf8);
