// Whether a job is printed in color.
#pragma once

#include "model/settings/setting_map.h"
#include "model/settings/ticket_items.h"

#include <iterator>

// clang-format off
inline constexpr SettingMap OutputColorMap[] = {
    // key                      value                   command
    {"OutputBlackAndWhite",     kOutputInBlackAndWhite, 0},
    {"OutputColor",             kOutputInColor,         0},
    {},
};
static_assert(std::size(OutputColorMap) == 2 + 1);
// clang-format on
