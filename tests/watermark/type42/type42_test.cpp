// TrueType as Type 42: what comes out is drawn by Ghostscript as FreeType draws the font, and what cannot be converted
// is refused for the right reason.

#include "watermark/type42/type42.h"
#include "tests/support/places.h"

#include "platform/fonts/font_faces.h"
#include "tests/support/cf_values.h"
#include "tests/watermark/type42/font_program.h"
#include "tests/watermark/type42/font_rendering.h"

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <ostream>

namespace {

std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string seed(const char* name) {
    return readFile(sourcePath("fuzz/corpus/type42/") + name);
}

FontRefusal refusalOf(const std::string& font, UInt32 face = 0, const char* name = "Test") {
    FontRefusal refusal = FontRefusal::none;
    const auto program = convertTTFtoPS42(makeCFData(font).get(), makeCFString(name).get(), face, &refusal);
    EXPECT_EQ(bool(program), refusal == FontRefusal::none);
    const FontRefusal seen = RefusalAtFirstSight({reinterpret_cast<const UInt8*>(font.data()), font.size()}, face);
    EXPECT_TRUE(seen == refusal || seen == FontRefusal::none || refusal == FontRefusal::unusableName);
    return refusal;
}

std::string convert(const std::string& font, UInt32 face = 0) {
    FontRefusal refusal = FontRefusal::none;
    const auto program = convertTTFtoPS42(makeCFData(font).get(), makeCFString("Test").get(), face, &refusal);
    EXPECT_EQ(refusal, FontRefusal::none);
    return {reinterpret_cast<const char*>(CFDataGetBytePtr(program.get())),
            static_cast<std::size_t>(CFDataGetLength(program.get()))};
}

FontProgram read(const std::string& program) {
    std::string fault;
    const auto font = ReadFontProgram(program, &fault);
    EXPECT_TRUE(font) << fault;
    return font.value_or(FontProgram());
}

/// The place of a table in a file of one face, and of its entry in the directory.
struct TablePlace {
    std::size_t entry;
    std::size_t offset;
};

TablePlace placeOf(const std::string& font, std::string_view tag) {
    for (std::size_t entry = 12; entry < 12 + std::size_t{16} * BigEndian(font, 4, 2); entry += 16) {
        if (font.compare(entry, 4, tag) == 0) {
            return {entry, BigEndian(font, entry + 8, 4)};
        }
    }
    ADD_FAILURE() << "no table " << tag;
    return {};
}

void put(std::string* bytes, std::size_t offset, unsigned number, int length) {
    for (int i = length - 1; i >= 0; --i, number >>= 8) {
        bytes->at(offset + static_cast<std::size_t>(i)) = static_cast<char>(number);
    }
}

/// A font with another number at a place in a table.
std::string with(std::string font, std::string_view tag, std::size_t offset, unsigned number, int length = 2) {
    put(&font, placeOf(font, tag).offset + offset, number, length);
    return font;
}

std::string withTableLength(std::string font, std::string_view tag, unsigned length) {
    put(&font, placeOf(font, tag).entry + 12, length, 4);
    return font;
}

std::string withTableCalled(std::string font, std::string_view tag, const char* newTag) {
    return font.replace(placeOf(font, tag).entry, 4, newTag);
}

std::string withoutTable(const std::string& font, std::string_view tag) {
    return withTableCalled(font, tag, "none");
}

// ---- drawn

struct Installed {
    const char* postScriptName;
    const char* special;
};

// What each of them brings along: PostScript name, what is special about it.
constexpr Installed kInstalled[] = {
    {"DejaVuSans", "characters beyond U+FFFF, instructions, names in 'post'"},
    {"LiberationSans", "glyphs made of others"},
    {"LiberationSerif-Italic", "an italic"},
    {"DroidSansFallback", "49,000 glyphs, tables longer than a string, no names"},
    {"Lohit-Devanagari", "a script with glyphs that no character has"},
};
static_assert(std::size(kInstalled) == 5);

void PrintTo(const Installed& font, std::ostream* out) {
    *out << font.postScriptName << ": " << font.special;
}

class InstalledFont : public testing::TestWithParam<Installed> {};

TEST_P(InstalledFont, LooksTheSameAfterConversion) {
    const auto face = FindFontFace(GetParam().postScriptName);
    ASSERT_TRUE(face);
    FontRefusal refusal = FontRefusal::none;
    const std::string program = ConvertFontFile(face->path, face->index, face->postScriptName, &refusal);
    ASSERT_EQ(refusal, FontRefusal::none);
    const FontComparison result = CompareWithFreeType(face->path, face->index, face->postScriptName, program);
    EXPECT_EQ(result.failure, "");
    EXPECT_GE(result.glyphs, 20);
    EXPECT_LT(result.difference, 0.02);
    EXPECT_LT(result.worstDifference, 0.06) << result.worstGlyph;
}

INSTANTIATE_TEST_SUITE_P(Type42, InstalledFont, testing::ValuesIn(kInstalled), [](const auto& test) {
    std::string name = test.param.postScriptName;
    std::erase(name, '-');
    return name;
});

// A font of several faces, glyphs at odd places: they are in no package that all have, and drawn from the seeds.
TEST(Type42, DrawsWhatLiesInFilesOfOtherShapes) {
    const std::string folder = sourcePath("fuzz/corpus/type42/");
    struct File {
        const char* name;
        UInt32 face;
    };
    for (const File& file : {File{"collection.ttc", 0}, File{"collection.ttc", 1}, File{"odd-places.ttf", 0},
                             File{"beyond-bmp.ttf", 0}, File{"composite.ttf", 0}}) {
        SCOPED_TRACE(file.name + std::to_string(file.face));
        FontRefusal refusal = FontRefusal::none;
        const std::string program = ConvertFontFile(folder + file.name, file.face, "Test", &refusal);
        const FontComparison result = CompareWithFreeType(folder + file.name, file.face, "Test", program);
        EXPECT_EQ(result.failure, "");
        EXPECT_GE(result.glyphs, 1);
        EXPECT_LT(result.difference, 0.02);
    }
}

// ---- names

TEST(Type42, NamesEveryCharacterAndWhatIsLeft) {
    const FontProgram font = read(convert(seed("composite.ttf")));
    const unsigned a = font.glyphs.at("A");
    EXPECT_EQ(font.glyphs.at("uni0041"), a);
    EXPECT_EQ(font.glyphs.at("eacute"), font.glyphs.at("uni00E9"));
    EXPECT_EQ(font.glyphs.at(".notdef"), 0U);
    EXPECT_EQ(font.encoding.at('A'), "A");
    EXPECT_EQ(font.encoding.at(0xE9), "eacute");
    EXPECT_FALSE(font.encoding.contains('B'));
    // The accent, which only the composite glyph uses.
    EXPECT_GT(font.glyphs.size(), 2 * font.encoding.size() + 1);

    const FontProgram nameless = read(convert(seed("no-names.ttf")));
    EXPECT_EQ(nameless.glyphs.at("a"), nameless.glyphs.at("uni0061"));

    const FontProgram far = read(convert(seed("beyond-bmp.ttf")));
    EXPECT_TRUE(far.glyphs.contains("u1D538"));
    // The one glyph of both blanks has a single name in the font.
    EXPECT_EQ(far.encoding.at(0xA0), "nonbreakingspace");
}

TEST(Type42, ReachesSymbolsAndMacintoshCharacters) {
    const FontProgram symbols = read(convert(seed("symbol.ttf")));
    EXPECT_EQ(symbols.glyphs.at("uniF041"), symbols.glyphs.at("uni0041"));
    EXPECT_EQ(symbols.encoding.at('B'), "B");
    // 0x8E is an e with an acute accent there.
    const FontProgram mac = read(convert(seed("mac-roman.ttf")));
    EXPECT_EQ(mac.encoding.at(0xE9), "eacute");
    EXPECT_EQ(mac.glyphs.at("uni00E9"), mac.glyphs.at("B"));
    // Font programs that lack a standard name are no use for those who encode them anew.
    EXPECT_TRUE(mac.glyphs.contains("A"));
}

TEST(Type42, KeepsNamesApartThatTheFontGivesTwice) {
    // Both letters are called as the first one.
    const std::string font = seed("symbol.ttf");
    const std::size_t names = 34;
    const unsigned nameOfA = BigEndian(font, placeOf(font, "post").offset + names + 2, 2);
    const FontProgram program = read(convert(with(font, "post", names + 4, nameOfA)));
    EXPECT_EQ(program.glyphs.at("A"), 1U);
    EXPECT_EQ(program.glyphs.at("uni0042"), 2U);
}

TEST(Type42, CutsLongFontsBetweenGlyphs) {
    const auto face = FindFontFace("DroidSansFallback");
    ASSERT_TRUE(face);
    FontRefusal refusal = FontRefusal::none;
    const FontProgram font = read(ConvertFontFile(face->path, face->index, "Test", &refusal));
    EXPECT_GT(font.strings.size(), 50U);
    // Glyph by glyph as the file has them, although they moved to even places.
    const std::string file = readFile(face->path);
    const std::size_t glyf = placeOf(file, "glyf").offset;
    const std::size_t loca = placeOf(file, "loca").offset;
    const std::size_t count = BigEndian(file, placeOf(file, "maxp").offset + 4, 2);
    std::size_t different = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t start = BigEndian(file, loca + i * 4, 4);
        const std::string_view original =
            std::string_view(file).substr(glyf + start, BigEndian(file, loca + i * 4 + 4, 4) - start);
        const std::size_t place = BigEndian(*font.table("loca"), i * 4, 4);
        different += font.table("glyf")->substr(place, original.size()) == original ? 0 : 1;
    }
    EXPECT_GT(count, 40000U);
    EXPECT_EQ(different, 0U);
}

