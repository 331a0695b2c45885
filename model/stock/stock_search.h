// Looking for papers in a library by what people type.
#pragma once

#include "model/stock/stock.h"

#include <array>
#include <map>
#include <string>
#include <vector>

class StockSearch {
public:
    /// Looks in `papers`, which live as long as this object and stay as they are.
    StockSearch(CFBundleRef bundle, const std::vector<Stock>& papers) : bundle_(bundle), papers_(papers) {}

    /// The places of the papers that have each of the typed words, in their order: in the name, the description, the
    /// comment, or in what the paper is ("250", "gloss", "blue"). Case and diacritics do not matter. All of them for a
    /// text without words.
    std::vector<std::size_t> find(CFStringRef typed);

private:
    void prepare();
    const std::u16string& wordsOf(int part, SInt32 value, const Stock& paper);

    CFBundleRef bundle_;
    const std::vector<Stock>& papers_;
    std::vector<std::u16string> texts_;  // of the papers, folded; made for the first search
    /// By part, value, and the width and length of a size of the user's own.
    std::map<std::array<SInt32, 4>, std::u16string> words_;
};
