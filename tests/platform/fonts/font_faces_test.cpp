// Fonts by name and their files, in a folder of fonts of the test's own.

#include "platform/fonts/font_faces.h"

#include "platform/fonts/ATSFont.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/cf_values.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace {

namespace fs = std::filesystem;

/// The font cache is read once in a process, so all tests of this program have the same fonts.
class Fonts : public testing::Environment {
public:
    void SetUp() override {
        fs::create_directory(folder_.path() / "fonts");
        add("composite.ttf", "plain.ttf");
        add("composite.ttf", "the same again.ttf");
        add("collection.ttc", "collection.ttc");
        add("postscript-outlines.otf", "outlines.otf");
        std::ofstream(folder_ / "fonts.conf")
            << "<fontconfig><dir>" << (folder_ / "fonts") << "</dir><cachedir>" << (folder_ / "cache") << "</cachedir>"
            << "<alias><family>Arial</family><prefer><family>outlines</family><family>collection</family></prefer></"
               "alias>"
            << "</fontconfig>";
        setenv("FONTCONFIG_FILE", (folder_ / "fonts.conf").c_str(), 1);
    }

    [[nodiscard]] std::string path(const char* name) const { return (folder_.path() / "fonts" / name).string(); }

private:
    void add(const char* seed, const char* name) {
        fs::copy_file(fs::path(sourcePath("fuzz/corpus/type42")) / seed, path(name));
    }

    TemporaryFolder folder_;
};

Fonts* fonts() {
    static auto* const environment = new Fonts;  // googletest's, once it is added
    return environment;
}

const auto* const added = testing::AddGlobalTestEnvironment(fonts());

TEST(FontFaces, AreListedOnceWithTheirPlaceAndKind) {
    const std::vector<FontFace> faces = InstalledFontFaces();
    ASSERT_EQ(faces.size(), 4U);
    const auto named = [&faces](std::string_view name) {
        return *std::find_if(faces.begin(), faces.end(),
                             [name](const FontFace& face) { return face.postScriptName == name; });
    };
    EXPECT_EQ(named("DejaVuSans").path, fonts()->path("plain.ttf"));
    EXPECT_EQ(named("DejaVuSans").outlines, FontOutlines::trueType);
    EXPECT_EQ(named("WenQuanYiMicroHei").index, 0U);
    EXPECT_EQ(named("WenQuanYiMicroHeiMono").index, 1U);
    EXPECT_EQ(std::count_if(faces.begin(), faces.end(),
                            [](const FontFace& face) { return face.outlines == FontOutlines::other; }),
              1);
    EXPECT_TRUE(std::is_sorted(faces.begin(), faces.end(),
                               [](const FontFace& left, const FontFace& right) { return left.family < right.family; }));
}

TEST(FontFaces, AreFoundByTheirWholeNameOnly) {
    EXPECT_TRUE(FindFontFace("DejaVuSans"));
    for (const char* name : {"", "DejaVu", "dejavusans:index=0", "DejaVuSans,WenQuanYiMicroHei", "Arial", "*"}) {
        EXPECT_FALSE(FindFontFace(name)) << name;
    }
}

TEST(FontFaces, StandInForFontsOfOtherDesktops) {
    // The settings would rather have a font that cannot be embedded.
    const auto arial = FindFontFace("ArialMT");
    ASSERT_TRUE(arial);
    EXPECT_EQ(arial->path, fonts()->path("collection.ttc"));
    EXPECT_EQ(arial->outlines, FontOutlines::trueType);
}

TEST(ATSFont, LeadsToTheFile) {
    const ATSFontRef font = ATSFontFindFromPostScriptName(CFSTR("WenQuanYiMicroHeiMono"), kATSOptionFlagsDefault);
    ASSERT_NE(font, kATSFontRefUnspecified);
    EXPECT_EQ(ATSFontFindFromPostScriptName(CFSTR("WenQuanYiMicroHeiMono"), kATSOptionFlagsDefault), font);
    EXPECT_NE(ATSFontFindFromPostScriptName(CFSTR("WenQuanYiMicroHei"), kATSOptionFlagsDefault), font);
    FSRef file;
    EXPECT_EQ(FMGetFontContainer(FMGetFontFromATSFontRef(font), &file), noErr);
    EXPECT_EQ(file.path, fonts()->path("collection.ttc"));
    EXPECT_EQ(FMGetFontIndex(FMGetFontFromATSFontRef(font)), 1U);

    EXPECT_EQ(ATSFontFindFromPostScriptName(CFSTR("Missing"), kATSOptionFlagsDefault), kATSFontRefUnspecified);
    EXPECT_EQ(ATSFontFindFromPostScriptName(nullptr, kATSOptionFlagsDefault), kATSFontRefUnspecified);
    EXPECT_EQ(FMGetFontContainer(FMGetFontFromATSFontRef(kATSFontRefUnspecified), &file), kFMInvalidFontErr);
    EXPECT_EQ(FMGetFontContainer(FMGetFontFromATSFontRef(1000), &file), kFMInvalidFontErr);
}

TEST(ATSFont, OfAFileThatWasRemovedSince) {
    const ATSFontRef font = ATSFontFindFromPostScriptName(CFSTR("DejaVuSans"), kATSOptionFlagsDefault);
    const std::string path = fonts()->path("plain.ttf");
    fs::rename(path, path + ".away");
    FSRef file;
    EXPECT_EQ(FMGetFontContainer(FMGetFontFromATSFontRef(font), &file), fnfErr);
    fs::rename(path + ".away", path);
}

}  // namespace
