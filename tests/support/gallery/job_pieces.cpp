#include "tests/support/gallery/job_pieces.h"

#include "jobtypes/dialogs/delayed_print.h"
#include "jobtypes/dialogs/fax_ab_picker.h"
#include "jobtypes/dialogs/fax_cover_setup.h"
#include "jobtypes/dialogs/fax_list_editing.h"
#include "jobtypes/dialogs/lan_fax_setup.h"
#include "jobtypes/dialogs/secure_print.h"
#include "jobtypes/records/fax_options.h"
#include "jobtypes/records/job_type.h"
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

/// Runs a dialog on the options and the recipients of a fax. What the ticket does not have is not put there by one that
/// was cancelled.
template <typename Run>
OSStatus runOnFax(const PieceRecords& records, Run run) {
    CFDictionaryRef stored = nullptr;
    PMTicketGetCFDictionary(records.ticket, kPMTopLevel, kPMTopLevel, kFaxOptionsTicketKey, &stored);
    const auto options =
        stored != nullptr
            ? CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutableCopy(kCFAllocatorDefault, 0, stored))
            : CreateRecordDictionary();
    CFArrayRef recipients = nullptr;
    PMTicketGetCFArray(records.ticket, kPMTopLevel, kPMTopLevel, kFaxRecipientListTicketKey, &recipients);
    FaxRecipientList list(recipients);
    run(options.get(), &list);
    if (stored != nullptr || CFDictionaryGetCount(options.get()) > 0) {
        PMTicketSetCFDictionary(records.ticket, kTicketCreator, kFaxOptionsTicketKey, options.get(), kPMUnlocked);
    }
    if (recipients != nullptr || list.count() > 0) {
        PMTicketSetCFArray(records.ticket, kTicketCreator, kFaxRecipientListTicketKey, list.toTicket().get(),
                           kPMUnlocked);
    }
    return noErr;
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

OSStatus runFaxAddressBook(const PieceRecords& records) {
    return runOnFax(records, [&](CFMutableDictionaryRef, FaxRecipientList* list) {
        FaxListContext context{.bundle = records.bundle};
        const FaxListScope scope(&context);
        RunModalFaxABPicker(records.bundle, list);
    });
}

OSStatus runFaxCoverSheet(const PieceRecords& records) {
    return runOnFax(records, [&](CFMutableDictionaryRef options, FaxRecipientList* list) {
        RunModalFaxCoverSheetSetup(records.bundle, options, list);
    });
}

OSStatus runLANFax(const PieceRecords& records) {
    return runOnFax(records, [&](CFMutableDictionaryRef options, FaxRecipientList* list) {
        RunModalLANFaxSetup(records.bundle, options, list);
    });
}

OSStatus runSecurePrint(const PieceRecords& records) {
    return runOnJobType(records, [&](JobType& job) { return RunModalSecurePrintSetup(records.bundle, &job.passcode); });
}
