#include "model/stock/stock_units.h"

#include "platform/foundation/CFString.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double kInchHundredthsInMillimeterTenth = 0.3937007874;
constexpr double kMillimeterTenthsInInchHundredth = 2.54;

SInt32 Rounded(double value) {
    constexpr double kLargest = std::numeric_limits<SInt32>::max();
    return static_cast<SInt32>(std::lround(std::clamp(value, -kLargest, kLargest)));
}

}  // namespace

SInt32 StockUnitsDecimals(StockUnits units) {
    return units == StockUnits::inches ? 2 : 1;
}

SInt32 DisplayedFromStored(StockUnits units, SInt32 stored) {
    return (units == StockUnits::inches ? Rounded(stored * kInchHundredthsInMillimeterTenth) : stored) / 10;
}

SInt32 StoredFromDisplayed(StockUnits units, SInt32 displayed) {
    return units == StockUnits::inches ? Rounded(10.0 * displayed * kMillimeterTenthsInInchHundredth)
                                       : Rounded(10.0 * displayed);
}

SInt32 DisplayedFromOtherUnits(StockUnits units, SInt32 displayed) {
    return Rounded(displayed *
                   (units == StockUnits::inches ? kInchHundredthsInMillimeterTenth : kMillimeterTenthsInInchHundredth));
}

SInt32 DisplayedFromPoints(StockUnits units, float points) {
    return Rounded(points * (units == StockUnits::inches ? 100.0 : 254.0) / 72.0);
}

StockSizeDefaults StockSizeDefaultsOf(CFStringRef measurementSystem) {
    return CFEqual(measurementSystem, CFSTR("U.S.")) ? StockSizeDefaults{StockUnits::inches, 21590, 27940}
                                                     : StockSizeDefaults{StockUnits::millimeters, 21000, 29700};
}
