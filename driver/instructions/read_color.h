// The colour adjustments of a job, in the words of the printer's controller.
#pragma once

#include "driver/instructions/job_instructions.h"
#include "platform/printing/PMTicket.h"

/// What the print settings ask for; none where the colors are the printer's own. A number that has no word here, of
/// another edition, is its own word.
std::vector<ColorInstruction> readColors(PMTicketRef printSettings);

/// The adjustments in numbers that options of the PPD ask for, as a queue or another program sets them.
std::vector<ColorInstruction> readColorOptions(PMTicketRef printSettings);
