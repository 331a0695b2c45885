#include "watermark/type42/glyph_outlines.h"

#include <algorithm>
#include <utility>

namespace {

constexpr UInt32 kHeadMagic = 0x5f0f3cf5;
constexpr std::size_t kGlyphHeader = 10;

// More than any font needs, and few enough for a printer.
constexpr int kDeepestComposite = 32;
constexpr UInt32 kMostParts = 4096;

bool hasSoundHeader(SfntBytes head) {
    const UInt16 unitsPerEm = head.u16(18);
    return head.size() >= 54 && head.u32(12) == kHeadMagic && unitsPerEm >= 16 && unitsPerEm <= 16384 &&
           head.u16(50) <= 1;
}

bool hasAdvances(const SfntFace& face, std::size_t glyphCount) {
    const SfntBytes hhea = face.table(FourCharCode("hhea"));
    const std::size_t pairs = hhea.u16(34);
    return hhea.size() >= 36 && pairs > 0 && pairs <= glyphCount &&
           face.table(FourCharCode("hmtx")).size() >= pairs * 4 + (glyphCount - pairs) * 2;
}

bool readOffsets(SfntBytes loca, bool isLong, std::size_t glyfSize, GlyphOutlines* outlines) {
    const std::size_t count = std::size_t{outlines->count} + 1;
    if (!loca.has(0, count * (isLong ? 4 : 2))) {
        return false;
    }
    outlines->offsets.resize(count);
    UInt32 last = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const UInt32 offset = isLong ? loca.u32(i * 4) : UInt32{2} * loca.u16(i * 2);
        if (offset < last || offset > glyfSize || (i == 0 && offset != 0)) {
            return false;
        }
        outlines->offsets[i] = last = offset;
    }
    return true;
}

bool isSoundSimpleGlyph(SfntBytes glyph) {
    const auto contours = static_cast<std::size_t>(glyph.s16(0));
    const std::size_t instructions = kGlyphHeader + contours * 2;
    if (contours == 0) {
        return true;
    }
    SInt32 last = -1;
    for (std::size_t end = kGlyphHeader; end < instructions; end += 2) {
        if (glyph.u16(end) < last) {
            return false;
        }
        last = glyph.u16(end);
    }
    return glyph.has(instructions, 2) && glyph.has(instructions + 2, glyph.u16(instructions));
}

/// Walks through the glyphs that are made of others.
class Composites {
public:
    Composites(SfntBytes glyf, const GlyphOutlines& outlines)
        : glyf_(glyf), outlines_(outlines), parts_(outlines.count, kUnknown) {}

    bool areSound() {
        for (UInt32 glyph = 0; glyph < outlines_.count; ++glyph) {
            if (partsOf(glyph, 0) > kMostParts) {
                return false;
            }
        }
        return true;
    }

private:
    static constexpr UInt32 kUnknown = 0;
    static constexpr UInt32 kDamaged = kMostParts + 1;

    /// The number of simple glyphs that it takes to show this one; kDamaged for a glyph that is unsound, ends in
    /// itself, or takes too many.
    UInt32 partsOf(UInt32 number, int depth) {
        if (number >= outlines_.count || depth > kDeepestComposite) {
            return kDamaged;
        }
        if (parts_[number] == kUnknown) {
            parts_[number] = kDamaged;  // what a glyph finds that comes back to itself
            parts_[number] = countParts(number, depth);
        }
        return parts_[number];
    }

    UInt32 countParts(UInt32 number, int depth) {
        const UInt32 start = outlines_.offsets[number];
        const SfntBytes glyph = glyf_.part(start, outlines_.offsets[number + 1] - start);
        if (glyph.empty()) {
            return 1;
        }
        if (glyph.size() < kGlyphHeader) {
            return kDamaged;
        }
        if (glyph.s16(0) >= 0) {
            return isSoundSimpleGlyph(glyph) ? 1 : kDamaged;
        }
        constexpr UInt16 kWords = 0x0001;
        constexpr UInt16 kScale = 0x0008;
        constexpr UInt16 kMore = 0x0020;
        constexpr UInt16 kTwoScales = 0x0040;
        constexpr UInt16 kMatrix = 0x0080;
        UInt32 parts = 0;
        UInt16 flags = kMore;
        for (std::size_t place = kGlyphHeader; (flags & kMore) != 0;) {
            flags = glyph.u16(place);
            const std::size_t length = 4 + ((flags & kWords) != 0 ? 4U : 2U) +
                                       ((flags & kScale) != 0       ? 2U
                                        : (flags & kTwoScales) != 0 ? 4U
                                        : (flags & kMatrix) != 0    ? 8U
                                                                    : 0U);
            if (!glyph.has(place, length)) {
                return kDamaged;
            }
            parts += partsOf(glyph.u16(place + 2), depth + 1);
            if (parts > kMostParts) {
                return kDamaged;
            }
            place += length;
        }
        return parts;
    }

    SfntBytes glyf_;
    const GlyphOutlines& outlines_;
    std::vector<UInt32> parts_;
};

/// The strings that a program cuts glyphs into are of even length, so that a cut needs an even place, and there are
/// fonts without one for long stretches. Only fonts with long offsets can have odd ones.
void moveToEvenPlaces(SfntBytes glyf, GlyphOutlines* outlines) {
    std::vector<UInt32>& offsets = outlines->offsets;
    if (std::none_of(offsets.begin(), offsets.end(), [](UInt32 offset) { return offset % 2 != 0; })) {
        return;
    }
    std::vector<UInt8>& moved = outlines->evenGlyf;
    moved.resize(offsets.back() + offsets.size());
    outlines->evenLoca.resize(offsets.size() * 4);
    UInt8* entry = outlines->evenLoca.data();
    UInt32 place = 0;
    for (std::size_t i = 0; i < offsets.size(); ++i) {
        for (int shift = 24; shift >= 0; shift -= 8) {
            *entry++ = static_cast<UInt8>(place >> shift);
        }
        const UInt32 start = std::exchange(offsets[i], place);
        if (i < outlines->count) {
            const UInt32 size = offsets[i + 1] - start;
            std::copy_n(glyf.begin() + start, size, moved.data() + place);
            place += size + size % 2;
        }
    }
    moved.resize(place);
}

}  // namespace

std::optional<GlyphOutlines> ReadGlyphOutlines(const SfntFace& face) {
    const SfntBytes head = face.table(FourCharCode("head"));
    const SfntBytes maxp = face.table(FourCharCode("maxp"));
    const SfntBytes glyf = face.table(FourCharCode("glyf"));
    GlyphOutlines outlines;
    outlines.count = maxp.u16(4);
    const bool sound = hasSoundHeader(head) && maxp.size() >= 32 && outlines.count > 0 &&
                       hasAdvances(face, outlines.count) &&
                       readOffsets(face.table(FourCharCode("loca")), head.u16(50) == 1, glyf.size(), &outlines) &&
                       Composites(glyf, outlines).areSound();
    if (!sound) {
        return std::nullopt;
    }
    moveToEvenPlaces(glyf, &outlines);
    return outlines;
}
