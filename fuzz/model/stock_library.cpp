// Any bytes as a file of papers that somebody gave the user.
//
// Contract: a file that is refused gives no papers. Each paper has a name, in the order of these, is found by it, and
// is the same again when it is written and read.

#include "model/stock/stock_library.h"
#include "fuzz/fuzz_target.h"
#include "model/stock/stock_search.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const StockLibrary library = StockLibraryIn(makeData(data, size).get());
    if (library.fault != StockLibraryFault::none && library.fault != StockLibraryFault::newer) {
        FUZZ_EXPECT(library.papers.empty());
        return 0;
    }
    std::vector<const Stock*> papers;
    std::u16string before;
    for (const Stock& paper : library.papers) {
        std::u16string name = FoldedStockText(paper.customName());
        FUZZ_EXPECT(CFStringGetLength(paper.customName()) > 0 && before <= name);
        before = std::move(name);
        papers.push_back(&paper);
    }
    const auto written = CopyStockLibraryData(papers);
    FUZZ_EXPECT(written);
    const StockLibrary again = StockLibraryIn(written.get());
    FUZZ_EXPECT(again.fault == StockLibraryFault::none && again.papers == library.papers);

    StockSearch search(nullptr, library.papers);
    constexpr std::size_t kMostSearches = 8;
    for (std::size_t i = 0; i < std::min(papers.size(), kMostSearches); ++i) {
        FUZZ_EXPECT(std::ranges::count(search.find(papers[i]->customName()), i) == 1);
    }
    return 0;
}
