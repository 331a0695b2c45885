#include "model/stock/stock_search.h"

#include "model/stock/stock_attributes.h"
#include "model/stock/stock_library.h"
#include "model/stock/stock_summary.h"
#include "platform/foundation/CFString.h"

#include <algorithm>

namespace {

constexpr int kSummaryParts = 3;  // size, color, type; attributes follow

std::vector<std::u16string> WordsIn(CFStringRef typed) {
    std::vector<std::u16string> words;
    const std::u16string text = FoldedStockText(typed);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(u' ', at), text.size());
        if (end > at) {
            words.push_back(text.substr(at, end - at));
        }
        at = end + 1;
    }
    return words;
}

}  // namespace

/// Most papers of a library share their words, and each is looked up once.
const std::u16string& StockSearch::wordsOf(int part, SInt32 value, const Stock& paper) {
    const bool isOwnSize = part == 0 && value == kStockSizeCustom;
    const auto [row, isNew] =
        words_.try_emplace({part, value, isOwnSize ? paper.width() : 0, isOwnSize ? paper.length() : 0});
    if (isNew && part >= kSummaryParts) {
        const StockAttributeRow& attribute = StockAttributes()[static_cast<std::size_t>(part - kSummaryParts)];
        const std::u16string words = StockAttributeWords(bundle_, attribute, value);
        const auto text = CFRef<CFStringRef>::adopt(
            CFStringCreateWithCharacters(nullptr, words.data(), static_cast<CFIndex>(words.size())));
        row->second = FoldedStockText(text.get());
    } else if (isNew) {
        Stock one(nullptr);
        part == 0 ? one.setSize(value) : part == 1 ? one.setColor(value) : one.setType(value);
        if (isOwnSize) {
            one.setWidth(paper.width());
            one.setLength(paper.length());
        }
        row->second = FoldedStockText(GenerateStockSummary(bundle_, JobContext::insert, one, CFSTR(" ")).get());
    }
    return row->second;
}

void StockSearch::prepare() {
    texts_.reserve(papers_.size());
    for (const Stock& paper : papers_) {
        std::u16string text;
        for (const CFStringRef own :
             {paper.customName(), paper.description(), paper.comment(), paper.customColor(), paper.customType()}) {
            if (CFStringGetLength(own) > 0) {
                text += FoldedStockText(own) + u'\n';
            }
        }
        int part = 0;
        for (const SInt32 value : {paper.size(), paper.color(), paper.type()}) {
            text += wordsOf(part++, value, paper) + u'\n';
        }
        for (const StockAttributeRow& row : StockAttributes()) {
            text += wordsOf(part++, StockAttributeOf(paper, row), paper) + u'\n';
        }
        texts_.push_back(std::move(text));
    }
}

std::vector<std::size_t> StockSearch::find(CFStringRef typed) {
    const std::vector<std::u16string> words = WordsIn(typed);
    if (!words.empty() && texts_.empty()) {
        prepare();
    }
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < papers_.size(); ++i) {
        if (std::ranges::all_of(
                words, [&](const std::u16string& word) { return texts_[i].find(word) != std::u16string::npos; })) {
            found.push_back(i);
        }
    }
    return found;
}
