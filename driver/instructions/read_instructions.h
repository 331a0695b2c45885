// The instructions that tickets hold.
#pragma once

#include "driver/instructions/job_instructions.h"
#include "platform/printing/PMTicket.h"

/// Reads what the panels and the dialog left in the tickets of a session. An item that is missing, of another type, or
/// a number that means nothing is as when nobody chose; lists are put in order, and of exceptions that overlap the
/// later one has the pages.
JobInstructions readInstructions(PMTicketRef printSettings, PMTicketRef pageFormat);

/// What kind of job it is, without the rest.
JobKind readJobKind(PMTicketRef printSettings);

/// What a secret is needed for; no other value of this program holds one.
struct JobSecrets {
    std::optional<std::string> passcode;  // of a secure job, as it stands there: empty when it is missing
    std::string creditCard;               // of a fax
    std::string dialingPrefix;            // the same
};
JobSecrets readSecrets(PMTicketRef printSettings);
