// Any bytes as a PDF document.
//
// Contract: pages of a size that a plan can be made for, or a reason. The tree of pages can be made flat, and has as
// many pages then.

#include "driver/pages/document.h"

#include "driver/pages/page_tree.h"
#include "driver/pages/pdf_page.h"
#include "fuzz/memory_file.h"

#include <algorithm>

#include <fcntl.h>

namespace {

std::size_t countPages(QPDF& pdf) {
    std::size_t count = 0;
    walkPages(pdf, [&](QPDFObjectHandle page, InheritedValues&) { count += page.isDictionary(); });
    return count;
}

void checkTree(const std::uint8_t* data, std::size_t size) {
    std::string reason;
    const auto pdf =
        openPDF([&](QPDF& opened) { opened.processMemoryFile("document", reinterpret_cast<const char*>(data), size); },
                &reason);
    FUZZ_EXPECT(pdf);
    try {
        const std::size_t before = countPages(*pdf);
        flattenPages(*pdf);
        FUZZ_EXPECT(countPages(*pdf) == before);
    } catch (const std::exception& error) {
        FUZZ_EXPECT(!reasonOf(error).empty());
    }
}

}  // namespace

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
        checkTree(data, size);
    }
    return 0;
}
