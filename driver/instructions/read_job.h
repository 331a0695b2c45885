#pragma once

#include "driver/instructions/job_instructions.h"
#include "platform/printing/PMTicket.h"

#include <vector>

/// The kind of the job, and what goes with it: a fax's options, a time, notes.
void readJob(PMTicketRef printSettings, JobInstructions* job);

/// Of a ticket's list, which may be null.
std::vector<FaxRecipientInstruction> readFaxRecipients(CFArrayRef list);
