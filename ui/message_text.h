// Other people's texts, in cells and in sentences.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"

#include <initializer_list>

/// Another person's text as it can be shown on one line: what is longer than `longest` code units is cut, with an
/// ellipsis, and characters that break lines or turn the order of their neighbours round become blanks. Empty for null.
CFRef<CFStringRef> CopyTextForOneLine(CFStringRef text, CFIndex longest);

/// The pattern with the arguments in the places of "%1$@", "%2$@" and so on, so that a language may turn their order
/// round. Arguments are shown as texts for one line.
CFRef<CFStringRef> CopyFilledInMessage(CFStringRef pattern, std::initializer_list<CFStringRef> arguments);
