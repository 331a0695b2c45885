// Any bytes as a PDF document.
//
// Contract: pages of a size that a plan can be made for, or a reason.

#include "driver/pages/document.h"

#include "fuzz/memory_file.h"

#include <algorithm>

#include <fcntl.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int file = open(memoryFile(data, size).c_str(), O_RDONLY | O_CLOEXEC);
    memoryFile(data, size);
    std::string reason;
    const auto pages = readDocument(file, &reason);
    FUZZ_EXPECT(pages.has_value() == reason.empty());
    if (pages) {
        FUZZ_EXPECT(!pages->sizes.empty() && pages->sizes.size() <= std::size_t(kMostPlannedPages));
        FUZZ_EXPECT(std::ranges::all_of(pages->sizes, [](const Size& page) {
            return page.width > 0 && page.width <= kLongestSide && page.height > 0 && page.height <= kLongestSide;
        }));
    }
    return 0;
}
