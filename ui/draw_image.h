// Pictures on panes.
#pragma once

#include "platform/toolbox/ToolboxTypes.h"

/// Answers a draw event: paints the picture file of the plug-in's resources at its natural size, its top left corner
/// on the control's. The control's rectangle is erased first unless `keepBackground` is set. A null or unknown name
/// draws no picture, and nothing happens outside the control's draw event.
void DrawImage(CFStringRef fileName, ControlRef control, Boolean keepBackground);
