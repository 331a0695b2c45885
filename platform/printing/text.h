// Between the platform's strings and the byte strings of the C libraries.
#pragma once

#include "platform/foundation/CFRef.h"

#include <string>
#include <string_view>

/// The text in UTF-8; empty for null.
std::string utf8Text(CFStringRef string);
/// A new string of UTF-8 bytes, or of a path; bytes that are not UTF-8 are taken for ISO Latin 1.
CFRef<CFStringRef> makeString(std::string_view bytes);
/// The address of a file.
CFRef<CFURLRef> makeFileURL(const std::string& path);
/// The path of a file address; empty when it is not one.
std::string filePath(CFURLRef url);

/// "SUBJECT: REASON" in one line, control characters made blanks.
std::string errorLine(std::string_view subject, std::string_view reason);
