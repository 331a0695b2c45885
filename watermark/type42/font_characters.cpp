#include "watermark/type42/font_characters.h"

#include "watermark/type42/mac_glyphs.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr std::size_t kMostCharacters = 65535;
constexpr UInt32 kAnyEncoding = 0xffff;

enum class Codes {
    unicode,
    symbol,
    macRoman,
};

struct Kind {
    UInt32 platform;
    UInt32 encoding;
    UInt32 format;
    Codes codes;
};

// The tables that we read, best first: platform, its encoding, the table's format, what the codes are.
constexpr Kind kKinds[] = {
    {3, 10, 12, Codes::unicode}, {0, kAnyEncoding, 12, Codes::unicode},
    {3, 1, 4, Codes::unicode},   {0, kAnyEncoding, 4, Codes::unicode},
    {3, 1, 6, Codes::unicode},   {0, kAnyEncoding, 6, Codes::unicode},
    {3, 0, 4, Codes::symbol},    {1, 0, 4, Codes::macRoman},
    {1, 0, 6, Codes::macRoman},  {1, 0, 0, Codes::macRoman},
};
static_assert(std::size(kKinds) == 10);

class Reader {
public:
    explicit Reader(UInt16 glyphCount) : glyphCount_(glyphCount) {}

    std::vector<FontCharacter> read(SfntBytes table, UInt32 format) {
        switch (format) {
            case 0:
                readBytes(table);
                break;
            case 4:
                readSegments(table);
                break;
            case 6:
                readRow(table);
                break;
            default:
                readGroups(table);
        }
        return std::move(characters_);
    }

private:
    void add(UInt32 code, UInt32 glyph) {
        const bool isSurrogate = code >= 0xd800 && code <= 0xdfff;
        if (glyph != 0 && glyph < glyphCount_ && !isSurrogate && characters_.size() < kMostCharacters) {
            characters_.push_back({static_cast<char32_t>(code), static_cast<UInt16>(glyph)});
        }
    }

    void readBytes(SfntBytes table) {
        for (UInt32 code = 0; code < 256; ++code) {
            add(code, table.u8(6 + code));
        }
    }

    /// Of segments that overlap the first one counts, as it does for who looks a character up.
    void readSegments(SfntBytes table) {
        const std::size_t arraySize = table.u16(6) & ~1U;
        const std::size_t ends = 14;
        const std::size_t starts = ends + arraySize + 2;
        const std::size_t deltas = starts + arraySize;
        const std::size_t ranges = deltas + arraySize;
        UInt32 next = 0;
        for (std::size_t i = 0; i < arraySize; i += 2) {
            const UInt32 start = table.u16(starts + i);
            const UInt32 end = std::min<UInt32>(table.u16(ends + i), 0xfffe);
            const UInt32 delta = table.u16(deltas + i);
            const UInt32 range = table.u16(ranges + i);
            for (UInt32 code = std::max(start, next); code <= end; ++code) {
                UInt32 glyph = code;
                if (range != 0) {
                    glyph = table.u16(ranges + i + range + std::size_t{2} * (code - start));
                    if (glyph == 0) {
                        continue;
                    }
                }
                add(code, (glyph + delta) & 0xffff);
            }
            next = std::max(next, end + 1);
        }
    }

    void readRow(SfntBytes table) {
        const UInt32 first = table.u16(6);
        const UInt32 count = table.u16(8);
        for (UInt32 i = 0; i < count && first + i < 0xffff; ++i) {
            add(first + i, table.u16(10 + std::size_t{2} * i));
        }
    }

    void readGroups(SfntBytes table) {
        constexpr UInt32 kLastCode = 0x10ffff;
        const SfntBytes groups = table.from(16);
        const std::size_t count = std::min<std::size_t>(table.u32(12), groups.size() / 12);
        UInt32 next = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const UInt32 start = groups.u32(i * 12);
            const UInt32 end = std::min(groups.u32(i * 12 + 4), kLastCode);
            const UInt32 glyph = groups.u32(i * 12 + 8);
            for (UInt32 code = std::max(start, next);
                 code <= end && glyph < glyphCount_ && code - start < glyphCount_ - glyph; ++code) {
                add(code, glyph + (code - start));
            }
            next = std::max(next, end + 1);
        }
    }

    UInt32 glyphCount_;
    std::vector<FontCharacter> characters_;
};

std::vector<FontCharacter> withLatinCodes(const std::vector<FontCharacter>& symbols) {
    std::vector<FontCharacter> characters = symbols;
    for (const FontCharacter& symbol : symbols) {
        if (symbol.code > 0xf01f && symbol.code <= 0xf0ff) {
            characters.push_back({symbol.code - 0xf000, symbol.glyph});
        }
    }
    return characters;
}

std::vector<FontCharacter> fromMacRoman(const std::vector<FontCharacter>& macCharacters) {
    std::vector<FontCharacter> characters;
    for (const FontCharacter& character : macCharacters) {
        if (const char32_t code = UnicodeOfMacRoman(character.code); code != 0) {
            characters.push_back({code, character.glyph});
        }
    }
    return characters;
}

/// One that has characters; its place among the kinds says how good it is.
struct Found {
    const Kind* kind = std::end(kKinds);
    SfntBytes table;
};

Found findTable(SfntBytes cmap) {
    Found found;
    const std::size_t count = cmap.u16(2);
    for (std::size_t record = 4; record < 4 + count * 8 && cmap.has(record, 8); record += 8) {
        const SfntBytes table = cmap.from(cmap.u32(record + 4));
        const auto* const kind = std::find_if(std::begin(kKinds), found.kind, [&](const Kind& row) {
            return !table.empty() && row.platform == cmap.u16(record) &&
                   (row.encoding == kAnyEncoding || row.encoding == cmap.u16(record + 2)) && row.format == table.u16(0);
        });
        if (kind != found.kind) {
            found = {kind, table};
        }
    }
    return found;
}

}  // namespace

std::vector<FontCharacter> CharactersOfFont(SfntBytes cmap, UInt16 glyphCount) {
    const Found found = findTable(cmap);
    if (found.kind == std::end(kKinds)) {
        return {};
    }
    std::vector<FontCharacter> characters = Reader(glyphCount).read(found.table, found.kind->format);
    if (found.kind->codes == Codes::symbol) {
        characters = withLatinCodes(characters);
    } else if (found.kind->codes == Codes::macRoman) {
        characters = fromMacRoman(characters);
    }
    const auto byCode = [](const FontCharacter& left, const FontCharacter& right) { return left.code < right.code; };
    if (!std::is_sorted(characters.begin(), characters.end(), byCode)) {
        std::stable_sort(characters.begin(), characters.end(), byCode);
    }
    const auto sameCode = [](const FontCharacter& left, const FontCharacter& right) { return left.code == right.code; };
    characters.erase(std::unique(characters.begin(), characters.end(), sameCode), characters.end());
    return characters;
}
