// What the numbers of a job's full colour adjustments (full_color_options.h) mean: the choices of its menus, with the
// words by which the printer's controller hears of them, and the options of a PPD that says them itself.
#pragma once

#include "platform/printing/PMTicket.h"

#include <span>

struct ColorChoice {
    const char* key;          // of its text in the table "Localizable"
    SInt32 ticketValue;       // kTicketValueUnset for the printer's own
    const char* word;         // empty for the printer's own, and for a profile that has a name
    const char* option = "";  // of the PPD; empty for the printer's own, and for profiles
};

std::span<const ColorChoice> RGBProfileChoices();
std::span<const ColorChoice> CMYKProfileChoices();
std::span<const ColorChoice> DestinationProfileChoices();
std::span<const ColorChoice> RenderingChoices();
std::span<const ColorChoice> TrappingChoices();
std::span<const ColorChoice> BlackOverprintChoices();

/// The trapping whose directions are set by the user.
inline constexpr SInt32 kAdjustedTrapping = 1;
