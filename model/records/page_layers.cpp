#include "model/records/page_layers.h"

#include <algorithm>
#include <limits>
#include <queue>

std::vector<VisiblePages> visiblePages(std::span<const PageLayer> layers) {
    std::vector<std::size_t> byFirstPage;
    byFirstPage.reserve(layers.size());
    for (std::size_t layer = 0; layer < layers.size(); ++layer) {
        if (layers[layer].first <= layers[layer].last) {
            byFirstPage.push_back(layer);
        }
    }
    std::sort(byFirstPage.begin(), byFirstPage.end(),
              [&](std::size_t left, std::size_t right) { return layers[left].first < layers[right].first; });

    // A walk over the pages; `begun` holds the layers that have begun, the uppermost at its top. Those that have ended
    // meanwhile leave it when they come to the top. Pages have 64 bits here: one behind the last is a number too.
    std::vector<VisiblePages> visible;
    std::priority_queue<std::size_t> begun;
    auto next = byFirstPage.begin();
    std::int64_t page = std::numeric_limits<std::int64_t>::min();
    while (next != byFirstPage.end() || !begun.empty()) {
        if (begun.empty()) {
            page = std::max<std::int64_t>(page, layers[*next].first);
        }
        while (next != byFirstPage.end() && layers[*next].first <= page) {
            begun.push(*next++);
        }
        while (!begun.empty() && layers[begun.top()].last < page) {
            begun.pop();
        }
        if (begun.empty()) {
            continue;
        }
        const std::size_t top = begun.top();
        while (next != byFirstPage.end() && *next < top && layers[*next].first <= layers[top].last) {
            begun.push(*next++);
        }
        std::int64_t last = layers[top].last;
        if (next != byFirstPage.end()) {
            last = std::min<std::int64_t>(last, std::int64_t{layers[*next].first} - 1);
        }
        visible.push_back({top, static_cast<SInt32>(page), static_cast<SInt32>(last)});
        page = last + 1;
    }
    return visible;
}
