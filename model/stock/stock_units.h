// Sizes of paper as they are kept and as people read them.
//
// A stock keeps its width and length in hundredths of a millimetre. A dialog shows them as whole numbers of a finer
// unit than the one that it names: hundredths of an inch with two decimals, or tenths of a millimetre with one.
#pragma once

#include "platform/foundation/CFBase.h"

enum class StockUnits : SInt32 {
    unset = 0,
    inches = 1,
    millimeters = 2,
};

/// The decimals with which a displayed value of these units is read.
SInt32 StockUnitsDecimals(StockUnits units);

/// Cut, not rounded, to the displayed unit, once inches are found to the tenth of it.
SInt32 DisplayedFromStored(StockUnits units, SInt32 stored);
/// What DisplayedFromStored() gives back as the same displayed value.
SInt32 StoredFromDisplayed(StockUnits units, SInt32 displayed);

/// A displayed value of the other units in these ones, rounded.
SInt32 DisplayedFromOtherUnits(StockUnits units, SInt32 displayed);

/// A length in points, of which an inch has 72, rounded.
SInt32 DisplayedFromPoints(StockUnits units, float points);

/// The units and the paper that a country is used to.
struct StockSizeDefaults {
    StockUnits units;
    SInt32 width;  // hundredths of a millimetre
    SInt32 length;
};
/// Inches and US Letter where the measurement system (of CFLocaleGetValue()) is "U.S.", millimetres and A4 elsewhere.
StockSizeDefaults StockSizeDefaultsOf(CFStringRef measurementSystem);
