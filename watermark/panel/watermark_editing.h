// Making, changing and deleting watermarks: what the panel's buttons do.
//
// Each answers with the store, the list and its rows in step, also with what other dialogs have stored meanwhile. What
// cannot be stored (no name, a name that something else is stored under, a file that cannot be written) is told, and a
// name in use asks first; the editor then comes back with what the user has edited. Without an editor, making and
// editing do nothing.
#pragma once

#include "watermark/panel/watermark_controls.h"

/// Lets the user make a watermark, lists it at the end and selects it.
void CreateWatermark(WatermarkContext* context);

/// Lets the user edit the selected watermark. It keeps its place in the list and takes the name that its text or its
/// image has now.
void EditSelectedWatermark(WatermarkContext* context);

/// Asks, and deletes the selected watermark; none is selected then.
void DeleteSelectedWatermark(WatermarkContext* context);
