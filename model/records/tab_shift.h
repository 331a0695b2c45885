// How far the printed image moves away from the tabs of tab stock: kept in whole millimetres, shown in those or in
// tenths of an inch.
#pragma once

#include "model/records/image_shift.h"
#include "model/stock/stock_units.h"

/// The largest shift that may be chosen: 2.0 inches, 51 millimetres. The smallest is 0.
SInt32 MaximumTabShift(StockUnits units);
/// The decimals with which a displayed shift of these units is read.
SInt32 TabShiftDecimals(StockUnits units);

/// Between whole millimetres and a displayed shift.
SInt32 TabShiftFromMillimeters(StockUnits units, SInt32 millimeters);
SInt32 MillimetersFromTabShift(StockUnits units, SInt32 shift);

/// What the dialog offers. The two presets are the same 13 millimetres, read in inches or in millimetres.
enum class TabShiftChoice : SInt32 {
    none = 1,
    halfInch = 2,
    thirteenMillimeters = 3,
    custom = 4,
};
/// The choice that stands for the options where people read these units.
TabShiftChoice TabShiftChoiceOf(const _IS_Options& options, StockUnits units);
/// Puts a choice into the options; `millimeters` is the shift of a custom one.
void SetTabShift(_IS_Options* options, TabShiftChoice choice, SInt32 millimeters);
