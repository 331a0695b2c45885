#include "watermark/type42/sfnt_reader.h"

#include <algorithm>

namespace {

constexpr UInt32 kCollection = FourCharCode("ttcf");
constexpr UInt32 kTrueType = 0x00010000;
constexpr UInt32 kAppleTrueType = FourCharCode("true");
constexpr UInt32 kOpenTypeCFF = FourCharCode("OTTO");
constexpr UInt32 kApplePostScript = FourCharCode("typ1");
constexpr std::size_t kDirectoryHeader = 12;
constexpr std::size_t kDirectoryEntry = 16;

/// Type 1 fonts, as text or in segments.
bool isType1(SfntBytes file) {
    return file.u16(0) == 0x2521 || file.u16(0) == 0x8001;
}

}  // namespace

FontRefusal SfntFace::open(SfntBytes file, UInt32 face, SfntFace* opened) {
    std::size_t start = 0;
    if (file.u32(0) == kCollection) {
        if (face >= file.u32(8)) {
            return FontRefusal::noSuchFace;
        }
        const std::size_t place = kDirectoryHeader + std::size_t{face} * 4;
        if (!file.has(place, 4)) {
            return FontRefusal::damaged;
        }
        start = file.u32(place);
    } else if (face != 0) {
        return FontRefusal::noSuchFace;
    }

    const SfntBytes directory = file.from(start);
    const UInt32 version = directory.u32(0);
    if (version == kOpenTypeCFF || version == kApplePostScript || isType1(file)) {
        return FontRefusal::postScriptOutlines;
    }
    if (version != kTrueType && version != kAppleTrueType) {
        return start == 0 ? FontRefusal::notAFont : FontRefusal::damaged;
    }
    const std::size_t count = directory.u16(4);
    if (!directory.has(kDirectoryHeader, count * kDirectoryEntry)) {
        return FontRefusal::damaged;
    }
    opened->tables_.clear();
    opened->tables_.reserve(count);
    for (std::size_t entry = kDirectoryHeader; opened->tables_.size() < count; entry += kDirectoryEntry) {
        const std::size_t offset = directory.u32(entry + 8);
        const std::size_t length = directory.u32(entry + 12);
        if (!file.has(offset, length)) {
            return FontRefusal::damaged;
        }
        opened->tables_.push_back({directory.u32(entry), file.part(offset, length)});
    }
    return FontRefusal::none;
}

SfntBytes SfntFace::table(UInt32 tag) const {
    const auto found =
        std::find_if(tables_.begin(), tables_.end(), [tag](const Table& table) { return table.tag == tag; });
    return found == tables_.end() ? SfntBytes() : found->bytes;
}
