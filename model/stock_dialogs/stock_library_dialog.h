// The window of the user's library of papers.
#pragma once

#include "model/stock/stock.h"

inline constexpr SInt16 kStockLibraryOK = 1;
inline constexpr SInt16 kStockLibraryCancel = 2;

/// Shows the user's papers (nib and window "StockLibrary"), which can be searched, changed, and given to others there,
/// until the user ends it. On OK the stock becomes the paper that is selected, with its name; the job's
/// keeps its size. What was changed in the
/// library stays, also after Cancel. Returns the status of loading the nib; a dialog that could not be shown counts as
/// cancelled.
OSStatus RunModalStockLibrary(CFBundleRef bundle, JobContext context, Stock* stock, SInt16* result);
