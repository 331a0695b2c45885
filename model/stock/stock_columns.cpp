#include "model/stock/stock_columns.h"

#include "model/stock/stock_attributes.h"
#include "model/stock/stock_library.h"
#include "model/stock/stock_summary.h"
#include "platform/foundation/CFString.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <tuple>
#include <utility>

namespace {

using String = CFRef<CFStringRef>;

String CopyWeight(CFBundleRef bundle, const Stock& paper) {
    const std::u16string words =
        StockAttributeWords(bundle, StockAttributeRowOf(StockAttribute::weight), paper.weight());
    return String::adopt(
        CFStringCreateWithCharacters(kCFAllocatorDefault, words.data(), static_cast<CFIndex>(words.size())));
}

/// Nothing comes last.
using Key = std::tuple<bool, SInt32, std::u16string>;
Key KeyOf(CFBundleRef bundle, const Stock& paper, StockColumn column) {
    if (column == StockColumn::weight) {
        const bool isSet = paper.weight() != kTicketValueUnset && !paper.customNameOnly();
        return {!isSet, isSet ? paper.weight() : 0, {}};
    }
    std::u16string text = FoldedStockText(CopyStockColumn(bundle, paper, column).get());
    const bool isEmpty = text.empty();
    return {isEmpty, 0, std::move(text)};
}

}  // namespace

String CopyStockColumn(CFBundleRef bundle, const Stock& paper, StockColumn column) {
    if (column == StockColumn::name) {
        return String::retain(paper.customName());
    }
    if (column == StockColumn::description) {
        return String::retain(paper.description());
    }
    if (paper.customNameOnly()) {
        return String::retain(CFSTR(""));
    }
    switch (column) {
        case StockColumn::size:
            return GenerateStockPart(bundle, paper, StockPart::size);
        case StockColumn::color:
            return GenerateStockPart(bundle, paper, StockPart::color);
        case StockColumn::type:
            return GenerateStockPart(bundle, paper, StockPart::type);
        default:
            return CopyWeight(bundle, paper);
    }
}

StockOrder::Ranks StockOrder::rank(StockColumn column) const {
    Ranks ranks(papers_.size());
    if (column == StockColumn::name) {  // the library's own
        std::iota(ranks.begin(), ranks.end(), 0U);
        return ranks;
    }
    std::vector<std::pair<Key, std::size_t>> keys;
    keys.reserve(papers_.size());
    for (std::size_t i = 0; i < papers_.size(); ++i) {
        keys.emplace_back(KeyOf(bundle_, papers_[i], column), i);
    }
    std::ranges::sort(keys);
    for (std::size_t i = 1; i < keys.size(); ++i) {
        ranks[keys[i].second] = ranks[keys[i - 1].second] + (keys[i].first == keys[i - 1].first ? 0 : 1);
    }
    return ranks;
}

bool StockOrder::comesBefore(std::size_t one, std::size_t other, StockColumn column) {
    Ranks& ranks = ranks_[static_cast<std::size_t>(column)];
    if (ranks.empty()) {
        ranks = rank(column);
    }
    return ranks[one] < ranks[other];
}
