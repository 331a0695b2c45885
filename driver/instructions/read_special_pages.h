#pragma once

#include "driver/instructions/job_instructions.h"
#include "platform/printing/PMTicket.h"

void readCoversAndSeparators(PMTicketRef printSettings, JobInstructions* job);

/// The ticket's lists, which may be null. Of pages that several exceptions have, the last one in the list has them.
std::vector<InsertInstruction> readInserts(CFArrayRef list);
std::vector<ExceptionInstruction> readExceptions(CFArrayRef list);

/// A value of PlexMap, and of the option map of "Duplex"; nothing for another number.
std::optional<Sides> sidesOf(SInt32 value);
