#include "tests/watermark/type42/font_rendering.h"

#include "tests/platform/files/temporary_folder.h"
#include "tests/support/cf_values.h"
#include "tests/watermark/type42/font_program.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <vector>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

namespace {

// In pixels. Ghostscript scales TrueType by a fraction of few digits; at powers of two it is exact.
constexpr int kEm = 128;
constexpr int kFiner = 8;  // Ghostscript's pixels in one of these, each way
constexpr int kResolution = 72 * kFiner;
constexpr int kCell = 2 * kEm;
constexpr int kColumns = 6;
constexpr int kRows = 4;
constexpr int kOriginX = kEm / 2;
constexpr int kOriginY = kEm / 2;  // upwards from the cell's lower edge
constexpr int kWidth = kColumns * kCell;

struct Sample {
    FT_ULong code;
    FT_UInt glyph;
};

/// With as many rows of cells as the samples need.
struct Picture {
    explicit Picture(std::size_t samples)
        : height((static_cast<int>(samples) + kColumns - 1) / kColumns * kCell),
          ink(static_cast<std::size_t>(kWidth) * static_cast<std::size_t>(height)) {}
    int height;
    std::vector<unsigned char> ink;
};

std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string nameOf(FT_ULong code) {
    std::array<char, 16> name;
    std::snprintf(name.data(), name.size(), code <= 0xffff ? "uni%04lX" : "u%05lX", code);
    return name.data();
}

/// A few letters first, then characters that have ink, from all over the font.
std::vector<Sample> chooseSamples(FT_Face face) {
    std::vector<Sample> all;
    std::vector<Sample> letters;
    FT_UInt glyph = 0;
    for (FT_ULong code = FT_Get_First_Char(face, &glyph); glyph != 0; code = FT_Get_Next_Char(face, code, &glyph)) {
        if (FT_Load_Glyph(face, glyph, FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP) == 0 &&
            face->glyph->outline.n_points > 0) {
            (code == 'A' || code == 'g' || code == 0xE9 ? letters : all).push_back({code, glyph});
        }
    }
    const std::size_t wanted = std::size_t{kColumns} * kRows - letters.size();
    for (std::size_t i = 0; i < std::min(wanted, all.size()); ++i) {
        letters.push_back(all[all.size() <= wanted ? i : i * all.size() / wanted]);
    }
    return letters;
}

struct Cell {
    int left;
    int bottom;  // rows of pixels count from the top, this one from the bottom
};

Cell cellOf(std::size_t sample) {
    const int index = static_cast<int>(sample);
    return {index % kColumns * kCell, index / kColumns * kCell};
}

Picture drawWithFreeType(FT_Face face, const std::vector<Sample>& samples) {
    Picture picture(samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        FT_Load_Glyph(face, samples[i].glyph, FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP);
        // PostScript fills what a contour goes round, however often.
        face->glyph->outline.flags &= ~FT_OUTLINE_EVEN_ODD_FILL;
        FT_Render_Glyph(face->glyph, FT_RENDER_MODE_NORMAL);
        const Cell cell = cellOf(i);
        const FT_Bitmap& bitmap = face->glyph->bitmap;
        for (int row = 0; row < static_cast<int>(bitmap.rows); ++row) {
            for (int column = 0; column < static_cast<int>(bitmap.width); ++column) {
                const int x = kOriginX + face->glyph->bitmap_left + column;
                const int y = kOriginY + face->glyph->bitmap_top - 1 - row;
                if (x >= 0 && x < kCell && y >= 0 && y < kCell) {
                    const int line = picture.height - 1 - (cell.bottom + y);
                    picture.ink[static_cast<std::size_t>(line) * kWidth + static_cast<std::size_t>(cell.left + x)] =
                        bitmap.buffer[row * bitmap.pitch + column];
                }
            }
        }
    }
    return picture;
}

/// False when Ghostscript fails, with what it said.
bool drawWithGhostscript(const std::string& program, const std::string& postScriptName,
                         const std::vector<Sample>& samples, Picture* picture, std::string* said) {
    const TemporaryFolder folder;
    const std::string script = folder / "page.ps";
    const std::string output = folder / "page.pgm";
    const std::string log = folder / "log";
    {
        std::ofstream file(script, std::ios::binary);
        file << program << "\n0 0 .setfilladjust2\n/" << postScriptName << " findfont " << kEm
             << " scalefont setfont\n";
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const Cell cell = cellOf(i);
            file << "gsave " << cell.left << ' ' << cell.bottom << ' ' << kCell << ' ' << kCell << " rectclip "
                 << cell.left + kOriginX << ' ' << cell.bottom + kOriginY << " moveto /" << nameOf(samples[i].code)
                 << " glyphshow grestore\n";
        }
        file << "showpage\n";
    }
    // Black or white, so that how smoothly Ghostscript draws edges does not matter.
    const std::string command = "gs -q -dBATCH -dNOPAUSE -dSAFER -sDEVICE=pbmraw -dGridFitTT=0 -r" +
                                std::to_string(kResolution) + " -g" + std::to_string(kWidth * kFiner) + "x" +
                                std::to_string(picture->height * kFiner) + " -sOutputFile=" + output + " " + script +
                                " >" + log + " 2>&1";
    const int status = std::system(command.c_str());
    *said = readFile(log);
    std::istringstream image(readFile(output));
    std::string kind;
    int width = 0;
    int height = 0;
    std::string comment;
    image >> kind >> std::ws;
    while (image.peek() == '#') {
        std::getline(image, comment);
    }
    image >> width >> height;
    image.get();
    if (status != 0 || kind != "P4" || width != kWidth * kFiner || height != picture->height * kFiner) {
        *said += "no page";
        return false;
    }
    static_assert(kFiner == 8, "a byte of the picture lies in one pixel");
    std::vector<int> black(picture->ink.size());
    std::vector<char> line(kWidth);
    for (int y = 0; y < picture->height * kFiner && image.read(line.data(), kWidth); ++y) {
        for (int x = 0; x < kWidth; ++x) {
            black[static_cast<std::size_t>(y / kFiner) * kWidth + static_cast<std::size_t>(x)] +=
                std::popcount(static_cast<unsigned char>(line[static_cast<std::size_t>(x)]));
        }
    }
    std::transform(black.begin(), black.end(), picture->ink.begin(),
                   [](int dots) { return static_cast<unsigned char>(dots * 255 / (kFiner * kFiner)); });
    return said->empty();
}

