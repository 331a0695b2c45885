// The container of TrueType fonts: its numbers, its directory, its tables.
#pragma once

#include "platform/foundation/four_char_code.h"
#include "watermark/type42/font_refusal.h"

#include <cstddef>
#include <vector>

/// Bytes of a font, which somebody else keeps. Nothing outside of them is ever read: a number there is 0, a part there
/// is empty. What that means is for the table's reader to say, who compares sizes where 0 would be wrong.
class SfntBytes {
public:
    SfntBytes() = default;
    SfntBytes(const UInt8* bytes, std::size_t size) : bytes_(bytes), size_(size) {}

    [[nodiscard]] const UInt8* begin() const { return bytes_; }
    [[nodiscard]] std::size_t size() const { return size_; }
    [[nodiscard]] bool empty() const { return size_ == 0; }

    /// Big-endian numbers.
    [[nodiscard]] UInt8 u8(std::size_t offset) const { return offset < size_ ? bytes_[offset] : UInt8{0}; }
    [[nodiscard]] UInt16 u16(std::size_t offset) const {
        return has(offset, 2) ? static_cast<UInt16>(bytes_[offset] << 8 | bytes_[offset + 1]) : UInt16{0};
    }
    [[nodiscard]] SInt16 s16(std::size_t offset) const { return static_cast<SInt16>(u16(offset)); }
    [[nodiscard]] UInt32 u32(std::size_t offset) const {
        return has(offset, 4) ? static_cast<UInt32>(u16(offset)) << 16 | u16(offset + 2) : 0;
    }

    [[nodiscard]] bool has(std::size_t offset, std::size_t length) const {
        return offset <= size_ && length <= size_ - offset;
    }
    [[nodiscard]] SfntBytes part(std::size_t offset, std::size_t length) const {
        return has(offset, length) ? SfntBytes(bytes_ + offset, length) : SfntBytes();
    }
    [[nodiscard]] SfntBytes from(std::size_t offset) const {
        return offset <= size_ ? SfntBytes(bytes_ + offset, size_ - offset) : SfntBytes();
    }

private:
    const UInt8* bytes_ = nullptr;
    std::size_t size_ = 0;
};

/// One face of a font file: its tables.
class SfntFace {
public:
    /// Finds the face, the place of which is 0 unless the file is a collection.
    static FontRefusal open(SfntBytes file, UInt32 face, SfntFace* opened);

    /// The bytes of a table; none when it is missing.
    [[nodiscard]] SfntBytes table(UInt32 tag) const;

private:
    struct Table {
        UInt32 tag;
        SfntBytes bytes;
    };
    std::vector<Table> tables_;
};
