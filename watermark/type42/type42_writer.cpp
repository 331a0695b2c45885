#include "watermark/type42/type42_writer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <iterator>
#include <string_view>

namespace {

// What an interpreter reads of a font, in the order of the directory. Characters and names it takes from the program.
constexpr UInt32 kTables[] = {
    FourCharCode("cvt "), FourCharCode("fpgm"), FourCharCode("glyf"), FourCharCode("head"), FourCharCode("hhea"),
    FourCharCode("hmtx"), FourCharCode("loca"), FourCharCode("maxp"), FourCharCode("prep"),
};
static_assert(std::size(kTables) == 9);

// A string of PostScript ends at 65535 bytes. One is padding: the data is of even length, and some interpreters want
// another byte behind it, which the others ignore.
constexpr std::size_t kLongestString = 65532;

constexpr std::size_t aligned(std::size_t size) {
    return (size + 3) / 4 * 4;
}

/// Cuts 'glyf' into strings between glyphs: where each of them ends. Nothing when a glyph is longer than a string.
std::optional<std::vector<std::size_t>> cutGlyphs(const std::vector<UInt32>& offsets) {
    std::vector<std::size_t> ends;
    for (std::size_t start = 0; start < offsets.back(); start = ends.back()) {
        const std::size_t end = *(std::upper_bound(offsets.begin(), offsets.end(), start + kLongestString) - 1);
        if (end <= start) {
            return std::nullopt;
        }
        ends.push_back(end);
    }
    return ends;
}

UInt32 checksumOf(SfntBytes table) {
    UInt32 sum = 0;
    const UInt8* word = table.begin();
    for (std::size_t left = table.size() / 4; left > 0; --left, word += 4) {
        sum += UInt32{word[0]} << 24 | UInt32{word[1]} << 16 | UInt32{word[2]} << 8 | word[3];
    }
    for (std::size_t i = 0; i < table.size() % 4; ++i) {
        sum += UInt32{word[i]} << (24 - i * 8);
    }
    return sum;
}

struct Table {
    UInt32 tag;
    SfntBytes bytes;
};

SfntBytes allOf(const std::vector<UInt8>& bytes) {
    return {bytes.data(), bytes.size()};
}

/// The directory of a font of these tables, which follow it in their order.
std::vector<UInt8> directoryOf(const std::vector<Table>& tables) {
    std::vector<UInt8> directory;
    const auto put = [&directory](UInt32 number, int bytes) {
        for (int shift = (bytes - 1) * 8; shift >= 0; shift -= 8) {
            directory.push_back(static_cast<UInt8>(number >> shift));
        }
    };
    const auto count = static_cast<UInt32>(tables.size());
    const UInt32 searched = std::bit_floor(count);
    put(0x00010000, 4);
    put(count, 2);
    put(searched * 16, 2);
    put(static_cast<UInt32>(std::bit_width(searched)) - 1, 2);
    put((count - searched) * 16, 2);
    std::size_t offset = directory.size() + tables.size() * 16;
    for (const Table& table : tables) {
        put(table.tag, 4);
        put(checksumOf(table.bytes), 4);
        put(static_cast<UInt32>(offset), 4);
        put(static_cast<UInt32>(table.bytes.size()), 4);
        offset += aligned(table.bytes.size());
    }
    return directory;
}

/// Without a table, so that the compiler does many at a time.
constexpr char hexDigit(int value) {
    return static_cast<char>(value + '0' + (value > 9 ? 'A' - '9' - 1 : 0));
}

char* writeHex(const UInt8* bytes, std::size_t count, char* place) {
    for (std::size_t i = 0; i < count; ++i) {
        place[2 * i] = hexDigit(bytes[i] >> 4);
        place[2 * i + 1] = hexDigit(bytes[i] & 0xf);
    }
    return place + 2 * count;
}

class Program {
public:
    explicit Program(std::size_t expectedSize)
        : data_(CFRef<CFMutableDataRef>::adopt(CFDataCreateMutable(nullptr, static_cast<CFIndex>(expectedSize)))) {}

    Program& operator<<(std::string_view text) {
        CFDataAppendBytes(data_.get(), reinterpret_cast<const UInt8*>(text.data()), static_cast<CFIndex>(text.size()));
        return *this;
    }

