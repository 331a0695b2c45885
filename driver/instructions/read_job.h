#pragma once

#include "driver/instructions/job_instructions.h"
#include "platform/printing/PMTicket.h"

/// The kind of the job, and what goes with it: a fax's recipients, a time, notes.
void readJob(PMTicketRef printSettings, JobInstructions* job);
