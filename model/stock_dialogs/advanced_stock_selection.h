// The dialog that shows all of a stock at once.
#pragma once

#include "model/stock/stock.h"
#include "model/stock_dialogs/dialog_mode.h"

/// Whose stock is edited: one of the library of named papers, or one of a job.
enum class NamedPaperContext { stockLibrary = 0, office = 1 };

inline constexpr SInt16 kAdvancedStockSelectionOK = 1;
inline constexpr SInt16 kAdvancedStockSelectionCancel = 2;

/// Shows the dialog (nib "AdvancedStockSelection", window "Office" or "StockLibraryStockSelection") until the user ends
/// it. The stock changes on OK only. Returns the status of loading the nib; a dialog that could not be shown counts as
/// cancelled.
OSStatus RunModalAdvancedStockSelection(CFBundleRef bundle, DialogMode mode, JobContext context,
                                        NamedPaperContext namedPaperContext, Stock* stock, SInt16* result);
