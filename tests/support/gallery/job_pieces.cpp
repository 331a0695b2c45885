#include "tests/support/gallery/job_pieces.h"

#include "jobtypes/delayed_print.h"
#include "jobtypes/fax_options.h"
#include "jobtypes/job_type.h"
#include "jobtypes/lan_fax_setup.h"
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

/// What the ticket does not have is not put there by a dialog that was cancelled.
OSStatus runLANFax(const PieceRecords& records) {
    CFDictionaryRef stored = nullptr;
    PMTicketGetCFDictionary(records.ticket, kPMTopLevel, kPMTopLevel, kFaxOptionsTicketKey, &stored);
    const auto options =
        stored != nullptr
            ? CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutableCopy(kCFAllocatorDefault, 0, stored))
            : CreateRecordDictionary();
    CFArrayRef recipients = nullptr;
    PMTicketGetCFArray(records.ticket, kPMTopLevel, kPMTopLevel, kFaxRecipientListTicketKey, &recipients);
    FaxRecipientList list(recipients);
    RunModalLANFaxSetup(records.bundle, options.get(), &list);
    if (stored != nullptr || CFDictionaryGetCount(options.get()) > 0) {
        PMTicketSetCFDictionary(records.ticket, kTicketCreator, kFaxOptionsTicketKey, options.get(), kPMUnlocked);
    }
    if (recipients != nullptr || list.count() > 0) {
        PMTicketSetCFArray(records.ticket, kTicketCreator, kFaxRecipientListTicketKey, list.toTicket().get(),
                           kPMUnlocked);
    }
    return noErr;
}

OSStatus runSecurePrint(const PieceRecords& records) {
    return runOnJobType(records, [&](JobType& job) { return RunModalSecurePrintSetup(records.bundle, &job.passcode); });
}