    /// With three places behind the point.
    Program& operator<<(double number) {
        std::array<char, 32> digits;
        const auto end = std::to_chars(digits.begin(), digits.end(), number, std::chars_format::fixed, 3);
        return *this << std::string_view(digits.data(), static_cast<std::size_t>(end.ptr - digits.data()));
    }

    Program& operator<<(int number) {
        std::array<char, 16> digits;
        const auto end = std::to_chars(digits.begin(), digits.end(), number);
        return *this << std::string_view(digits.data(), static_cast<std::size_t>(end.ptr - digits.data()));
    }

    /// A string of the bytes, as many zeros, and the byte of padding.
    void writeString(SfntBytes bytes, std::size_t zeros) {
        const std::size_t size = bytes.size();
        const CFIndex before = CFDataGetLength(data_.get());
        CFDataIncreaseLength(data_.get(), static_cast<CFIndex>(2 * size + size / kBytesInLine + (zeros + 1) * 2 + 3));
        char* place = reinterpret_cast<char*>(CFDataGetMutableBytePtr(data_.get())) + before;
        *place++ = '<';
        std::size_t written = 0;
        for (; size - written >= kBytesInLine; written += kBytesInLine) {
            place = writeHex(bytes.begin() + written, kBytesInLine, place);
            *place++ = '\n';
        }
        place = writeHex(bytes.begin() + written, size - written, place);
        place = std::fill_n(place, (zeros + 1) * 2, '0');
        *place++ = '>';
        *place++ = '\n';
    }

    CFRef<CFDataRef> finish() { return CFRef<CFDataRef>::adopt(data_.leak()); }

private:
    static constexpr std::size_t kBytesInLine = 64;

    CFRef<CFMutableDataRef> data_;
};

void writeTables(const SfntFace& face, const GlyphOutlines& outlines, const std::vector<std::size_t>& cuts,
                 Program* program) {
    std::vector<Table> tables;
    for (const UInt32 tag : kTables) {
        tables.push_back({tag, face.table(tag)});
        SfntBytes& bytes = tables.back().bytes;
        if (tag == FourCharCode("glyf")) {
            bytes = outlines.evenGlyf.empty() ? bytes.part(0, outlines.offsets.back()) : allOf(outlines.evenGlyf);
        } else if (tag == FourCharCode("loca") && !outlines.evenLoca.empty()) {
            bytes = allOf(outlines.evenLoca);
        }
    }
    std::erase_if(tables, [](const Table& table) { return table.bytes.empty(); });

    const std::vector<UInt8> directory = directoryOf(tables);
    program->writeString(allOf(directory), 0);
    for (const auto& [tag, bytes] : tables) {
        const std::size_t size = bytes.size();
        std::size_t start = 0;
        for (std::size_t i = 0; start < size; ++i) {
            const std::size_t end = tag == FourCharCode("glyf") ? cuts[i] : std::min(size, start + kLongestString);
            program->writeString(bytes.part(start, end - start), end == size ? aligned(size) - size : 0);
            start = end;
        }
    }
}

}  // namespace

CFRef<CFDataRef> WriteType42(const std::string& name, const SfntFace& face, const GlyphOutlines& outlines,
                             const GlyphNames& names) {
    const std::optional<std::vector<std::size_t>> cuts = cutGlyphs(outlines.offsets);
    if (!cuts) {
        return nullptr;
    }
    std::size_t size = names.charStrings.size() + names.encoding.size() + 8192;
    for (const UInt32 tag : kTables) {
        size += face.table(tag).size() * 33 / 16;
    }

    Program program(size);
    const SfntBytes head = face.table(FourCharCode("head"));
    const double unitsPerEm = head.u16(18);
    program << "%!PS-TrueTypeFont-1.0-" << head.u32(4) / 65536.0 << "\n12 dict begin\n/FontName /" << name
            << " def\n/FontType 42 def\n/PaintType 0 def\n/FontMatrix [1 0 0 1 0 0] def\n/FontBBox [";
    for (std::size_t side = 36; side < 44; side += 2) {
        program << head.s16(side) / unitsPerEm << " ";
    }
    program << "] readonly def\n/Encoding 256 array\n0 1 255 {1 index exch /.notdef put} for\n"
            << names.encoding << "readonly def\n/sfnts [\n";
    writeTables(face, outlines, *cuts, &program);
    program << "] def\n/CharStrings " << names.count << " dict dup begin\n"
            << names.charStrings << "end readonly def\nFontName currentdict end definefont pop\n";
    return program.finish();
}
