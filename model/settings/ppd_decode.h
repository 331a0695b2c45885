// Hexadecimal substrings of PPD texts: "Letter<20>Size" means "Letter Size".
#pragma once

#include <cstddef>

/// Decodes the zero-terminated text in place and returns its new length, without the zero.
///
/// '<' followed by a hexadecimal digit opens a substring; its first unbroken run of digits becomes bytes (an odd last
/// digit is dropped), and everything up to the next '>', and all '>' that follow it at once, is skipped: "<41 42>" is
/// one byte. Every other '<' stands for itself.
std::size_t ppd_decode(char* text);
