// Reading a typed page list, against Qt's and qpdf's readers on the same lists; and what an open range costs as pages.

#include "bench/side_by_side.h"
#include "model/records/page_range.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/text.h"

#include <malloc.h>
#include <QPageRanges>
#include <qpdf/QUtil.hh>

#include <string>

namespace {

/// Single pages and ranges in turn, in the syntax that all three readers have: "1,3-5,8,10-12".
std::string makeList(int items) {
    std::string list;
    for (int item = 0, page = 1; item < items; ++item) {
        if (item > 0) {
            list += ',';
        }
        list += std::to_string(page);
        if (item % 2 == 1) {
            page += 2;
            list += '-';
            list += std::to_string(page);
        }
        page += 2;
    }
    return list;
}

std::vector<PageRange> read(CFStringRef text, bool asRanges) {
    std::vector<PageRange> ranges;
    CreatePageRangesBySeparatingString(text, asRanges, &ranges);
    return ranges;
}

void compareReaders(int items, int rounds) {
    const std::string list = makeList(items);
    const auto ours = makeString(list);
    const QString qt = QString::fromStdString(list);
    const auto ranges = read(ours.get(), true);
    const auto pages = read(ours.get(), false);
    if (QPageRanges::fromString(qt).toRangeList().size() != qsizetype(ranges.size()) ||
        QUtil::parse_numrange(list.c_str(), kPageNumberLimit).size() != pages.size()) {
        std::puts("the readers disagree");
    }
    std::size_t read1 = 0;  // so that nothing is optimised away
    char title[64];
    std::snprintf(title, sizeof title, "%d items as ranges", items);
    bench::compare(
        title, rounds, "ours", [&] { read1 += read(ours.get(), true).size(); }, "Qt",
        [&] { read1 += std::size_t(QPageRanges::fromString(qt).toRangeList().size()); });
    std::snprintf(title, sizeof title, "%d items as pages", items);
    bench::compare(
        title, rounds, "ours", [&] { read1 += read(ours.get(), false).size(); }, "qpdf",
        [&] { read1 += QUtil::parse_numrange(list.c_str(), kPageNumberLimit).size(); });
    std::snprintf(title, sizeof title, "  their elements alone, %zu", pages.size());
    const auto fill = [&](auto element) {
        std::vector<decltype(element)> filled;
        for (const PageRange& page : pages) {
            if constexpr (std::is_same_v<decltype(element), int>) {
                filled.push_back(page.first);
            } else {
                filled.push_back(page);
            }
        }
        read1 += filled.size();
    };
    bench::compare(
        title, rounds, "ours", [&] { fill(PageRange{}); }, "int", [&] { fill(0); });
    if (read1 == 0) {
        std::puts("nothing was read");
    }
}

}  // namespace

int main() {
    compareReaders(10, 2001);
    compareReaders(1000, 501);
    compareReaders(100000, 15);

    const auto open = makeString("7-");
    const std::size_t before = mallinfo2().hblkhd + mallinfo2().uordblks;
    std::vector<PageRange> pages;
    const double time = bench::microseconds([&] { pages = read(open.get(), false); });
    const std::size_t used = mallinfo2().hblkhd + mallinfo2().uordblks - before;
    std::printf("\"7-\" as pages: %zu in %.0f ms, %.1f bytes a page\n", pages.size(), time / 1000,
                double(used) / double(pages.size()));
}
