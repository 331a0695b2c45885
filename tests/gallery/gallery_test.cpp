// The gallery: every window opens, draws itself and closes; dialogs do by script what their users do.
#include "tests/host/program/program_fixture.h"
#include "tests/support/places.h"

#include <QImage>
#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>

namespace {

namespace fs = std::filesystem;

const std::string kScripts = sourcePath("tests/gallery/scripts");

class GalleryTest : public ProgramTest {
protected:
    Run gallery(const Words& arguments, const Words& environment = {}) const {
        return start(TAVRO_GALLERY, arguments, environment);
    }
};

TEST_F(GalleryTest, DrawsEveryWindow) {
    const Run list = gallery({"--list"});
    ASSERT_EQ(list.status, 0) << list.errors;
    const Run render = gallery({"--render", folder / "pictures"});
    ASSERT_EQ(render.status, 0) << render.errors;
    EXPECT_EQ(render.errors, "");
    std::istringstream names(list.output);
    for (std::string name; std::getline(names, name);) {
        std::ranges::replace(name, '/', '-');
        QSize sizes[2];
        for (const std::string variant : {"light", "dark", "2x", "long", "large"}) {
            const QImage picture(QString::fromStdString(folder / "pictures/" + variant + "/" + name + ".png"));
            ASSERT_FALSE(picture.isNull()) << variant << " " << name;
            sizes[variant == "2x"] = variant == "light" || variant == "2x" ? picture.size() : sizes[variant == "2x"];
        }
        EXPECT_EQ(sizes[1], sizes[0] * 2) << name;
    }
}

/// The letter that stands behind each name of a window in the audit.
std::map<std::string, std::string> lettersOf(const std::string& audit) {
    std::map<std::string, std::string> letters;
    std::istringstream lines(audit);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t keys = line.find(": keys: ");
        if (keys != std::string::npos) {
            letters[line.substr(0, keys)] = line.substr(keys + 8);
        }
    }
    return letters;
}

std::string repeated(std::string letters) {
    std::ranges::sort(letters);
    std::string twice;
    for (std::size_t i = 1; i < letters.size(); ++i) {
        twice += letters[i] == letters[i - 1] ? letters.substr(i, 1) : "";
    }
    return twice;
}

void expectLettersOnce(const std::string& audit) {
    auto letters = lettersOf(audit);
    EXPECT_GT(letters.size(), 50u);
    for (const auto& [name, own] : letters) {
        EXPECT_EQ(repeated(own), "") << name;
    }
    // The panels share the print dialog with its own controls and with the selector.
    const std::string around = letters["PrintDialog-PrintDialog"] + letters["PDE_Shell-Window"];
    for (const char* panel :
         {"about", "advanced", "image-options", "layout", "paper-output", "special-pages", "watermark"}) {
        EXPECT_EQ(repeated(around + letters[panel]), "") << panel;
    }
}

TEST_F(GalleryTest, EveryControlHasANameAndAPlaceAlsoWithLargeText) {
    const Run audit = gallery({"--audit", folder / "audit"});
    ASSERT_EQ(audit.status, 0) << audit.errors;
    EXPECT_EQ(audit.output.find(": fault: "), std::string::npos) << audit.output;
    const std::string screen = add("screen.json", R"({"screens":[{"name":"large text","x":0,"y":0,"width":3000,
        "height":2000,"logicalDpi":144,"logicalBaseDpi":144,"dpr":1}]})");
    const Run large = gallery({"--audit", folder / "large"}, {"QT_QPA_PLATFORM=offscreen:configfile=" + screen});
    EXPECT_EQ(large.status, 0) << large.errors;
    EXPECT_EQ(large.output.find(": fault: "), std::string::npos) << large.output;

    expectLettersOnce(audit.output);
}

/// In every other language: all words have room, on an ordinary screen, with large text too.
TEST_F(GalleryTest, EveryLanguageHasRoom) {
    const std::string small = add("small.json", R"({"screens":[{"name":"small","x":0,"y":0,"width":1366,
        "height":768,"logicalDpi":96,"logicalBaseDpi":96,"dpr":1}]})");
    const std::string large = add("large.json", R"({"screens":[{"name":"large text","x":0,"y":0,"width":3000,
        "height":2000,"logicalDpi":144,"logicalBaseDpi":144,"dpr":1}]})");
    for (const auto& entry : fs::directory_iterator(stagePath("TavroPrint.bundle/Contents/Resources"))) {
        const std::string language = entry.path().stem().string();
        if (entry.path().extension() != ".lproj" || language == "en") {
            continue;
        }
        for (const std::string& screen : {small, large}) {
            const Run audit =
                gallery({"--audit", folder / "audit"},
                        {"LANGUAGE=" + language, "LC_ALL=C.UTF-8", "QT_QPA_PLATFORM=offscreen:configfile=" + screen});
            EXPECT_EQ(audit.status, 0) << audit.errors;
            EXPECT_EQ(audit.output.find(": fault: "), std::string::npos) << language << "\n" << audit.output;
            expectLettersOnce(audit.output);
        }
    }
}

TEST_F(GalleryTest, SaysWhatDoesNotOpen) {
    EXPECT_EQ(gallery({"--script", add("script", "open \"no such dialog\"\n")}).status, 3);
    EXPECT_EQ(gallery({"--script", add("script", "open Nothing/Window\n")}).status, 3);
}

class GalleryScript : public GalleryTest, public testing::WithParamInterface<std::string> {};

/// A script says itself what it expects. It runs in the locale that stands behind an "@" in its name.
TEST_P(GalleryScript, Passes) {
    const std::size_t at = GetParam().find('@');
    const Words locale = at != std::string::npos ? Words{"LC_ALL=" + GetParam().substr(at + 1) + ".UTF-8"} : Words{};
    const Run run =
        gallery({"--script", kScripts + "/" + GetParam() + ".tavro-script", "--shots", folder / "shots"}, locale);
    EXPECT_EQ(run.status, 0) << run.output << run.errors;
}

std::vector<std::string> scriptNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(kScripts)) {
        names.push_back(entry.path().stem().string());
    }
    std::ranges::sort(names);
    return names;
}

INSTANTIATE_TEST_SUITE_P(Dialogs, GalleryScript, testing::ValuesIn(scriptNames()), [](const auto& script) {
    std::string name = script.param;
    std::ranges::replace_if(
        name, [](char c) { return c == '-' || c == '@'; }, '_');
    return name;
});

}  // namespace