// ---- refused

TEST(Type42, RespectsEmbeddingRights) {
    const std::string font = seed("symbol.ttf");
    const std::string restricted = with(font, "OS/2", 8, 0x0002);
    EXPECT_EQ(refusalOf(restricted), FontRefusal::embeddingRestricted);
    EXPECT_EQ(RefusalAtFirstSight({reinterpret_cast<const UInt8*>(restricted.data()), restricted.size()}, 0),
              FontRefusal::embeddingRestricted);
    EXPECT_EQ(refusalOf(with(font, "OS/2", 8, 0x0102)), FontRefusal::embeddingRestricted);
    EXPECT_EQ(refusalOf(with(font, "OS/2", 8, 0x0204)), FontRefusal::bitmapsOnly);
    EXPECT_EQ(refusalOf(with(font, "OS/2", 8, 0x0004)), FontRefusal::none);
    EXPECT_EQ(refusalOf(with(font, "OS/2", 8, 0x0006)), FontRefusal::none) << "the most generous right counts";
    EXPECT_EQ(refusalOf(with(font, "OS/2", 8, 0x0108)), FontRefusal::none) << "it is embedded whole";
    EXPECT_EQ(refusalOf(withoutTable(font, "OS/2")), FontRefusal::none);
}

TEST(Type42, RefusesWhatIsNoTrueTypeFont) {
    EXPECT_EQ(refusalOf(""), FontRefusal::notAFont);
    EXPECT_EQ(refusalOf("wOF2 and so on"), FontRefusal::notAFont);
    EXPECT_EQ(refusalOf("%!PS-AdobeFont-1.0"), FontRefusal::postScriptOutlines);
    EXPECT_EQ(refusalOf(seed("postscript-outlines.otf")), FontRefusal::postScriptOutlines);
    EXPECT_EQ(refusalOf(withTableCalled(seed("symbol.ttf"), "OS/2", "fvar")), FontRefusal::variableOutlines);
    EXPECT_EQ(refusalOf(withoutTable(seed("symbol.ttf"), "glyf")), FontRefusal::noOutlines);
    EXPECT_EQ(refusalOf(withoutTable(seed("symbol.ttf"), "cmap")), FontRefusal::noCharacters);
    EXPECT_EQ(refusalOf(seed("symbol.ttf"), 1), FontRefusal::noSuchFace);
    EXPECT_EQ(refusalOf(seed("collection.ttc"), 2), FontRefusal::noSuchFace);
}

