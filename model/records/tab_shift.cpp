#include "model/records/tab_shift.h"

#include "model/settings/ticket_access.h"

namespace {

constexpr SInt32 kPresetMillimeters = 13;

/// (value × factor ± term) / divisor, cut towards zero; the term goes along with the value's sign.
SInt32 Convert(SInt32 value, int factor, int term, int divisor) {
    const std::int64_t scaled = std::int64_t{value} * factor;
    return static_cast<SInt32>((value < 0 ? scaled - term : scaled + term) / divisor);
}

}  // namespace

SInt32 MaximumTabShift(StockUnits units) {
    return units == StockUnits::inches ? 20 : 51;
}

SInt32 TabShiftDecimals(StockUnits units) {
    return units == StockUnits::inches ? 1 : 0;
}

SInt32 TabShiftFromMillimeters(StockUnits units, SInt32 millimeters) {
    return units == StockUnits::inches ? Convert(millimeters, 10, 13, 25) : millimeters;
}

SInt32 MillimetersFromTabShift(StockUnits units, SInt32 shift) {
    return units == StockUnits::inches ? Convert(shift, 25, 5, 10) : shift;
}

TabShiftChoice TabShiftChoiceOf(const _IS_Options& options, StockUnits units) {
    if (options.option == kTicketValueUnset) {
        return TabShiftChoice::none;
    }
    if (options.x1 == kPresetMillimeters) {
        return units == StockUnits::inches ? TabShiftChoice::halfInch : TabShiftChoice::thirteenMillimeters;
    }
    return TabShiftChoice::custom;
}

void SetTabShift(_IS_Options* options, TabShiftChoice choice, SInt32 millimeters) {
    if (choice == TabShiftChoice::none) {
        options->option = kTicketValueUnset;
        return;
    }
    options->option = 1;
    options->inches = 0;
    options->x1 = choice == TabShiftChoice::custom ? millimeters : kPresetMillimeters;
    options->x2 = options->x1;
}
