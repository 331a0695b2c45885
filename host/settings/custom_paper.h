// A paper size of the user's own, in the unit that it is measured in.
#pragma once

#include "host/settings/printer.h"

#include <array>
#include <optional>
#include <string>

enum class LengthUnit { millimeters, inches, points };

/// All of them, first what the user's country is used to.
std::array<LengthUnit, 3> unitsOfLocale();

/// As an option of "PageSize" and people write it: "mm", "in" or "pt".
const char* unitName(LengthUnit unit);

/// Points in other units; back from there.
double inUnit(LengthUnit unit, double points);
double inPoints(LengthUnit unit, double length);

/// A length in the notation of the user's locale, as exact as people measure. The limits of what may be typed are
/// rounded inwards.
enum class LengthRounding { nearest, up, down };
std::string lengthText(LengthUnit unit, double points, LengthRounding rounding = LengthRounding::nearest);

/// The number that was typed, in the notation of any script.
std::optional<double> readLength(const std::string& text);

/// Points.
struct PaperSide {
    double minimum;
    double maximum;
};
struct CustomPaperLimits {
    PaperSide width;
    PaperSide length;
};
/// Nothing for a printer that has no sizes of the user's own.
std::optional<CustomPaperLimits> customPaperLimits(const Printer& printer);

enum class LengthFault { none, noNumber, tooSmall, tooLarge };
/// What is wrong with a length that was typed in the unit.
LengthFault checkLength(const std::string& text, LengthUnit unit, const PaperSide& limits);

/// The option of "PageSize": "Custom.200x300mm".
std::string customPaperOption(double width, double length, LengthUnit unit);
