// Watermarks in the job: pages as Ghostscript draws them, by the real program, from a store of the plug-in's own.
#include "tests/host/program/watermark_fixture.h"
#include "tests/support/cf_values.h"
#include "tests/support/places.h"

#include <algorithm>
#include <array>

namespace {

/// Where a page has the watermark's light blue.
struct Ink {
    int pixels = 0;
    int left = 0, top = 0, right = 0, bottom = 0;
    double x = 0, y = 0;  // the centre of gravity

    double midX() const { return (left + right) / 2.0; }
    double midY() const { return (top + bottom) / 2.0; }
    bool isCentredIn(const Page& page) const {
        return pixels > 0 && std::abs(midX() - page.width / 2.0) < 6 && std::abs(midY() - page.height / 2.0) < 6;
    }
};

Ink inkOf(const Page& page) {
    Ink ink{0, page.width, page.height, 0, 0};
    for (int y = 0; y < page.height; ++y) {
        for (int x = 0; x < page.width; ++x) {
            const unsigned char* const pixel = page.at(x, y);
            if (pixel[2] < pixel[0] + 40) {
                continue;
            }
            ++ink.pixels;
            ink.left = std::min(ink.left, x);
            ink.right = std::max(ink.right, x);
            ink.top = std::min(ink.top, y);
            ink.bottom = std::max(ink.bottom, y);
            ink.x += x;
            ink.y += y;
        }
    }
    ink.x /= std::max(ink.pixels, 1);
    ink.y /= std::max(ink.pixels, 1);
    return ink;
}

/// A text in large letters and light blue.
WatermarkRecord textMark(const char* text, const char* font = "LiberationSans") {
    WatermarkRecord record{};
    std::string(text).copy(record.text, sizeof record.text - 1);
    std::string(font).copy(record.fontName, sizeof record.fontName - 1);
    record.kind = kTextWatermark;
    record.fontSize = 50;
    record.scale = 200;
    record.density = 100;
    record.fontColor = {0.5F, 0.5F, 1.0F, 1.0F};
    return record;
}

constexpr const char* kBlack = "<</PageSize[595 842]>>setpagedevice 100 100 395 642 rectfill showpage\n";

}  // namespace

TEST_F(WatermarkJobs, HaveTheExamplesDraftInTheMiddleOfTheFirstPage) {
    std::string script = contentOf(sourcePath("docs/examples/watermark.tavro-script"));
    script.erase(script.rfind("ok"));
    const auto pages = print("set Host:20 2\n" + script, kTenPages);
    EXPECT_EQ(errors, "");
    ASSERT_EQ(pages.size(), 20U);  // each page twice, one after the other
    const Ink ink = inkOf(pages[0]);
    EXPECT_TRUE(ink.isCentredIn(pages[0])) << ink.midX() << " " << ink.midY();
    EXPECT_GT(ink.right - ink.left, 100);
    EXPECT_NEAR(ink.right - ink.left, ink.bottom - ink.top, 10);  // turned by 45 degrees
    EXPECT_EQ(inkOf(pages[1]).pixels, ink.pixels);
    for (std::size_t i = 2; i < pages.size(); ++i) {
        EXPECT_EQ(inkOf(pages[i]).pixels, 0) << i;
    }
}

TEST_F(WatermarkJobs, AreInFrontOrBehind) {
    keep(textMark("Mark"));
    const std::string path = document(std::string(kBlack) + kPortrait);
    const std::string onA4 = "choose Host:40 \"A4 (210 x 297 mm)\"\n" + kFirstMark;
    const auto front = print(onA4, path);
    const auto behind = print(onA4 + "set TVRw:300 1", path);
    ASSERT_EQ(front.size(), 2U);
    ASSERT_EQ(behind.size(), 2U);
    EXPECT_EQ(front[0].width, 595);
    for (const Page& page : {front[0], front[1], behind[1]}) {
        EXPECT_TRUE(inkOf(page).isCentredIn(page));
    }
    EXPECT_EQ(inkOf(behind[0]).pixels, 0);  // the black is over it
}

TEST_F(WatermarkJobs, AreTurnedWithTheirPages) {
    keep(textMark("MM........"));  // the text begins where most of the ink is
    const std::string path = document(std::string(kLandscape) + kPortrait + kLandscape);
    const auto expectTurned = [](const Page& page, double right, double down) {
        const Ink ink = inkOf(page);
        EXPECT_TRUE(ink.isCentredIn(page));
        EXPECT_EQ(ink.right - ink.left > ink.bottom - ink.top, right != 0);
        EXPECT_LT((ink.x - ink.midX()) * right + (ink.y - ink.midY()) * down, -10);
    };
    const auto portrait = print(kFirstMark, path);
    ASSERT_EQ(portrait.size(), 3U);
    expectTurned(portrait[0], 0, -1);  // across the paper: the filters turn it
    expectTurned(portrait[1], 1, 0);
    const auto range = print("type Host:31 \"2-3\"\n" + kFirstMark, path);
    ASSERT_EQ(range.size(), 2U);
    expectTurned(range[0], 1, 0);
    expectTurned(range[1], 0, -1);
    for (const auto& [orientation, down] : {std::pair{"2", -1}, {"3", 1}}) {
        for (const Page& page : print("set Host:41 " + std::string(orientation) + "\n" + kFirstMark, path)) {
            expectTurned(page, 0, down);
        }
    }
}

