// Any property list as the ticket of every record.
//
// Contract: a record that was read writes a ticket that reads as the same record again. A list of exceptions is in
// order and none of them overlaps or is empty; a list of inserts is in order.

#include "fuzz/fuzz_target.h"
#include "fuzz/ticket_maker.h"
#include "model/full_color_options.h"
#include "model/special_page_list.h"

namespace {

template <typename Record>
void readAndWrite(CFDictionaryRef ticket) {
    const auto written = Record(ticket).asTicket();
    FUZZ_EXPECT(CFEqual(Record(written.get()).asTicket().get(), written.get()));
}

template <typename List>
void readAndWriteList(CFArrayRef ticket, List& list) {
    list.setFromTicket(ticket);
    const auto written = list.asTicket();
    List again;
    again.setFromTicket(written.get());
    FUZZ_EXPECT(CFEqual(again.asTicket().get(), written.get()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto ticket = makeTicket(data, size);
    if (CFGetTypeID(ticket.get()) == CFArrayGetTypeID()) {
        const auto* array = static_cast<CFArrayRef>(ticket.get());
        ExceptionPageList exceptions;
        readAndWriteList(array, exceptions);
        for (CFIndex i = 0; i < exceptions.count(); ++i) {
            const ExceptionPage& page = *exceptions.pageAtIndex(i);
            FUZZ_EXPECT(page.startPage() <= page.endPage());
            FUZZ_EXPECT(i == 0 || exceptions.pageAtIndex(i - 1)->endPage() < page.startPage());
        }
        InsertList inserts;
        readAndWriteList(array, inserts);
        for (CFIndex i = 1; i < inserts.count(); ++i) {
            FUZZ_EXPECT(inserts.pageAtIndex(i - 1)->startPage() <= inserts.pageAtIndex(i)->startPage());
        }
    } else if (CFGetTypeID(ticket.get()) == CFDictionaryGetTypeID()) {
        const auto* dictionary = static_cast<CFDictionaryRef>(ticket.get());
        readAndWrite<Stock>(dictionary);
        readAndWrite<Cover>(dictionary);
        readAndWrite<Insert>(dictionary);
        readAndWrite<ExceptionPage>(dictionary);
        readAndWrite<FullColorOptions>(dictionary);
    }
    return 0;
}
