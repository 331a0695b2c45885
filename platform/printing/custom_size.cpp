#include "platform/printing/custom_size.h"

#include <QLocale>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace {

constexpr double kPointsPerInch = 72;

struct Unit {
    std::string_view name;
    double points;
};
// clang-format off
constexpr Unit kUnits[] = {
    // name  points
    {"pt",   1},
    {"in",   kPointsPerInch},
    {"ft",   kPointsPerInch * 12},
    {"mm",   kPointsPerInch / 25.4},
    {"cm",   kPointsPerInch / 2.54},
    {"m",    kPointsPerInch / 0.0254},
};
static_assert(std::size(kUnits) == 6);
// clang-format on

/// Takes a number from the front of the text.
std::optional<double> takeNumber(std::string_view* text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), number);
    if (error != std::errc() || !std::isfinite(number) || number <= 0) {
        return std::nullopt;
    }
    text->remove_prefix(static_cast<std::size_t>(end - text->data()));
    return number;
}

std::string localNumber(double number, double steps) {
    return QLocale().toString(std::round(number * steps) / steps, 'g', 6).toStdString();
}

}  // namespace

double CustomSize::pointsPerUnit() const {
    return std::ranges::find(kUnits, std::string_view(unit), &Unit::name)->points;
}

std::optional<CustomSize> readCustomSize(std::string_view option) {
    static constexpr std::string_view kPrefix = "Custom.";
    if (!option.starts_with(kPrefix)) {
        return std::nullopt;
    }
    option.remove_prefix(kPrefix.size());
    const auto width = takeNumber(&option);
    if (!width || !option.starts_with('x')) {
        return std::nullopt;
    }
    option.remove_prefix(1);
    const auto height = takeNumber(&option);
    const std::string_view unit = option.empty() ? "pt" : option;
    if (!height || std::ranges::find(kUnits, unit, &Unit::name) == std::end(kUnits)) {
        return std::nullopt;
    }
    return CustomSize{*width, *height, std::string(unit)};
}

std::string customSizeText(const CustomSize& size) {
    std::string unit = size.unit;
    if (unit == "pt") {
        unit = QLocale().measurementSystem() == QLocale::ImperialUSSystem ? "in" : "mm";
    }
    const double factor = size.pointsPerUnit() / CustomSize{1, 1, unit}.pointsPerUnit();
    const double steps = unit == "mm" ? 10 : 100;
    return localNumber(size.width * factor, steps) + " × " + localNumber(size.height * factor, steps) + " " + unit;
}
