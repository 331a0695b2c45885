#include "watermark/type42/glyph_names.h"

#include "watermark/type42/mac_glyphs.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <string_view>

namespace {

constexpr int kMostNames = 65535;
constexpr std::size_t kLongestName = 63;

struct Name {
    std::array<char, kLongestName> text;
    std::size_t length = 0;

    void append(std::string_view part) {
        part.copy(text.data() + length, part.size());
        length += part.size();
    }
    [[nodiscard]] std::string_view view() const { return {text.data(), length}; }
};

Name numberedName(std::string_view prefix, UInt32 number) {
    Name name;
    name.append(prefix);
    name.length = static_cast<std::size_t>(
        std::to_chars(name.text.data() + name.length, name.text.data() + name.text.size(), number).ptr -
        name.text.data());
    return name;
}

/// As the Adobe Glyph List has it: "uni" and four digits, or "u" and as many as it takes.
Name nameOfCharacter(char32_t code) {
    Name name;
    name.append(code <= 0xffff ? "uni" : "u");
    for (int shift = code <= 0xffff ? 12 : code <= 0xfffff ? 16 : 20; shift >= 0; shift -= 4) {
        name.text[name.length++] = "0123456789ABCDEF"[code >> shift & 0xf];
    }
    return name;
}

bool isUsableName(std::string_view name) {
    return !name.empty() && name.size() <= kLongestName && std::all_of(name.begin(), name.end(), [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '.' || c == '_' ||
               c == '-';
    });
}

/// Whether it is the name of one of the characters.
bool isNameOfCharacter(std::string_view name, const std::vector<FontCharacter>& characters) {
    const std::size_t prefix = name.starts_with("uni") && name.size() == 7 ? 3 : 1;
    UInt32 code = 0;
    const char* const end = name.data() + name.size();
    if (!name.starts_with('u') || std::from_chars(name.data() + prefix, end, code, 16).ptr != end) {
        return false;
    }
    const auto character =
        std::lower_bound(characters.begin(), characters.end(), code,
                         [](const FontCharacter& one, char32_t wanted) { return one.code < wanted; });
    return character != characters.end() && character->code == code && nameOfCharacter(code).view() == name;
}

/// The lines of the dictionary, and which names they have.
class Dictionary {
public:
    Dictionary(std::size_t ownNames, std::size_t expectedLines)
        : places_(std::bit_ceil(std::min<std::size_t>(ownNames, kMostNames) * 3 / 2 + 2)) {
        text_.reserve(expectedLines * 24);
    }

    /// False when the name is taken, or the dictionary is full.
    bool define(std::string_view name, UInt32 glyph) {
        Place& place = placeOf(name);
        if (place.length != 0 || count_ == kMostNames) {
            return false;
        }
        place = {static_cast<UInt32>(text_.size() + 1), static_cast<UInt32>(name.size())};
        return append(name, glyph);
    }

    /// The same for a name that no other definition has, now or later.
    bool append(std::string_view name, UInt32 glyph) {
        if (count_ == kMostNames) {
            return false;
        }
        std::array<char, kLongestName + 24> line;
        char* end = line.data();
        *end++ = '/';
        end = std::copy(name.begin(), name.end(), end);
        *end++ = ' ';
        end = std::to_chars(end, line.data() + line.size(), glyph).ptr;
        end = std::copy_n(" def\n", 5, end);
        text_.append(line.data(), static_cast<std::size_t>(end - line.data()));
        ++count_;
        return true;
    }

    [[nodiscard]] int count() const { return count_; }
    std::string takeText() { return std::move(text_); }

private:
    /// Of a name, in the text.
    struct Place {
        UInt32 start = 0;
        UInt32 length = 0;
    };

    /// Where the name is, or would be. Not all of the places are taken, so there is an end.
    Place& placeOf(std::string_view name) {
        std::size_t i = std::hash<std::string_view>()(name) & (places_.size() - 1);
        while (places_[i].length != 0 && std::string_view(text_).substr(places_[i].start, places_[i].length) != name) {
            i = (i + 1) & (places_.size() - 1);
        }
        return places_[i];
    }

