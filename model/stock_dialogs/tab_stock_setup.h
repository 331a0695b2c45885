// The dialog that asks how far the image of tab stock is moved to stay clear of the tabs.
#pragma once

#include "model/records/image_shift.h"
#include "model/stock/stock.h"

inline constexpr SInt16 kTabStockSetupOK = 1;
inline constexpr SInt16 kTabStockSetupCancel = 2;

/// Shows the dialog (nib "StockTypeSetupDialogs", window "TabStockSetup"; "TabStockSetupWithModulus" for stock whose
/// number of tabs is known, which it tells) until the user ends it. The options change on OK only; the stock, which has
/// the tabs, does not. Returns the status of loading the nib; a dialog that could not be
/// shown counts as cancelled.
OSStatus RunModalTabStockSetupDialog(CFBundleRef bundle, Stock* stock, _IS_Options* options, SInt16* result);
