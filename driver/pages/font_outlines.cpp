#include "driver/pages/font_outlines.h"

#include "driver/pages/pdf_text.h"
#include "platform/foundation/message.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <array>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

namespace {

struct Closer {
    void operator()(FT_Library library) const { FT_Done_FreeType(library); }
    void operator()(FT_Face face) const { FT_Done_Face(face); }
};
using Library = std::unique_ptr<FT_LibraryRec_, Closer>;
using Face = std::unique_ptr<FT_FaceRec_, Closer>;

/// The characters of a UTF-8 text; what ends lines, and the like, is a blank.
std::vector<char32_t> charactersOf(const std::string& text) {
    std::vector<char32_t> characters;
    for (const char byte : text) {
        const auto value = static_cast<unsigned char>(byte);
        if ((value & 0xC0) == 0x80 && !characters.empty()) {
            characters.back() = characters.back() << 6 | (value & 0x3F);
        } else {
            characters.push_back(value < 0x20    ? U' '
                                 : value < 0x80  ? value
                                 : value >= 0xF0 ? value & 0x07
                                 : value >= 0xE0 ? value & 0x0F
                                                 : value & 0x1F);
        }
    }
    return characters;
}

/// The glyphs by their names. The library's own look-up gives the numbers that they have inside of the font, which its
/// other calls do not take.
std::map<std::string, FT_UInt, std::less<>> glyphsOf(FT_Face face) {
    std::map<std::string, FT_UInt, std::less<>> glyphs;
    std::array<char, 64> name{};
    for (FT_Long glyph = 0; glyph < face->num_glyphs; ++glyph) {
        if (FT_Get_Glyph_Name(face, static_cast<FT_UInt>(glyph), name.data(), name.size()) == 0) {
            glyphs.emplace(name.data(), static_cast<FT_UInt>(glyph));
        }
    }
    return glyphs;
}

std::string glyphName(char32_t character) {
    std::array<char, 16> name{};
    std::snprintf(name.data(), name.size(), character > 0xFFFF ? "u%X" : "uni%04X", static_cast<unsigned>(character));
    return name.data();
}

/// Draws outlines one after the other.
class Pen {
public:
    explicit Pen(double scale) : scale_(scale) {}

    bool draw(FT_Outline* outline) {
        static constexpr FT_Outline_Funcs kFunctions{
            [](const FT_Vector* to, void* pen) { return static_cast<Pen*>(pen)->moveTo(*to); },
            [](const FT_Vector* to, void* pen) { return static_cast<Pen*>(pen)->lineTo(*to); },
            [](const FT_Vector* control, const FT_Vector* to, void* pen) {
                return static_cast<Pen*>(pen)->conicTo(*control, *to);
            },
            [](const FT_Vector* first, const FT_Vector* second, const FT_Vector* to, void* pen) {
                return static_cast<Pen*>(pen)->cubicTo(*first, *second, *to);
            },
            0,
            0};
        return FT_Outline_Decompose(outline, &kFunctions, this) == 0;
    }
    void advance(FT_Pos units) { x_ += static_cast<double>(units) * scale_; }
    [[nodiscard]] double x() const { return x_; }
    std::string take() { return std::move(path_); }

private:
    struct Point {
        double x;
        double y;
    };
    [[nodiscard]] Point place(const FT_Vector& vector) const {
        return {x_ + static_cast<double>(vector.x) * scale_, static_cast<double>(vector.y) * scale_};
    }
    int moveTo(const FT_Vector& to) {
        last_ = place(to);
        append(&path_, {last_.x, last_.y}, "m");
        return 0;
    }
    int lineTo(const FT_Vector& to) {
        last_ = place(to);
        append(&path_, {last_.x, last_.y}, "l");
        return 0;
    }
    /// PDF has curves of the third degree only.
    int conicTo(const FT_Vector& control, const FT_Vector& to) {
        const Point middle = place(control);
        const Point end = place(to);
        append(&path_,
               {last_.x + (middle.x - last_.x) * 2 / 3, last_.y + (middle.y - last_.y) * 2 / 3,
                end.x + (middle.x - end.x) * 2 / 3, end.y + (middle.y - end.y) * 2 / 3, end.x, end.y},
               "c");
        last_ = end;
        return 0;
    }
    int cubicTo(const FT_Vector& first, const FT_Vector& second, const FT_Vector& to) {
        const Point one = place(first);
        const Point two = place(second);
        last_ = place(to);
        append(&path_, {one.x, one.y, two.x, two.y, last_.x, last_.y}, "c");
        return 0;
    }

    double scale_;
    double x_ = 0;
    Point last_{0, 0};
    std::string path_;
};

}  // namespace

std::optional<TextOutline> outlineText(const std::string& text, const std::string& font, double size,
                                       std::string* reason) {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    if (FT_Init_FreeType(&library) != 0) {
        *reason = messageText("the font library does not start");
        return std::nullopt;
    }
    const Library libraryOwner(library);
    if (FT_New_Memory_Face(library, reinterpret_cast<const FT_Byte*>(font.data()), static_cast<FT_Long>(font.size()), 0,
                           &face) != 0) {
        *reason = messageText("its font is damaged");
        return std::nullopt;
    }
    const Face faceOwner(face);
    auto glyphs = glyphsOf(face);
    Pen pen(size / (face->units_per_EM != 0 ? face->units_per_EM : 1000));
    for (const char32_t character : charactersOf(text)) {
        const auto known = glyphs.find(glyphName(character));
        if (FT_Load_Glyph(face, known == glyphs.end() ? glyphs[".notdef"] : known->second,
                          FT_LOAD_NO_SCALE | FT_LOAD_NO_HINTING) != 0) {
            *reason = messageText("its font is damaged");
            return std::nullopt;
        }
        if (face->glyph->format == FT_GLYPH_FORMAT_OUTLINE && !pen.draw(&face->glyph->outline)) {
            *reason = messageText("its font is damaged");
            return std::nullopt;
        }
        pen.advance(face->glyph->advance.x);
    }
    const double width = pen.x();
    return TextOutline{pen.take(), width};
}
