// Printing in color or in black and white. The panels keep the choice in an item of its own; the printer is told by its
// color correction, which has other uses, too. The item has the last word, when the job is made.
#pragma once

#include "driver/instructions/job_instructions.h"
#include "platform/printing/PMPrinter.h"

/// Whether the printer can be told to print in black and white.
bool offersBlackAndWhite(PMPrinter printer);

/// Chooses the color correction that print settings need for what was asked for, if the printer has it. One that can
/// stay stays.
void chooseColorCorrection(PMPrinter printer, OutputColor asked, PMTicketRef printSettings);
