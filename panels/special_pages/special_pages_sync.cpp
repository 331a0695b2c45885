#include "panels/special_pages/special_pages_sync.h"

#include "model/sync_covers.h"
#include "platform/foundation/CFString.h"

namespace {

#define kCreator CFSTR("com.tavro.print")
#define kInsertListKey CFSTR("com.tavro.print.SpecialPages.InsertList")
#define kExceptionListKey CFSTR("com.tavro.print.SpecialPages.ExceptionList")
#define kJobStockKey CFSTR("com.tavro.print.JobLevelStock")

/// Lent by the ticket; null when there is none.
CFArrayRef ListItem(PMTicketRef ticket, CFStringRef key) {
    CFArrayRef array = nullptr;
    return PMTicketGetCFArray(ticket, kPMTopLevel, kPMTopLevel, key, &array) == noErr ? array : nullptr;
}

OSStatus WriteList(const SpecialPageList& list, CFStringRef key, WrittenPages* written, PMTicketRef ticket) {
    const bool isWritten = written->item && written->item.get() == ListItem(ticket, key);
    if (isWritten && written->revision == list.revision()) {
        return noErr;
    }
    const auto array = list.asTicket();
    const OSStatus status = array ? PMTicketSetCFArray(ticket, kCreator, key, array.get(), kPMUnlocked)
                                  : PMTicketReleaseItem(ticket, kPMTopLevel, key);
    *written = {CFRef<CFArrayRef>::retain(ListItem(ticket, key)), list.revision()};
    return status;
}

}  // namespace

void ReadSpecialPages(PMTicketRef ticket, SpecialPageRecords* records) {
    records->inserts.setFromTicket(ListItem(ticket, kInsertListKey));
    records->exceptions.setFromTicket(ListItem(ticket, kExceptionListKey));
    CFDictionaryRef jobStock = nullptr;
    const OSStatus status = PMTicketGetCFDictionary(ticket, kPMTopLevel, kPMTopLevel, kJobStockKey, &jobStock);
    records->jobStock = status == noErr ? std::make_unique<Stock>(jobStock) : nullptr;
    SyncCovers(ticket, kCoversFromTicket, &records->frontCover, &records->backCover);
}

OSStatus WriteSpecialPages(SpecialPageRecords* records, PMTicketRef ticket) {
    WriteList(records->inserts, kInsertListKey, &records->writtenInserts, ticket);
    const OSStatus status = WriteList(records->exceptions, kExceptionListKey, &records->writtenExceptions, ticket);
    SyncCovers(ticket, kCoversToTicket, &records->frontCover, &records->backCover);
    return status;
}
