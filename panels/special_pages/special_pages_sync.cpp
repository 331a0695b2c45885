#include "panels/special_pages/special_pages_sync.h"

#include "model/records/sync_covers.h"
#include "model/settings/ppd_access.h"
#include "model/settings/ticket_items.h"
#include "platform/foundation/CFString.h"

namespace {

#define kCreator CFSTR("com.tavro.print")

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

/// The layout panel leaves the front one of two equal covers; the printer's option still says that there is a pair.
bool HasPairOfCovers(PMTicketRef ticket) {
    CFStringRef covers = nullptr;
    PPDGetMainKeywordValue(ticket, CFSTR("JCLCovers"), &covers);
    return CFEqual(covers, CFSTR("BlankFrontBack")) || CFEqual(covers, CFSTR("FrontBack"));
}

}  // namespace

void ReadSpecialPages(PMTicketRef ticket, SpecialPageRecords* records) {
    records->inserts.setFromTicket(ListItem(ticket, kInsertListItem));
    records->exceptions.setFromTicket(ListItem(ticket, kExceptionListItem));
    CFDictionaryRef jobStock = nullptr;
    const OSStatus status = PMTicketGetCFDictionary(ticket, kPMTopLevel, kPMTopLevel, kJobLevelStockItem, &jobStock);
    records->jobStock = status == noErr ? std::make_unique<Stock>(StockOfTicket(jobStock)) : nullptr;
    SyncCovers(ticket, kCoversFromTicket, &records->frontCover, &records->backCover);
    if (records->frontCover && !records->backCover && HasPairOfCovers(ticket)) {
        records->backCover = std::make_unique<Cover>(*records->frontCover);
    }
}

OSStatus WriteSpecialPages(SpecialPageRecords* records, PMTicketRef ticket) {
    WriteList(records->inserts, kInsertListItem, &records->writtenInserts, ticket);
    const OSStatus status = WriteList(records->exceptions, kExceptionListItem, &records->writtenExceptions, ticket);
    SyncCovers(ticket, kCoversToTicket, &records->frontCover, &records->backCover);
    return status;
}
