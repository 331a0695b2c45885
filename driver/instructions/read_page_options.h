// How pages are laid on their sheets, in the options that CUPS knows.
#pragma once

#include "driver/instructions/job_instructions.h"
#include "platform/printing/PMTicket.h"

/// Reads the ticket's page options (PMPrinter.h) into the job. Other values than CUPS takes mean nothing.
void readPageOptions(PMTicketRef printSettings, JobInstructions* job);
