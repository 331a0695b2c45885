// The dialog that asks for the width and length of custom paper.
#pragma once

#include "model/stock/stock_units.h"

inline constexpr SInt16 kCustomStockSizeOK = 1;
inline constexpr SInt16 kCustomStockSizeCancel = 2;

/// Shows the dialog (nib "CustomStockSize", window "Custom") until the user ends it. Width and length are in hundredths
/// of a millimetre; kTicketValueUnset starts with the paper that the user's country is used to. They are written on OK
/// only, and are then within the limits of the session's printer (model/stock/media_limits.h), as exact as the units in
/// which they were shown. The units stay as they were left until the process ends.
///
/// paramErr for a null pointer, else the status of loading the nib.
OSStatus RunModalCustomStockSizeDialog(CFBundleRef bundle, SInt16* result, SInt32* width, SInt32* length);

/// The units that the dialog was left with; unset before its first use.
extern StockUnits gCurrentUnits;
