// Room for files of many megabytes.
#pragma once

#include <QByteArray>

#include <cstddef>
#include <memory>

#include <sys/mman.h>

/// Reserves room in which much will be written. Filling tens of megabytes takes the kernel longer for handing out the
/// memory page by page than it takes us to write there, so it is asked for large pages. Where it has none, nothing is
/// lost.
inline void reserveLargeBuffer(QByteArray* bytes, qsizetype capacity) {
    constexpr std::size_t kLargePage = std::size_t{2} * 1024 * 1024;
    bytes->reserve(capacity);
    void* first = bytes->data();
    auto size = static_cast<std::size_t>(bytes->capacity());
    if (std::align(kLargePage, kLargePage, first, size) != nullptr) {
        madvise(first, size / kLargePage * kLargePage, MADV_HUGEPAGE);
    }
}
