#include "host/settings/page_range.h"

#include "platform/foundation/CFNumberFormatter.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <vector>

namespace {

struct Pages {
    std::int64_t first;
    std::int64_t last;
};

/// A page number; the fallback for nothing.
std::optional<std::int64_t> readPage(std::string_view text, std::int64_t fallback) {
    if (text.empty()) {
        return fallback;
    }
    if (!std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; })) {
        return std::nullopt;
    }
    std::int64_t page = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), page).ec != std::errc()) {
        return INT64_MAX;  // too large for any document
    }
    return page;
}

std::optional<Pages> readPages(std::string_view text, std::int64_t pageCount) {
    const std::size_t dash = text.find('-');
    const bool saysNothing = text.empty() || text == "-";
    const auto first = readPage(text.substr(0, dash), 1);
    const auto last = dash == std::string_view::npos ? first : readPage(text.substr(dash + 1), pageCount);
    if (saysNothing || !first || !last) {
        return std::nullopt;
    }
    return Pages{*first, *last};
}

/// In ascending order, without overlaps and neighbours.
std::vector<Pages> merged(std::vector<Pages> ranges) {
    std::ranges::sort(ranges, {}, &Pages::first);
    std::vector<Pages> result;
    for (const Pages& range : ranges) {
        if (!result.empty() && range.first <= result.back().last + 1) {
            result.back().last = std::max(result.back().last, range.last);
        } else {
            result.push_back(range);
        }
    }
    return result;
}

PageRange rangeOf(const std::vector<Pages>& ranges) {
    PageRange range{PageRangeFault::none, {}};
    for (const Pages& pages : ranges) {
        range.pages += (range.pages.empty() ? "" : ",") + std::to_string(pages.first);
        if (pages.last != pages.first) {
            range.pages += "-" + std::to_string(pages.last);
        }
        range.count += pages.last - pages.first + 1;
    }
    return range;
}

}  // namespace

PageRange readPageRange(std::string_view written, std::int64_t pageCount) {
    const std::string plain = utf8Text(
        CFRef<CFStringRef>::adopt(CFNumberListCreatePlain(nullptr, makeString(std::string(written)).get())).get());
    std::string_view text = plain;
    std::vector<Pages> ranges;
    for (bool more = true; more;) {
        const std::size_t comma = text.find(',');
        const auto pages = readPages(text.substr(0, comma), pageCount);
        if (!pages) {
            return {PageRangeFault::syntax, {}};
        }
        if (pages->first < 1 || pages->first > pageCount || pages->last > pageCount) {
            return {PageRangeFault::beyondDocument, {}};
        }
        if (pages->last < pages->first) {
            return {PageRangeFault::order, {}};
        }
        ranges.push_back(*pages);
        more = comma != std::string_view::npos;
        text.remove_prefix(more ? comma + 1 : text.size());
    }
    return rangeOf(merged(std::move(ranges)));
}
