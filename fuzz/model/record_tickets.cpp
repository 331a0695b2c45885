// Any property list as the ticket of every record.
//
// Contract: a record that was read writes a ticket that reads as the same record again. Inserts are in order; so are
// exceptions, none of which overlaps another or is empty, and the one that came last has all its pages.

#include "fuzz/fuzz_target.h"
#include "fuzz/ticket_maker.h"
#include "model/records/full_color_options.h"
#include "model/records/special_page_list.h"

namespace {

template <typename... Records>
void checkRecords(CFDictionaryRef ticket) {
    const auto isStable = [](const auto& written, const auto& again) { return CFEqual(written.get(), again.get()); };
    FUZZ_EXPECT((isStable(Records(ticket).asTicket(), Records(Records(ticket).asTicket().get()).asTicket()) && ...));
}

template <typename List>
void checkList(CFArrayRef ticket, List& list) {
    list.setFromTicket(ticket);
    const auto written = list.asTicket();
    List again;
    again.setFromTicket(written.get());
    FUZZ_EXPECT(CFEqual(again.asTicket().get(), written.get()));
    for (CFIndex i = 1; i < list.count(); ++i) {
        FUZZ_EXPECT(list.pageAtIndex(i - 1)->startPage() <= list.pageAtIndex(i)->startPage());
    }
}

void checkExceptions(CFArrayRef ticket) {
    ExceptionPageList list;
    checkList(ticket, list);
    const void* element = CFArrayGetValueAtIndex(ticket, CFArrayGetCount(ticket) - 1);
    const bool isPage = CFGetTypeID(element) == CFDictionaryGetTypeID();
    const ExceptionPage last(isPage ? static_cast<CFDictionaryRef>(element) : nullptr);
    bool isLastWhole = !isPage || last.endPage() < last.startPage();
    for (CFIndex i = 0; i < list.count(); ++i) {
        const ExceptionPage& page = *list.pageAtIndex(i);
        FUZZ_EXPECT(page.startPage() <= page.endPage());
        FUZZ_EXPECT(i == 0 || list.pageAtIndex(i - 1)->endPage() < page.startPage());
        isLastWhole = isLastWhole || (page.startPage() == last.startPage() && page.endPage() == last.endPage());
    }
    FUZZ_EXPECT(isLastWhole);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto ticket = makeTicket(data, size);
    if (CFGetTypeID(ticket.get()) == CFArrayGetTypeID()) {
        InsertList inserts;
        checkList(static_cast<CFArrayRef>(ticket.get()), inserts);
        checkExceptions(static_cast<CFArrayRef>(ticket.get()));
    } else if (CFGetTypeID(ticket.get()) == CFDictionaryGetTypeID()) {
        checkRecords<Stock, Cover, Insert, ExceptionPage, FullColorOptions>(static_cast<CFDictionaryRef>(ticket.get()));
    }
    return 0;
}
