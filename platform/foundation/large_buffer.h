// Room for files of many megabytes.
#pragma once

#include <QByteArray>

#include <cstdint>

#include <sys/mman.h>

/// Reserves room in which much will be written. Filling tens of megabytes takes the kernel longer for handing out the
/// memory page by page than it takes us to write there, so it is asked for large pages. Where it has none, nothing is
/// lost.
inline void reserveLargeBuffer(QByteArray* bytes, qsizetype capacity) {
    constexpr std::uintptr_t kLargePage = 2 * 1024 * 1024;
    bytes->reserve(capacity);
    const auto start = reinterpret_cast<std::uintptr_t>(bytes->data());
    const std::uintptr_t first = (start + kLargePage - 1) / kLargePage * kLargePage;
    const std::uintptr_t last = (start + static_cast<std::uintptr_t>(capacity)) / kLargePage * kLargePage;
    if (first < last) {
        madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
    }
}
