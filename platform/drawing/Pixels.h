// A picture as plain pixels, for whoever shows it or draws with it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

struct Pixels {
    int width = 0;
    int height = 0;
    /// 0xAARRGGBB, row by row from the top. Red, green and blue are multiplied by alpha.
    std::vector<std::uint32_t> values;

    [[nodiscard]] std::size_t byteCount() const { return values.size() * sizeof(std::uint32_t); }
    bool operator==(const Pixels&) const = default;
};

/// No side of a picture of a page has more.
inline constexpr int kLongestPictureSide = 8192;
