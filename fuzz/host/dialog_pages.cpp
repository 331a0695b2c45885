// Any bytes as the pages that a person asks for in the dialog, of a document of up to 255 pages.
//
// Contract: pages of the document in ascending order, or a fault and nothing else. What is read is the same when it is
// read again, and counts its pages.

#include "fuzz/fuzz_target.h"
#include "host/settings/page_range.h"

#include <charconv>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::int64_t pageCount = data[0];
    const PageRange range = readPageRange({reinterpret_cast<const char*>(data) + 1, size - 1}, pageCount);
    FUZZ_EXPECT((range.fault != PageRangeFault::none) == range.pages.empty());
    FUZZ_EXPECT(range.count >= 0 && range.count <= pageCount && (range.count == 0) == range.pages.empty());
    if (range.pages.empty()) {
        return 0;
    }
    const PageRange again = readPageRange(range.pages, pageCount);
    FUZZ_EXPECT(again.pages == range.pages && again.count == range.count);
    std::int64_t before = 0;
    const char* at = range.pages.data();
    const char* const end = at + range.pages.size();
    while (at < end) {
        std::int64_t page = 0;
        at = std::from_chars(at, end, page).ptr + 1;  // behind a comma or a dash
        FUZZ_EXPECT(page > before && page <= pageCount);
        before = page;
    }
    return 0;
}
