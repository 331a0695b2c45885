// Menus and pop-ups filled from the options of a PPD main keyword.
//
// An item's text is the option's display text, its reference value the option's ticket value in the main keyword's
// option map, and 0 throughout for a main keyword without a map. An option that the map lacks, a newer printer's, has
// kNoTicketValue: no record could keep it, so its item is disabled and its help says why. The "Custom" that a PPD with
// custom sizes has among its page sizes is kStockSizeCustom.
#pragma once

#include "platform/toolbox/ToolboxTypes.h"

/// Replaces all items of the menu by the options of the list (see ppd_ui_dictionary.h), each with the command code, and
/// returns their number; 0, and nothing done, for a null menu or list.
ItemCount PopulateMenuFromPPDOptions(MenuRef menu, CFArrayRef options, OSType command);

/// The same for a pop-up, whose maximum becomes the number of items; 0 when it has no menu or an argument is null.
ItemCount PopulatePopupButtonFromPPDOptions(ControlRef popup, CFArrayRef options, OSType command);
