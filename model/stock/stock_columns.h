// Papers of a library in columns, each of which can order them.
#pragma once

#include "model/stock/stock.h"

#include <array>
#include <cstdint>
#include <vector>

enum class StockColumn : std::uint8_t { name, size, color, type, weight, description };
inline constexpr std::size_t kStockColumns = 6;

/// What a column says of a paper; empty for what the paper does not say, and, beside its name and description, for a
/// paper that is known by its name alone.
[[nodiscard]] CFRef<CFStringRef> CopyStockColumn(CFBundleRef bundle, const Stock& paper, StockColumn column);

class StockOrder {
public:
    /// Orders `papers`, which live as long as this object and stay as they are: those of a library, in its order.
    StockOrder(CFBundleRef bundle, const std::vector<Stock>& papers) : bundle_(bundle), papers_(papers) {}

    /// Whether a paper, by its place, comes before another by a column: texts as the user's language sorts them,
    /// weights as numbers, papers that say nothing at the end.
    bool comesBefore(std::size_t one, std::size_t other, StockColumn column);

private:
    using Ranks = std::vector<std::uint32_t>;  // of the papers; equal ones share theirs
    Ranks rank(StockColumn column) const;

    CFBundleRef bundle_;
    const std::vector<Stock>& papers_;
    std::array<Ranks, kStockColumns> ranks_;  // made when a column is first asked for
};
