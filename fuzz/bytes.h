// Numbers out of a fuzzer's bytes, for targets whose input is a value and no text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size) : at_(data), end_(data + size) {}

    /// 0 when they have ended.
    std::uint8_t next() { return at_ == end_ ? std::uint8_t{0} : *at_++; }
    /// A number from 0, below the count, which is at most 256 and not 0.
    template <typename Number>
    Number below(Number count) {
        return static_cast<Number>(static_cast<Number>(next()) % count);
    }
    bool flag() { return next() % 2 != 0; }
    /// All that are left.
    [[nodiscard]] std::string rest() const { return {at_, end_}; }

private:
    const std::uint8_t* at_;
    const std::uint8_t* end_;
};
