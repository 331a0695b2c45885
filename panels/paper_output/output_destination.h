// The trays that a job can be put into.
#pragma once

#include "platform/foundation/CFBundle.h"
#include "platform/toolbox/Controls.h"

/// The ticket value of the tray that the printer chooses itself.
inline constexpr SInt32 kOutputAutomatic = 1;

/// Replaces all items of the pop-up by the PPD's trays that are there; an item's reference value is its ticket value.
/// A tray that came with a finisher has the name that the bundle has for it.
void PopulateOutputDestinationPopup(ControlRef popup, CFBundleRef bundle);
