// Printing in color or in black and white. The maker's panel keeps the choice in an item of its own; the printer is
// told by its color correction, which has other uses, too. The item has the last word, when the job is made.
#pragma once

#include "host/settings/print_session.h"

/// Writes the item into print settings whose color correction prints black and white, unless they have it: the panel
/// begins with it.
void writeOutputColor(PMTicketRef printSettings);

/// Whether the printer can be told to print in black and white.
bool offersBlackAndWhite(const PPDChoices& choices);

/// The PPD's main keyword of color corrections.
#define kColorCorrectionKeyword CFSTR("JCLColorCorrection")

/// The color correction that a job needs for what the item says; null when that of the session's settings can stay. Any
/// goes with color but the one to black and white, and with settings that have no item.
CFStringRef findOutputColorCorrection(const PrintSession& session);
