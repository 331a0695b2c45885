// What the plug-in's lists of rows do alike.
#pragma once

#include "platform/toolbox/DataBrowser.h"
#include "platform/toolbox/Events.h"

#include <vector>

/// What a list shows, whom it tells, and how it is sorted; one without `compare` cannot be.
void SetListCallbacks(ControlRef list, DataBrowserItemDataUPP data, DataBrowserItemNotificationUPP notification,
                      DataBrowserItemCompareUPP compare = nullptr);

/// The rows that are selected, in the order that is shown.
std::vector<DataBrowserItemID> SelectedRows(ControlRef list);

/// Whether a key event is about one of the keys that delete.
bool IsDeleteKey(EventRef event);
