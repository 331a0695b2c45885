// Between the platform's strings and addresses and C++'s strings.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"

#include <string>
#include <string_view>

/// The text in UTF-8; empty for null.
std::string utf8Text(CFStringRef string);
/// A new string of UTF-8 bytes up to the first 0, or of a path: bytes that are not UTF-8 are shown as the characters
/// that ISO Latin 1 has for them.
CFRef<CFStringRef> makeString(std::string_view bytes);
/// The bytes of the data, lent by it; none for null.
std::string_view bytesOf(CFDataRef data);
/// The text as people can read it, though there may be a file's name in it that is not UTF-8.
std::string readable(std::string_view text);

/// The address of a file or folder by its path, which is the file system's bytes.
CFRef<CFURLRef> makeFileURL(const std::string& path, bool isFolder = false);
/// The path of a file address; empty when it is not one.
std::string filePath(CFURLRef url);

/// "SUBJECT: REASON" in one line, control characters made blanks.
std::string errorLine(std::string_view subject, std::string_view reason);
