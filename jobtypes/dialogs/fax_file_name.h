// A file's name in a message.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"

/// The file's name without its folder. The bytes of one that is no UTF-8 are shown as Latin characters.
[[nodiscard]] CFRef<CFStringRef> CopyFileName(CFURLRef file);
