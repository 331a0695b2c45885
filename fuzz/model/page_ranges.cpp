// Any text as a page list (UTF-8, or UTF-16 code units when it is none).
//
// Contract: 0 or one of the parser's own errors. Ranges lie between 0 and the limit, and none is empty; as pages they
// are the same, one by one. An error leaves the result alone.

#include "fuzz/fuzz_target.h"
#include "model/records/page_range.h"
#include "platform/foundation/CFString.h"

#include <cstring>

namespace {

constexpr std::size_t kMostPages = 100000;  // that are compared one by one; an open range has millions

CFRef<CFStringRef> makeText(const std::uint8_t* data, std::size_t size) {
    auto text = CFRef<CFStringRef>::adopt(
        CFStringCreateWithBytes(nullptr, data, static_cast<CFIndex>(size), kCFStringEncodingUTF8, false));
    if (!text) {
        std::vector<UniChar> units(size / sizeof(UniChar));
        if (!units.empty()) {
            std::memcpy(units.data(), data, units.size() * sizeof(UniChar));
        }
        text = CFRef<CFStringRef>::adopt(
            CFStringCreateWithCharacters(nullptr, units.data(), static_cast<CFIndex>(units.size())));
    }
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto text = makeText(data, size);
    const std::vector<PageRange> before{{-1, -1}};
    std::vector<PageRange> ranges = before;
    const OSStatus status = CreatePageRangesBySeparatingString(text.get(), true, &ranges);
    if (status != noErr) {
        FUZZ_EXPECT(status >= kPageRangeErrTooLarge && status <= kPageRangeErrOrder);
        FUZZ_EXPECT(ranges == before);
        return 0;
    }
    FUZZ_EXPECT(!ranges.empty());
    std::size_t count = 0;
    for (const PageRange& range : ranges) {
        FUZZ_EXPECT(range.first >= 0 && range.count > 0 && range.first <= kPageNumberLimit - range.count + 1);
        count += static_cast<std::size_t>(range.count);
    }
    if (count <= kMostPages) {
        std::vector<PageRange> pages;
        FUZZ_EXPECT(CreatePageRangesBySeparatingString(text.get(), false, &pages) == noErr && pages.size() == count);
        auto page = pages.begin();
        for (const PageRange& range : ranges) {
            for (SInt32 i = 0; i < range.count; ++i) {
                FUZZ_EXPECT((*page++ == PageRange{range.first + i, 1}));
            }
        }
    }
    return 0;
}
