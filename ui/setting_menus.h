// Menus and pop-ups filled from setting maps, and their choice as a ticket value.
//
// An item's reference value is its ticket value; the menu's own (item 0's) is the address of its map.
#pragma once

#include "model/settings/job_context.h"
#include "model/settings/setting_map.h"
#include "platform/toolbox/ToolboxTypes.h"

/// Appends an item for each row of the map and returns their number. The text is that of the row's key; the row of
/// kTicketValueUnset is "PrinterDefault" for the job and "UseJobSetting" for a part of it. The command is `command`, or
/// the row's own when that is 0.
ItemCount PopulateMenuFromMap(CFBundleRef bundle, MenuRef menu, const SettingMap* map, JobContext context,
                              OSType command);

/// Replaces all items of the pop-up's menu in the same way and sets the control's maximum to their number.
ItemCount PopulatePopupButtonFromMap(CFBundleRef bundle, ControlRef popup, const SettingMap* map, JobContext context,
                                     OSType command);

/// Selects the first item with that ticket value; without one the selection stays as it is.
void SetPopupButtonToTicketValue(ControlRef popup, SInt32 value);

/// The ticket value of the selected item; kTicketValueUnset when none is selected.
SInt32 GetPopupButtonTicketValue(ControlRef popup);
