#include "tests/support/gallery/job_pieces.h"

#include "jobtypes/delayed_print.h"
#include "jobtypes/job_type.h"
#include "jobtypes/secure_print.h"
#include "panels/layout/booklet_finishing_dialog.h"

namespace {

/// Runs a dialog on the job type's record.
template <typename Run>
OSStatus runOnJobType(const PieceRecords& records, Run run) {
    JobType job;
    const auto dictionary = job.read(records.ticket);
    const OSStatus status = run(job);
    job.write(dictionary.get(), records.ticket);
    PMTicketSetCFDictionary(records.ticket, kTicketCreator, kJobTypeTicketKey, dictionary.get(), kPMUnlocked);
    return status;
}

}  // namespace

OSStatus runBookletFinishing(const PieceRecords& records) {
    SInt32 foldOption = GetTicketNumber(records.ticket, CFSTR("com.tavro.print.BookletFoldStaple"), 1);
    const OSStatus status = RunModalBookletFinishingDialog(records.bundle, false, &foldOption);
    SetTicketNumber(records.ticket, kTicketCreator, CFSTR("com.tavro.print.BookletFoldStaple"), foldOption);
    return status;
}

OSStatus runDelayedPrint(const PieceRecords& records) {
    return runOnJobType(records,
                        [&](JobType& job) { return RunModalDelayedPrintSetup(records.bundle, &job.delayedPrintTime); });
}

OSStatus runSecurePrint(const PieceRecords& records) {
    return runOnJobType(records, [&](JobType& job) { return RunModalSecurePrintSetup(records.bundle, &job.passcode); });
}