/// The difference of two pictures in a cell, and the ink of the second one there.
std::pair<double, double> differenceAndInk(const Picture& left, const Picture& right, const Cell& cell) {
    double difference = 0;
    double ink = 0;
    for (int y = 0; y < kCell; ++y) {
        const auto row = static_cast<std::size_t>(right.height - 1 - (cell.bottom + y)) * kWidth;
        for (int x = 0; x < kCell; ++x) {
            const std::size_t pixel = row + static_cast<std::size_t>(cell.left + x);
            difference += std::abs(int{left.ink[pixel]} - int{right.ink[pixel]});
            ink += right.ink[pixel];
        }
    }
    return {difference, ink};
}

std::string characterFault(FT_Face face, const std::string& program) {
    std::string fault;
    const std::optional<FontProgram> font = ReadFontProgram(program, &fault);
    if (!font) {
        return fault;
    }
    if (face->charmap == nullptr || face->charmap->encoding != FT_ENCODING_UNICODE) {
        return "";
    }
    FT_UInt glyph = 0;
    for (FT_ULong code = FT_Get_First_Char(face, &glyph); glyph != 0; code = FT_Get_Next_Char(face, code, &glyph)) {
        const auto found = font->glyphs.find(nameOf(code));
        if (found == font->glyphs.end() || found->second != glyph) {
            return nameOf(code) + (found == font->glyphs.end() ? " is missing" : " is another glyph");
        }
    }
    return "";
}

}  // namespace

FontComparison CompareWithFreeType(const std::string& path, UInt32 index, const std::string& postScriptName,
                                   const std::string& program) {
    static const FT_Library library = [] {
        FT_Library made = nullptr;
        FT_Init_FreeType(&made);
        return made;
    }();
    FontComparison result;
    FT_Face face = nullptr;
    if (FT_New_Face(library, path.c_str(), static_cast<FT_Long>(index), &face) != 0 ||
        FT_Set_Pixel_Sizes(face, kEm, kEm) != 0) {
        result.failure = "FreeType does not open it";
        return result;
    }
    result.failure = characterFault(face, program);
    const std::vector<Sample> samples = chooseSamples(face);
    Picture converted(samples.size());
    if (result.failure.empty() && drawWithGhostscript(program, postScriptName, samples, &converted, &result.failure)) {
        const Picture original = drawWithFreeType(face, samples);
        double difference = 0;
        double ink = 0;
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const auto [cellDifference, cellInk] = differenceAndInk(converted, original, cellOf(i));
            difference += cellDifference;
            ink += cellInk;
            if (cellInk > 0 && cellDifference / cellInk > result.worstDifference) {
                result.worstDifference = cellDifference / cellInk;
                result.worstGlyph = nameOf(samples[i].code);
            }
        }
        result.glyphs = static_cast<int>(samples.size());
        result.difference = ink > 0 ? difference / ink : 0;
    }
    FT_Done_Face(face);
    return result;
}

std::string ConvertFontFile(const std::string& path, UInt32 face, const std::string& postScriptName,
                            FontRefusal* refusal) {
    const auto program =
        convertTTFtoPS42(makeCFData(readFile(path)).get(), makeCFString(postScriptName).get(), face, refusal);
    return {reinterpret_cast<const char*>(CFDataGetBytePtr(program.get())),
            static_cast<std::size_t>(CFDataGetLength(program.get()))};
}

const char* NameOfRefusal(FontRefusal refusal) {
    switch (refusal) {
        case FontRefusal::none:
            return "none";
        case FontRefusal::unusableName:
            return "unusable name";
        case FontRefusal::notAFont:
            return "not a font";
        case FontRefusal::noSuchFace:
            return "no such face";
        case FontRefusal::damaged:
            return "damaged";
        case FontRefusal::postScriptOutlines:
            return "PostScript outlines";
        case FontRefusal::variableOutlines:
            return "variable outlines";
        case FontRefusal::tooLarge:
            return "too large";
        case FontRefusal::noOutlines:
            return "no outlines";
        case FontRefusal::noCharacters:
            return "no characters";
        case FontRefusal::embeddingRestricted:
            return "embedding restricted";
        case FontRefusal::bitmapsOnly:
            return "bitmaps only";
    }
    return "?";
}
