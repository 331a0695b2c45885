#include "host/preview/color_curves.h"

#include <cmath>
#include <cstddef>

namespace {

double around(double value, double contrast) {
    return value < 0.5 ? std::pow(2 * value, contrast) / 2 : 1 - std::pow(2 * (1 - value), contrast) / 2;
}

}  // namespace

std::array<ToneCurve, 3> curvesOf(const ColorTones& tones) {
    const double contrast = std::exp2(tones.contrast / 100.0);
    const std::array casts{tones.cyanRed, tones.magentaGreen, tones.yellowBlue};
    std::array<ToneCurve, 3> curves{};
    for (std::size_t color = 0; color < curves.size(); ++color) {
        const double power = std::exp2(-tones.lightness / 100.0 - casts[color] / 200.0);
        for (std::size_t i = 0; i < curves[color].size(); ++i) {
            const double value = static_cast<double>(i) / 255;
            curves[color][i] = static_cast<unsigned char>(std::lround(255 * std::pow(around(value, contrast), power)));
        }
    }
    return curves;
}

double saturationOf(const ColorTones& tones) {
    return 1 + tones.saturation / 100.0;
}