TEST(Type42, RefusesNamesThatPostScriptCannotHave) {
    const std::string font = seed("symbol.ttf");
    for (const char* name : {"", "two words", "a/b", "a(b", "100%", "\xC3\xA9", "line\nbreak"}) {
        EXPECT_EQ(refusalOf(font, 0, name), FontRefusal::unusableName) << name;
    }
    EXPECT_EQ(refusalOf(font, 0, std::string(128, 'x').c_str()), FontRefusal::unusableName);
    EXPECT_EQ(refusalOf(font, 0, std::string(127, 'x').c_str()), FontRefusal::none);
}

TEST(Type42, RefusesTablesThatContradictEachOther) {
    const std::string font = seed("composite.ttf");
    EXPECT_EQ(refusalOf(font.substr(0, font.size() / 2)), FontRefusal::damaged);
    EXPECT_EQ(refusalOf(with(font, "head", 12, 0, 4)), FontRefusal::damaged) << "magic number";
    EXPECT_EQ(refusalOf(with(font, "head", 18, 0)), FontRefusal::damaged) << "no units in an em";
    EXPECT_EQ(refusalOf(with(font, "head", 50, 1)), FontRefusal::damaged) << "long offsets";
    EXPECT_EQ(refusalOf(with(font, "maxp", 4, 6000)), FontRefusal::damaged) << "glyphs";
    EXPECT_EQ(refusalOf(with(font, "maxp", 4, 0)), FontRefusal::damaged) << "no glyphs";
    EXPECT_EQ(refusalOf(with(font, "hhea", 34, 0)), FontRefusal::damaged) << "no advances";
    EXPECT_EQ(refusalOf(with(font, "loca", 2, 0xffff)), FontRefusal::damaged) << "a glyph behind the end";
    EXPECT_EQ(refusalOf(withTableLength(font, "hmtx", 4)), FontRefusal::damaged) << "advances that end too early";
    for (const char* table : {"head", "maxp", "hhea", "hmtx", "loca"}) {
        EXPECT_EQ(refusalOf(withoutTable(font, table)), FontRefusal::damaged) << table;
    }
}

TEST(Type42, RefusesGlyphsThatNeverEnd) {
    const std::string font = seed("composite.ttf");
    const std::size_t glyf = placeOf(font, "glyf").offset;
    const std::size_t loca = placeOf(font, "loca").offset;
    const unsigned eacute = read(convert(font)).glyphs.at("eacute");
    const std::size_t glyph = glyf + 2 * BigEndian(font, loca + 2 * std::size_t{eacute}, 2);
    ASSERT_EQ(BigEndian(font, glyph, 2), 0xffffU) << "a glyph made of others";
    std::string endless = font;
    put(&endless, glyph + 12, eacute, 2);
    EXPECT_EQ(refusalOf(endless), FontRefusal::damaged);
    std::string missing = font;
    put(&missing, glyph + 12, 999, 2);
    EXPECT_EQ(refusalOf(missing), FontRefusal::damaged);
}

}  // namespace
