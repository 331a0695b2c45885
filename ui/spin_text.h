// The text of a spin control: its value in the user's notation, and back.
#pragma once

#include "platform/foundation/CFBase.h"

#include <optional>

struct SpinTextFormat {
    enum class Suffix { none, angle, percent };

    SInt32 decimals = 0;  // 0 to 9; the value is the shown number times 10^decimals
    Suffix suffix = Suffix::none;
};

/// A new string of the value. The angle mark is U+02DA with a NUL character behind it.
CFStringRef CreateSpinText(SInt32 value, const SpinTextFormat& format);

/// The value of a text that a user has edited: 0 for an empty one, digits beyond the decimals are cut off. The suffix
/// and control characters (direction marks, NUL) do not count. Nothing when the text is no number, or has decimals that
/// the format has not, or its value does not fit.
std::optional<SInt32> SpinTextValue(CFStringRef text, const SpinTextFormat& format);
