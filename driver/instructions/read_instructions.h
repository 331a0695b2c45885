// The instructions that tickets hold.
#pragma once

#include "driver/instructions/job_instructions.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"
#include "platform/printing/PMTicket.h"

/// Reads what the panels and the dialog left in the tickets of a session. An item that is missing, of another type, or
/// a number that means nothing is as when nobody chose; lists are put in order, and of exceptions that overlap the
/// later one has the pages.
JobInstructions readInstructions(PMTicketRef printSettings, PMTicketRef pageFormat);

/// Reads the instructions of the same tickets again and again. Lists of recipients and special pages, which may be
/// long, are read when the tickets have other ones.
class InstructionsReader {
public:
    /// Lent until the next call.
    const JobInstructions& read(PMTicketRef printSettings, PMTicketRef pageFormat);
    [[nodiscard]] const JobInstructions& last() const { return job_; }
    /// Another number than before when the last reading gave other instructions than the one before it.
    [[nodiscard]] std::uint64_t version() const { return version_; }

private:
    JobInstructions job_;
    std::uint64_t version_ = 0;
    // The lists that have been read.
    CFRef<CFArrayRef> inserts_;
    CFRef<CFArrayRef> exceptions_;
    CFRef<CFArrayRef> recipients_;
};

/// What kind of job it is, without the rest.
JobKind readJobKind(PMTicketRef printSettings);

/// What a secret is needed for; no other value of this program holds one.
struct JobSecrets {
    std::optional<std::string> passcode;  // of a secure job, as it stands there: empty when it is missing
    std::string creditCard;               // of a fax
    std::string dialingPrefix;            // the same
};
JobSecrets readSecrets(PMTicketRef printSettings);
