#include "model/stock/stock_columns.h"

#include "model/stock/stock_attributes.h"
#include "model/stock/stock_summary.h"
#include "platform/foundation/CFString.h"

#include <algorithm>
#include <iterator>
#include <numeric>
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
using Key = std::pair<bool, UInt32>;

Key KeyOf(const Stock& paper) {
    const bool isSet = paper.weight() != kTicketValueUnset && !paper.customNameOnly();
    return {!isSet, isSet ? static_cast<UInt32>(paper.weight()) : 0};
}

std::vector<Key> WordKeys(CFBundleRef bundle, const std::vector<Stock>& papers, StockColumn column) {
    std::vector<String> texts;
    std::vector<CFStringRef> lent;
    for (const Stock& paper : papers) {
        texts.push_back(CopyStockColumn(bundle, paper, column));
        lent.push_back(texts.back().get());
    }
    std::vector<UInt32> ranks(lent.size());
    CFStringGetLocalizedRanks(lent.data(), static_cast<CFIndex>(lent.size()), ranks.data());
    std::vector<Key> keys;
    for (std::size_t i = 0; i < lent.size(); ++i) {
        keys.emplace_back(CFStringGetLength(lent[i]) == 0, ranks[i]);
    }
    return keys;
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
    std::vector<Key> own;
    if (column == StockColumn::weight) {
        std::ranges::transform(papers_, std::back_inserter(own), KeyOf);
    } else {
        own = WordKeys(bundle_, papers_, column);
    }
    std::vector<std::pair<Key, std::size_t>> keys;
    for (std::size_t i = 0; i < own.size(); ++i) {
        keys.emplace_back(own[i], i);
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
