// The instructions that tickets hold.
#pragma once

#include "driver/instructions/job_instructions.h"
#include "platform/printing/PMTicket.h"

/// Reads what the panels and the dialog left in the tickets of a session. An item that is missing, of another type, or
/// a number that means nothing is as when nobody chose; lists are put in order, and of exceptions that overlap the
/// later one has the pages.
JobInstructions readInstructions(PMTicketRef printSettings, PMTicketRef pageFormat);

/// What a secret is needed for; no other value of this program holds one. Whoever asks wipes what he gets.
struct JobSecrets {
    std::string passcode;       // of a secure job; may be empty, or none
    std::string creditCard;     // of a fax
    std::string dialingPrefix;  // the same
};
JobSecrets readSecrets(PMTicketRef printSettings);
