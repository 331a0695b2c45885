// Any property list as the tickets of a job.
//
// Contract: whatever it holds, instructions keep what everybody who reads them relies on, and they have a plan. What is
// done with pages is the same when it is written and read.

#include "driver/instructions/page_options.h"
#include "driver/instructions/read_instructions.h"
#include "driver/plan/sheet_plan.h"
#include "fuzz/fuzz_target.h"
#include "fuzz/ticket_maker.h"
#include "platform/foundation/CFString.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto items = makeTicket(data, size);
    if (CFGetTypeID(items.get()) != CFDictionaryGetTypeID()) {
        return 0;
    }
    PMTicketRef ticket = 0;
    PMTicketCreate(nullptr, kPDE_PMPrintSettingsKey, &ticket);
    PMTicketSetItems(ticket, static_cast<CFDictionaryRef>(items.get()));
    JobInstructions job = readInstructions(ticket, ticket);
    FUZZ_EXPECT(job == readInstructions(ticket, ticket));
    readSecrets(ticket);
    writePageOptions(job, nullptr, ticket);
    JobInstructions again;
    readPageOptions(ticket, &again);
    FUZZ_EXPECT(again.numberUp == job.numberUp && again.numberUpOrder == job.numberUpOrder);
    FUZZ_EXPECT(again.subset == job.subset && again.isReversed == job.isReversed);
    FUZZ_EXPECT(again.scaling == job.scaling && again.hasBorders == job.hasBorders);
    PMTicketReleaseAndClear(&ticket);

    FUZZ_EXPECT(job.copies >= 1 && job.finishing.pagesPerSubset >= 1);
    FUZZ_EXPECT(std::ranges::is_sorted(job.inserts, {}, &InsertInstruction::page));
    for (std::size_t i = 0; i < job.exceptions.size(); ++i) {
        const PageSpan pages = job.exceptions[i].pages;
        FUZZ_EXPECT(pages.first >= 1 && pages.first <= pages.last);
        FUZZ_EXPECT(i == 0 || job.exceptions[i - 1].pages.last < pages.first);
        FUZZ_EXPECT(std::abs(job.exceptions[i].lightenDarken.value_or(0)) <= 3);
    }
    for (const PageSpan& pages : job.pages) {
        FUZZ_EXPECT(pages.first <= pages.last);
    }
    FUZZ_EXPECT((job.kind == JobKind::fax) == job.fax.has_value());
    // Millions of inserts are in order, but take their time.
    for (InsertInstruction& insert : job.inserts) {
        FUZZ_EXPECT(insert.page >= 0 && insert.sheets >= 0);
        insert.sheets = std::min(insert.sheets, 3);
    }
    planSheets(job, 20);
    return 0;
}