    std::vector<Place> places_;
    std::string text_;
    int count_ = 0;
};

/// The names that the font gives its glyphs, empty where it gives none.
std::vector<std::string_view> postNames(SfntBytes post, UInt16 glyphCount) {
    constexpr UInt32 kStandardNames = 0x00010000;
    constexpr UInt32 kOwnNames = 0x00020000;
    std::vector<std::string_view> names(glyphCount);
    if (post.u32(0) == kStandardNames) {
        for (std::size_t glyph = 0; glyph < std::min<std::size_t>(glyphCount, kMacGlyphCount); ++glyph) {
            names[glyph] = kMacGlyphs[glyph].name;
        }
    } else if (post.u32(0) == kOwnNames) {
        const std::size_t count = post.u16(32);
        const std::size_t indices = 34;
        std::vector<std::string_view> own;
        for (std::size_t place = indices + count * 2; place < post.size(); place += std::size_t{1} + post.u8(place)) {
            const SfntBytes name = post.part(place + 1, post.u8(place));
            own.emplace_back(reinterpret_cast<const char*>(name.begin()), name.size());
        }
        for (std::size_t glyph = 0; glyph < std::min<std::size_t>(glyphCount, count); ++glyph) {
            const std::size_t index = post.u16(indices + glyph * 2);
            if (index < kMacGlyphCount) {
                names[glyph] = kMacGlyphs[index].name;
            } else if (index - kMacGlyphCount < own.size()) {
                names[glyph] = own[index - kMacGlyphCount];
            }
        }
    }
    return names;
}

/// Latin 1 characters by the usual names where they have one, so that a program that encodes the font anew by them
/// finds what it expects.
std::string encodingOf(const std::vector<FontCharacter>& characters) {
    std::string lines;
    for (const FontCharacter& character : characters) {
        if (character.code > 0xff) {
            break;
        }
        const auto* const usual = std::find_if(kMacGlyphs.begin(), kMacGlyphs.end(), [&](const MacGlyph& glyph) {
            return glyph.code == character.code && glyph.code != 0;
        });
        lines += numberedName("dup ", character.code).view();
        lines += " /";
        lines += usual == kMacGlyphs.end() ? nameOfCharacter(character.code).view() : usual->name;
        lines += " put\n";
    }
    return lines;
}

}  // namespace

GlyphNames NameGlyphs(const std::vector<FontCharacter>& characters, SfntBytes post, UInt16 glyphCount) {
    std::vector<bool> isNamed(glyphCount);
    const std::size_t otherNames = kMacGlyphCount + glyphCount + std::size_t{1};
    Dictionary dictionary(otherNames, otherNames + characters.size());
    const auto define = [&](std::string_view name, UInt32 glyph) {
        if (dictionary.define(name, glyph)) {
            isNamed[glyph] = true;
        }
    };

    define(".notdef", 0);
    for (const FontCharacter& character : characters) {
        if (dictionary.append(nameOfCharacter(character.code).view(), character.glyph)) {
            isNamed[character.glyph] = true;
        }
    }
    for (const MacGlyph& usual : kMacGlyphs) {
        const auto character =
            std::lower_bound(characters.begin(), characters.end(), usual.code,
                             [](const FontCharacter& one, char32_t code) { return one.code < code; });
        if (character != characters.end() && character->code == usual.code && usual.code != 0) {
            define(usual.name, character->glyph);
        }
    }
    const std::vector<std::string_view> own = postNames(post, glyphCount);
    for (UInt32 glyph = 0; glyph < glyphCount; ++glyph) {
        if (isUsableName(own[glyph]) && !isNameOfCharacter(own[glyph], characters)) {
            define(own[glyph], glyph);
        }
    }
    for (UInt32 glyph = 0; glyph < glyphCount; ++glyph) {
        if (!isNamed[glyph]) {
            define(numberedName("g", glyph).view(), glyph);
        }
    }
    return {dictionary.count(), dictionary.takeText(), encodingOf(characters)};
}
