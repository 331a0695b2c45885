// The printers' own code for mirrored, turned, negative, lighter and darker pages, as `lp` sends it: seen on pictures
// of the pages that Ghostscript draws.
#include "tests/driver/pages/pdf_maker.h"
#include "tests/platform/printing/printing_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace {

/// A page in squares of half an inch: how bright each is on average, from 0 to 255.
struct Picture {
    std::size_t width = 0;
    std::size_t height = 0;
    std::vector<int> squares;

    [[nodiscard]] int at(std::size_t x, std::size_t y) const { return squares[y * width + x]; }
};

/// Pages that have no differences but where letters have their edges.
bool operator==(const Picture& one, const Picture& other) {
    constexpr int kEdges = 6;
    return one.width == other.width && one.height == other.height &&
           std::ranges::equal(one.squares, other.squares, [](int a, int b) { return std::abs(a - b) <= kEdges; });
}

const std::string kDocument =
    pdfOf({{.content = "0.5 g 36 36 108 36 re f"}, {.content = "0.25 g 216 360 36 144 re f"}, {}});

class ImageCode : public testing::Test {
protected:
    ImageCode() { folder_.add("document.pdf", kDocument); }

    std::string job(const std::string& options) const {
        const auto [text, status] =
            run("(/usr/sbin/cupsfilter -p '" + ppd_.string() + "' -m printer/x -e -i " + "application/pdf " + options +
                " '" + (folder_ / "document.pdf") + "' 2>/dev/null)");
        EXPECT_EQ(status, 0) << options;
        return text;
    }

    std::vector<Picture> draw(const std::string& job) const {
        constexpr std::size_t kSquare = 36;
        const auto file = folder_.add("job.ps", job);
        run("rm -f '" + (folder_ / "page-") + "'*");
        const auto [words, status] = run("gs -q -dNOPAUSE -dBATCH -dSAFER -sDEVICE=pgmraw -r72 -o '" +
                                         (folder_ / "page-%d.pgm") + "' '" + file.string() + "'");
        EXPECT_EQ(status, 0) << words;
        std::vector<Picture> pictures;
        for (int page = 1; std::filesystem::exists(folder_ / ("page-" + std::to_string(page) + ".pgm")); ++page) {
            std::istringstream image(readFile(folder_ / ("page-" + std::to_string(page) + ".pgm")));
            std::string line;
            std::getline(image, line);
            std::getline(image, line);  // the maker
            std::size_t width = 0;
            std::size_t height = 0;
            int most = 0;
            image >> width >> height >> most;
            image.get();
            Picture& picture = pictures.emplace_back(Picture{width / kSquare, height / kSquare, {}});
            picture.squares.resize(picture.width * picture.height);
            for (std::size_t i = 0; i < width * height; ++i) {
                const std::size_t square = i / width / kSquare * picture.width + i % width / kSquare;
                picture.squares[square] += image.get();
            }
            for (int& square : picture.squares) {
                square /= static_cast<int>(kSquare * kSquare);
            }
        }
        return pictures;
    }

    TemporaryFolder folder_;
    std::filesystem::path ppd_ = kZR420;
};

/// What becomes of a page.
Picture turned(const Picture& page, bool isMirrored, bool isRotated, bool isNegative) {
    Picture result = page;
    for (std::size_t y = 0; y < page.height; ++y) {
        for (std::size_t x = 0; x < page.width; ++x) {
            const int square =
                page.at(isMirrored != isRotated ? page.width - 1 - x : x, isRotated ? page.height - 1 - y : y);
            result.squares[y * page.width + x] = isNegative ? 255 - square : square;
        }
    }
    return result;
}

/// Adds code to a page's setup.
std::string withCode(std::string job, int page, const std::string& code) {
    std::size_t at = job.find("\n%%Page: " + std::to_string(page) + " ");
    at = job.find("%%EndPageSetup", at);
    EXPECT_NE(at, std::string::npos);
    return job.insert(at, code + "\n");
}

}  // namespace

TEST_F(ImageCode, TurnsAllPages) {
    const std::vector<Picture> plain = draw(job(""));
    ASSERT_EQ(plain.size(), 3U);
    EXPECT_NEAR(plain[0].at(1, 20), 128, 1);
    for (int i = 1; i < 8; ++i) {
        ppd_ = i % 2 == 0 ? kZR410 : kZR420;
        const bool isMirrored = (i & 1) != 0;
        const bool isRotated = (i & 2) != 0;
        const bool isNegative = (i & 4) != 0;
        const auto value = [](bool isOn) { return isOn ? "True" : "False"; };
        const std::string options = std::string("-o TRMirrorPrint=") + value(isMirrored) +
                                    " -o TRRotate180=" + value(isRotated) + " -o TRNegativePrint=" + value(isNegative);
        const std::vector<Picture> pages = draw(job(options));
        ASSERT_EQ(pages.size(), 3U);
        for (std::size_t page = 0; page < 3; ++page) {
            EXPECT_EQ(pages[page], turned(plain[page], isMirrored, isRotated, isNegative)) << options << page;
        }
    }
}

TEST_F(ImageCode, HoldsOnPaperThatAPageChooses) {
    const std::string all =
        "-o TRMirrorPrint=True -o TRRotate180=True -o TRNegativePrint=True -o TRImageQuality=Light ";
    std::string text = job("-o pdftops-renderer=pdftops " + all);
    text.resize(text.find("%%Page: 1 1"));
    const std::string page = "save 0.25 setgray 36 36 36 36 rectfill restore showpage\n";
    const std::vector<Picture> pages =
        draw("%!\n<</BeginPage{pop 72 36 36 36 rectfill}>>setpagedevice\n" + text + page +
             "<</PageSize[612 1008]/ImagingBBox null>>setpagedevice\n" + page + page);
    ASSERT_EQ(pages.size(), 3U);
    EXPECT_EQ(pages[1].height, 28U);
    for (const Picture& picture : pages) {
        const int lighter = 199;  // 255 * 0.75 ^ 0.86: three quarters gray, and then slightly lighter
        EXPECT_NEAR(picture.at(1, 1), lighter, 1);
        EXPECT_EQ(picture.at(2, 1), 255) << "what another BeginPage drew";
        EXPECT_EQ(picture.at(5, 5), 0);
    }
}

TEST_F(ImageCode, ShadesInEitherOrder) {
    // A page's own code comes behind the job's.
    const std::vector<Picture> late =
        draw(withCode(withCode(job("-o TRNegativePrint=True"), 1, "/Exponent 0.6 TavroImage/Choose get exec"), 2,
                      "/Exponent 1 TavroImage/Choose get exec"));
    const std::vector<Picture> early =
        draw(withCode(withCode(job("-o TRImageQuality=Lightest"), 1, "/Negative true TavroImage/Choose get exec"), 2,
                      "/Negative false TavroImage/Choose get exec"));
    ASSERT_EQ(late.size(), 3U);
    EXPECT_EQ(late[0], early[0]);
    EXPECT_EQ(late[0].at(1, 20), 168) << "half gray, lighter";
    EXPECT_EQ(late[1], turned(draw(job(""))[1], false, false, true));
    EXPECT_EQ(early[1], draw(job("-o TRImageQuality=Lightest"))[1]) << "white paper again";
    EXPECT_EQ(early[2].at(0, 0), 255);
}
