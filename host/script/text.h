// Short words for crossing between the platform's strings and C++'s.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"

#include <string>

/// The text in UTF-8; empty for null.
std::string utf8(CFStringRef string);

/// A string of UTF-8 text, or of a file's name, which need not be UTF-8 and is made readable.
CFRef<CFStringRef> cfString(const std::string& text);

/// The text as people can read it, though there may be a file's name in it that is not UTF-8.
std::string readable(const std::string& text);

/// The address of a file or folder by its path.
CFRef<CFURLRef> fileURL(const std::string& path, bool isFolder = false);

/// The path of a file's address.
std::string pathOf(CFURLRef url);

/// The text in quotation marks, as a script would write it: \" \\ \n \t \b are escaped.
std::string quoted(const std::string& text);
