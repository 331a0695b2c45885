// The dialog that asks for the description of a paper.
#pragma once

#include "model/stock/stock.h"
#include "model/stock_dialogs/dialog_mode.h"

inline constexpr SInt16 kStockDescriptionOK = 1;
inline constexpr SInt16 kStockDescriptionCancel = 2;

/// Shows the dialog (nib and window "StockDescriptionSetup") until the user ends it. It starts with the stock's
/// description when that is edited, and sets it on OK. Returns the status of loading the nib; a dialog that could not
/// be shown counts as cancelled.
OSStatus RunModalStockDescriptionSetup(CFBundleRef bundle, DialogMode mode, JobContext context, Stock* stock,
                                       SInt16* result);
