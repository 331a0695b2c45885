// What adjusted colors look like.
#pragma once

#include "driver/job/printer_abilities.h"
#include "platform/drawing/PixelCanvas.h"

#include <array>

/// As the PPD's code has them: black and white stay, contrast bends the tones around their middle, lightness and the
/// casts raise them as powers.
std::array<ToneCurve, 3> curvesOf(const ColorTones& tones);

/// 1 for colors as they are, 0 for gray.
double saturationOf(const ColorTones& tones);
