// How pages are laid on their sheets, in the options that CUPS knows.
#pragma once

#include "driver/instructions/job_instructions.h"
#include "platform/printing/PMTicket.h"

/// Reads the ticket's page options (PMPrinter.h) into the job. Other values than CUPS takes mean nothing.
void readPageOptions(PMTicketRef printSettings, JobInstructions* job);

/// Writes the job's scaling, pages on a side with their order and borders, odd or even pages, and order into the page
/// options; all others stay. What says nothing is written only where `usual`, which may be null, says something: the
/// page options that the printer begins with.
void writePageOptions(const JobInstructions& job, CFDictionaryRef usual, PMTicketRef printSettings);
