// The controls of the color options panel and the record of a job's color adjustments.
#pragma once

#include "model/records/full_color_options.h"
#include "platform/toolbox/Controls.h"

/// Fills the menus, ties sliders, fields and arrows together, and limits what may be typed.
void PrepareColorControls(CFBundleRef bundle, ControlRef pane);

/// Shows the record. What is not set is the printer's own: 0, or the menus' first item. A menu shows nothing for a
/// number that it does not know.
void ShowColorOptions(const FullColorOptions& options, ControlRef pane);

/// Takes into the record what the controls show other than it: what nobody has touched stays what it was. A named
/// profile without a name is not set, and neither is an adjustment by 0.
void TakeColorOptions(ControlRef pane, FullColorOptions* options);

/// Names, and the directions of trapping, are for those choices only that have them.
void EnableColorControls(ControlRef pane);
