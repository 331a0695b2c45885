#include "tests/watermark/type42/font_program.h"

#include <algorithm>
#include <set>
#include <sstream>

namespace {

constexpr std::size_t kLongestString = 65535;

std::optional<std::string> bytesOfHex(std::string_view hex) {
    std::string bytes;
    int high = -1;
    for (const char c : hex) {
        if (c == '\n') {
            continue;
        }
        const std::size_t digit = std::string_view("0123456789ABCDEF").find(c);
        if (digit == std::string_view::npos) {
            return std::nullopt;
        }
        if (high < 0) {
            high = static_cast<int>(digit);
        } else {
            bytes += static_cast<char>(high * 16 + static_cast<int>(digit));
            high = -1;
        }
    }
    return high < 0 ? std::optional(bytes) : std::nullopt;
}

/// What lies between two texts, from `*place`, which moves behind the second one.
std::optional<std::string_view> between(std::string_view text, std::string_view before, std::string_view after,
                                        std::size_t* place) {
    const std::size_t start = text.find(before, *place);
    const std::size_t end = start == std::string_view::npos ? start : text.find(after, start + before.size());
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    *place = end + after.size();
    return text.substr(start + before.size(), end - start - before.size());
}

std::string readStrings(std::string_view sfnts, FontProgram* font) {
    std::size_t place = 0;
    while (const auto hex = between(sfnts, "<", ">\n", &place)) {
        const auto bytes = bytesOfHex(*hex);
        if (!bytes || bytes->size() < 3 || bytes->size() > kLongestString || bytes->size() % 2 == 0 ||
            bytes->back() != '\0') {
            return "a string that is none, or of a wrong length";
        }
        font->strings.push_back(bytes->size() - 1);
        font->sfnt.append(*bytes, 0, bytes->size() - 1);
    }
    return place == sfnts.size() ? "" : "something behind the strings";
}

std::string readNames(std::string_view lines, std::size_t announced, FontProgram* font) {
    std::istringstream text{std::string(lines)};
    std::string slashName;
    unsigned glyph = 0;
    std::string def;
    while (text >> slashName >> glyph >> def) {
        if (slashName.size() < 2 || slashName[0] != '/' || def != "def" ||
            !font->glyphs.emplace(slashName.substr(1), glyph).second) {
            return "a definition that is none, or a second one: " + slashName;
        }
    }
    return text.eof() && font->glyphs.size() == announced && announced <= 65535 ? "" : "a wrong number of names";
}

std::string readEncoding(std::string_view lines, FontProgram* font) {
    std::istringstream text{std::string(lines)};
    std::string dup;
    int code = 0;
    std::string slashName;
    std::string put;
    while (text >> dup >> code >> slashName >> put) {
        const std::string name = slashName.substr(1);
        if (code < 0 || code > 255 || !font->encoding.emplace(code, name).second || !font->glyphs.contains(name)) {
            return "an encoding of a name that is not there: " + name;
        }
    }
    return text.eof() ? "" : "an encoding that is none";
}

/// No string ends inside of a glyph.
bool isCutBetweenGlyphs(const FontProgram& font) {
    const std::string_view loca = *font.table("loca");
    const std::string_view glyf = *font.table("glyf");
    const bool isLong = BigEndian(*font.table("head"), 50, 2) == 1;
    const std::size_t glyphs = BigEndian(*font.table("maxp"), 4, 2);
    const auto start = static_cast<std::size_t>(glyf.data() - font.sfnt.data());
    std::set<std::size_t> places;
    for (std::size_t i = 0; i <= glyphs; ++i) {
        places.insert(start + (isLong ? BigEndian(loca, i * 4, 4) : 2 * BigEndian(loca, i * 2, 2)));
    }
    std::size_t end = 0;
    return std::all_of(font.strings.begin(), font.strings.end(), [&](std::size_t length) {
        end += length;
        return end <= start || end >= start + glyf.size() || places.contains(end);
    });
}

std::string fontFault(const FontProgram& font) {
    for (const std::string_view tag : {"head", "maxp", "hhea", "hmtx", "loca", "glyf"}) {
        if (!font.table(tag)) {
            return "no table " + std::string(tag);
        }
    }
    const unsigned count = BigEndian(*font.table("maxp"), 4, 2);
    if (std::any_of(font.glyphs.begin(), font.glyphs.end(),
                    [count](const auto& named) { return named.second >= count; })) {
        return "a name of a glyph that is not there";
    }
    return isCutBetweenGlyphs(font) ? "" : "a glyph that is cut";
}

}  // namespace

unsigned BigEndian(std::string_view bytes, std::size_t offset, std::size_t length) {
    unsigned number = 0;
    for (const char byte : bytes.substr(offset, length)) {
        number = number << 8 | static_cast<unsigned char>(byte);
    }
    return number;
}

std::optional<std::string_view> FontProgram::table(std::string_view tag) const {
    for (std::size_t entry = 12; entry < 12 + std::size_t{16} * BigEndian(sfnt, 4, 2); entry += 16) {
        if (std::string_view(sfnt).substr(entry, 4) == tag) {
            const std::size_t offset = BigEndian(sfnt, entry + 8, 4);
            const std::size_t length = BigEndian(sfnt, entry + 12, 4);
            return offset % 4 == 0 && offset + length <= sfnt.size()
                       ? std::optional(std::string_view(sfnt).substr(offset, length))
                       : std::nullopt;
        }
    }
    return std::nullopt;
}

std::optional<FontProgram> ReadFontProgram(std::string_view program, std::string* fault) {
    FontProgram font;
    std::size_t place = 0;
    const auto encoding = between(program, "{1 index exch /.notdef put} for\n", "readonly def\n", &place);
    const auto strings = between(program, "/sfnts [\n", "] def\n", &place);
    const auto announced = between(program, "/CharStrings ", " dict dup begin\n", &place);
    const auto names = between(program, "", "end readonly def\n", &place);
    if (!program.starts_with("%!PS-TrueTypeFont-") || !encoding || !strings || !announced || !names ||
        program.substr(place) != "FontName currentdict end definefont pop\n") {
        *fault = "parts are missing";
        return std::nullopt;
    }
    *fault = readStrings(*strings, &font);
    if (fault->empty()) {
        *fault = readNames(*names, std::stoul(std::string(*announced)), &font);
    }
    if (fault->empty()) {
        *fault = readEncoding(*encoding, &font);
    }
    if (fault->empty()) {
        *fault = fontFault(font);
    }
    return fault->empty() ? std::optional(std::move(font)) : std::nullopt;
}
