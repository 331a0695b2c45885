// Any bytes as what the program that looks at documents says, whole and in pieces.
//
// Contract: pages that a document may have, or the reason that there are none, or no report; the pieces change nothing.

#include "driver/worker/page_report.h"

#include "fuzz/fuzz_target.h"

#include <algorithm>

namespace {

struct Believed {
    bool isWhole = false;
    std::vector<Size> sizes;
    std::string reason;

    bool operator==(const Believed&) const = default;
};

Believed read(std::string_view text, std::size_t piece) {
    PageReportReader reader;
    while (!text.empty()) {
        if (!reader.add(text.substr(0, piece))) {
            FUZZ_EXPECT(!reader.isWhole());
            return {};
        }
        text.remove_prefix(std::min(piece, text.size()));
    }
    Believed believed{reader.isWhole(), {}, {}};
    if (const auto pages = reader.isWhole() ? reader.take(&believed.reason) : std::nullopt) {
        believed.sizes = pages->sizes;
    }
    return believed;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const Believed whole = read(text, text.size());
    FUZZ_EXPECT(whole.isWhole == (whole.sizes.empty() != whole.reason.empty()));
    FUZZ_EXPECT(whole.sizes.size() <= static_cast<std::size_t>(kMostPlannedPages));
    FUZZ_EXPECT(std::ranges::all_of(whole.sizes, [](const Size& page) {
        return page.width > 0 && page.width <= kLongestSide && page.height > 0 && page.height <= kLongestSide;
    }));
    FUZZ_EXPECT(read(text, 3) == whole);
    return 0;
}
