// The special pages of a job between the panel and the print settings ticket.
#pragma once

#include "model/records/special_page_list.h"
#include "platform/printing/PMTicket.h"

#include <memory>

/// A list as it was last written: the ticket's own item, and the list's revision then.
struct WrittenPages {
    CFRef<CFArrayRef> item;
    std::uint64_t revision = 0;
};

struct SpecialPageRecords {
    ExceptionPageList exceptions;
    InsertList inserts;
    std::unique_ptr<Cover> frontCover;  // null: no such cover
    std::unique_ptr<Cover> backCover;
    std::unique_ptr<Stock> jobStock;  // the paper of the job itself; null when the ticket does not have it
    WrittenPages writtenExceptions;
    WrittenPages writtenInserts;
};

/// Makes the records those of the ticket. What is missing, and what is no special page, is left out. All pages and the
/// job's paper are new objects, also those that have not changed.
void ReadSpecialPages(PMTicketRef ticket, SpecialPageRecords* records);

/// Writes the lists and the covers; the item of an empty list is removed. A list of which the ticket has the last
/// writing still stays: a dialog asks for it whenever the user pauses. Returns the status of the last list's item,
/// which for an empty list is kPMKeyNotFound when there was none.
OSStatus WriteSpecialPages(SpecialPageRecords* records, PMTicketRef ticket);
