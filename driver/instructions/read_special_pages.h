#pragma once

#include "driver/instructions/job_instructions.h"
#include "platform/printing/PMTicket.h"

/// Covers, inserts, exceptions and separators.
void readSpecialPages(PMTicketRef printSettings, JobInstructions* job);

/// A value of PlexMap, and of the option map of "Duplex"; nothing for another number.
std::optional<Sides> sidesOf(SInt32 value);
