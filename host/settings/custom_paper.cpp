#include "host/settings/custom_paper.h"

#include "platform/foundation/CFNumberFormatter.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"

#include <charconv>
#include <cmath>
#include <iterator>

namespace {

struct UnitRow {
    LengthUnit unit;
    const char* name;
    double points;  // a unit has
    int decimals;   // that people measure
};
// clang-format off
constexpr UnitRow kUnits[] = {
    // unit                  name  points     decimals
    {LengthUnit::millimeters, "mm", 72 / 25.4, 1},
    {LengthUnit::inches,      "in", 72,        2},
    {LengthUnit::points,      "pt", 1,         0},
};
static_assert(std::size(kUnits) == 3);
// clang-format on

constexpr double kTolerance = 0.005;  // points, by which limits that are shown may differ from the PPD's

const UnitRow& rowOf(LengthUnit unit) {
    return kUnits[static_cast<std::size_t>(unit)];
}

double rounded(double number, LengthRounding rounding) {
    switch (rounding) {
        case LengthRounding::up:
            return std::ceil(number - kTolerance);
        case LengthRounding::down:
            return std::floor(number + kTolerance);
        default:
            return std::round(number);
    }
}

/// As programs write it, whatever the locale.
std::string plainNumber(double number) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed).ptr;
    return {text.data(), end};
}

CFRef<CFNumberFormatterRef> formatter() {
    const auto locale = CFRef<CFLocaleRef>::adopt(CFLocaleCopyCurrent());
    return CFRef<CFNumberFormatterRef>::adopt(
        CFNumberFormatterCreate(nullptr, locale.get(), kCFNumberFormatterDecimalStyle));
}

}  // namespace

std::array<LengthUnit, 3> unitsOfLocale() {
    using enum LengthUnit;
    const auto locale = CFRef<CFLocaleRef>::adopt(CFLocaleCopyCurrent());
    const bool isUS = CFEqual(CFLocaleGetValue(locale.get(), kCFLocaleMeasurementSystem), CFSTR("U.S."));
    return isUS ? std::array{inches, millimeters, points} : std::array{millimeters, inches, points};
}

const char* unitName(LengthUnit unit) {
    return rowOf(unit).name;
}

double inUnit(LengthUnit unit, double points) {
    return points / rowOf(unit).points;
}

double inPoints(LengthUnit unit, double length) {
    return length * rowOf(unit).points;
}

std::string lengthText(LengthUnit unit, double points, LengthRounding rounding) {
    const double steps = std::pow(10, rowOf(unit).decimals);
    const double length = rounded(inUnit(unit, points) * steps, rounding) / steps;
    int decimals = rowOf(unit).decimals;
    while (decimals > 0 &&
           std::round(length * std::pow(10, decimals)) == std::round(length * std::pow(10, decimals - 1)) * 10) {
        --decimals;
    }
    const auto writer = formatter();
    CFNumberFormatterSetFractionDigits(writer.get(), decimals);
    return utf8Text(CFRef<CFStringRef>::adopt(
                        CFNumberFormatterCreateStringWithValue(nullptr, writer.get(), kCFNumberDoubleType, &length))
                        .get());
}

std::optional<double> readLength(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    const std::string typed =
        first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(' ') + 1 - first);
    double length = 0;
    const bool isNumber = CFNumberFormatterGetValueFromString(formatter().get(), makeString(typed).get(), nullptr,
                                                              kCFNumberDoubleType, &length);
    return isNumber && std::isfinite(length) ? std::optional(length) : std::nullopt;
}

std::optional<CustomPaperLimits> customPaperLimits(const Printer& printer) {
    float minWidth = 0;
    float minLength = 0;
    float maxWidth = 0;
    float maxLength = 0;
    if (!PMCopyCustomPaperLimits(printer.ppdPath().c_str(), &minWidth, &minLength, &maxWidth, &maxLength)) {
        return std::nullopt;
    }
    return CustomPaperLimits{{minWidth, maxWidth}, {minLength, maxLength}};
}

LengthFault checkLength(const std::string& text, LengthUnit unit, const PaperSide& limits) {
    const auto length = readLength(text);
    if (!length) {
        return LengthFault::noNumber;
    }
    const double points = inPoints(unit, *length);
    if (points < limits.minimum - kTolerance) {
        return LengthFault::tooSmall;
    }
    return points > limits.maximum + kTolerance ? LengthFault::tooLarge : LengthFault::none;
}

std::string customPaperOption(double width, double length, LengthUnit unit) {
    return "Custom." + plainNumber(width) + "x" + plainNumber(length) +
           (unit == LengthUnit::points ? "" : unitName(unit));
}