TEST_F(WatermarkJobs, ShowWhatTheirFontHas) {
    keep(textMark("\u00C4\u6F22\U0001F600 (x)/"));
    const auto pages = print(kFirstMark, document(kPortrait));
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_GT(inkOf(pages[0]).pixels, 1000);
}

TEST_F(WatermarkJobs, MayBePictures) {
    WatermarkRecord record{};
    std::string("picture").copy(record.fileName, sizeof record.fileName - 1);
    const std::string path = add("picture.ppm", "P3 2 1 255 0 0 255 255 255 255\n");
    path.copy(record.filePath, sizeof record.filePath - 1);
    record.scale = 1000;
    record.density = 40;
    record.xOffset = 100;
    record.yOffset = 200;
    keep(record);
    const std::string black = document(kBlack);
    const auto pages = print("choose Host:40 \"A4 (210 x 297 mm)\"\n" + kFirstMark, black);
    EXPECT_EQ(errors, "");
    ASSERT_EQ(pages.size(), 1U);
    const auto colorAt = [&page = pages[0]](int x, int y = 0) {
        const unsigned char* const pixel = page.at(297 + 100 + x, 421 - 200 + y);
        return std::array<int, 3>{pixel[0], pixel[1], pixel[2]};
    };
    constexpr std::array<int, 3> kPaper{};  // the document's black
    EXPECT_EQ(colorAt(-15), kPaper);
    // Strips of the picture that let 60 percent of the page through.
    int blue = 0;
    for (int y = -4; y < 5; ++y) {
        blue += colorAt(-5, y)[2];
    }
    EXPECT_NEAR(blue / 9.0, 0.4 * 255, 12);
    EXPECT_EQ(colorAt(5), kPaper);  // white is clear

    std::filesystem::remove(path);
    EXPECT_EQ(print(kFirstMark, black).size(), 1U);
    EXPECT_EQ(errors, "tavro-print: watermark: picture: " + path + ": No such file or directory\n");
}

TEST_F(WatermarkJobs, LackWhatCannotBeDrawnAndSaySo) {
    keep(textMark("Mark", "NoSuchFont"));
    const auto pages = print(kFirstMark, document(kPortrait));
    EXPECT_EQ(errors, "tavro-print: watermark: Mark: its font NoSuchFont is not stored\n");
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_EQ(inkOf(pages[0]).pixels, 0);

    const auto program = makeCFData("no font\n");
    storeFontData(kWatermarkStore, CFSTR("NoSuchFont"), program.get());
    EXPECT_EQ(print(kFirstMark, document(kPortrait)).size(), 1U);
    EXPECT_EQ(errors, "tavro-print: watermark: Mark: its font is damaged\n");
}

TEST_F(WatermarkJobs, LeaveTheCoverSheetOfAFaxAlone) {
    keep(textMark("Mark"));
    const std::string fax = add("fax.plist", R"(<plist version="1.0"><dict><key>PMPrintSettingsTicket</key><dict>
        <key>com.tavro.print.JobType</key><dict><key>JobType</key><integer>5</integer></dict>
        <key>com.tavro.print.FaxRecipientList</key><array><dict>
          <key>LastName</key><string>Example</string><key>FaxNumber</key><string>5550199</string>
        </dict></array>
        <key>com.tavro.print.FaxOptions</key><dict><key>CoverSheet</key><true/></dict></dict></dict></plist>)");
    for (const bool firstOnly : {false, true}) {
        const auto pages = print(kFirstMark + (firstOnly ? "click TVRw:200" : ""),
                                 document(std::string(kPortrait) + kPortrait), 1, {"--ticket-in", fax});
        EXPECT_EQ(errors, "");
        ASSERT_EQ(pages.size(), 3U);
        EXPECT_EQ(inkOf(pages[0]).pixels, 0);
        EXPECT_TRUE(inkOf(pages[1]).isCentredIn(pages[1])) << "the document's first page";
        EXPECT_EQ(inkOf(pages[2]).pixels > 0, !firstOnly);
    }
}

TEST_F(WatermarkJobs, MayBeMadeOfAPictureInTheEditor) {
    add("stamp.ppm", "P3 1 1 255 0 0 255\n");
    const auto pages = print(
        "panel Watermark\nclick TVRw:500\nclick @kindPicture\nexpect @ok disabled\nfile stamp.ppm\n"
        "click @choosePicture\nexpect @pictureName text \"stamp.ppm\"\nset @angle 0\nset @density 100\n"
        "set @scale 1000\nclick @ok\nexpect TVRw:100 rows 5",
        document(kPortrait));
    EXPECT_EQ(errors, "");
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_TRUE(inkOf(pages[0]).isCentredIn(pages[0]));
    EXPECT_NEAR(inkOf(pages[0]).pixels, 100, 1);
}
