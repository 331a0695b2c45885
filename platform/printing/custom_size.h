// Paper sizes that are asked for by their numbers, as CUPS writes them: "Custom.200x300mm".
#pragma once

#include <optional>
#include <string>
#include <string_view>

struct CustomSize {
    double width;
    double height;
    std::string unit;  // "pt", "in", "ft", "cm", "mm" or "m"

    double pointsPerUnit() const;
};

/// Reads an option of PageSize. Without a unit the numbers are points; nothing for any other option, and for numbers
/// that are not positive.
std::optional<CustomSize> readCustomSize(std::string_view option);

/// As people write it, in the notation of the user's locale: "200 × 300 mm". Points, which nobody has on a ruler,
/// become millimetres or inches.
std::string customSizeText(const CustomSize& size);
