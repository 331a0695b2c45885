// What libebook-contacts does not read in vCards of version 2.1, in a form that it does.
#pragma once

#include <string>
#include <string_view>

/// The card in UTF-8, with each quoted-printable value and each card inside of the card (AGENT) on one line. Bytes that
/// are no UTF-8 are taken for the line's CHARSET or, where it names none, for Windows-1252.
std::string readableText(const std::string& card);

/// Whether a decoded value is UTF-8, its line breaks LF alone.
bool isReadableValue(std::string_view value);

/// A value in that form: what is no UTF-8 is taken for Windows-1252.
std::string readableValue(const std::string& value);
