// Whether a job is printed in color.
#pragma once

#include "model/setting_map.h"
#include "model/ticket_items.h"
#include "platform/printing/PMTicket.h"

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

/// The color that the ticket asks for: in its own item, or by the PPD's color correction, which can turn a job black
/// and white as well. In color without either.
SInt32 ReadOutputColor(PMTicketRef ticket);

/// Asks for it in both. A job in color loses the correction to black and white and keeps any other one.
void WriteOutputColor(SInt32 color, PMTicketRef ticket);
