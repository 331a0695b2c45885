// Ranges of pages that lie over each other: what can be seen of each.
#pragma once

#include "platform/foundation/CFBase.h"

#include <cstddef>
#include <span>
#include <vector>

/// Pages from first to last, both included. Empty when the last lies before the first.
struct PageLayer {
    SInt32 first;
    SInt32 last;
};

/// A run of pages on which no layer lies over that one.
struct VisiblePages {
    std::size_t layer;  // its position in the layers
    SInt32 first;
    SInt32 last;

    bool operator==(const VisiblePages&) const = default;
};

/// The runs, from the lowest page to the highest. Each layer lies over those before it. Takes n log n steps for n
/// layers, which may stand in any order of pages.
[[nodiscard]] std::vector<VisiblePages> visiblePages(std::span<const PageLayer> layers);
