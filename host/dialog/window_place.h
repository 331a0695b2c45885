// Where the print dialog was on the screen the last time, how large, and what of it was shown.
#pragma once

#include "platform/toolbox/Windows.h"

#include <optional>

struct WindowPlace {
    std::optional<Rect> bounds;  // of the content; nothing when it is not known
    bool hasPreview = true;
};

/// Of a size that is not known the window's own stands in.
WindowPlace rememberedPlace(WindowRef window);
/// Remembers where the window is, and its size. A place that cannot be written is forgotten without a word.
void rememberPlace(WindowRef window, bool hasPreview);
