// What the watermark editor shows, beside what is printed: its drawing of a page and the job's page by Ghostscript.
#include "tests/host/program/watermark_fixture.h"
#include "watermark/editor/mark_painter.h"
#include "watermark/editor/mark_values.h"

#include <QImage>
#include <QTransform>
#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr int kPixelsAPoint = 2;

/// Where an image is not white, in points.
struct Ink {
    double left = 0, top = 0, right = 0, bottom = 0;
    double x = 0, y = 0;              // the centre of gravity
    std::array<double, 3> amounts{};  // of red, green and blue that the paper does not show; square points
};

Ink inkOf(const QImage& image) {
    constexpr int kFaint = 16;  // the pale rim of a letter lies on a pixel or beside it
    QRect box;
    Ink ink;
    double all = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            const std::array<int, 3> dark{255 - qRed(pixel), 255 - qGreen(pixel), 255 - qBlue(pixel)};
            const int sum = dark[0] + dark[1] + dark[2];
            if (sum > kFaint) {
                box |= QRect(x, y, 1, 1);
            }
            for (std::size_t i = 0; i < dark.size(); ++i) {
                ink.amounts[i] += dark[i] / (255.0 * kPixelsAPoint * kPixelsAPoint);
            }
            ink.x += sum * (x + 0.5) / kPixelsAPoint;
            ink.y += sum * (y + 0.5) / kPixelsAPoint;
            all += sum;
        }
    }
    const auto points = [](int pixels) { return pixels / double(kPixelsAPoint); };
    ink.left = points(box.left());
    ink.top = points(box.top());
    ink.right = points(box.right() + 1);
    ink.bottom = points(box.bottom() + 1);
    ink.x /= all;
    ink.y /= all;
    return ink;
}

struct Sheet {
    const char* name;
    const char* document;
    const char* choice;  // lines of the script
    PageSize page;       // as it is read
    int turns;           // of the printed sheet, by quarters to the right, until it can be read
};
void PrintTo(const Sheet& sheet, std::ostream* output) {
    *output << sheet.name;
}
constexpr Sheet kSheets[] = {
    // name, document, choice, page, turns
    {"Letter", kPortrait, "", {612, 792}, 0},
    {"A4", kPortrait, "choose Host:40 \"A4 (210 x 297 mm)\"\n", {595, 842}, 0},
    {"Landscape", kLandscape, "", {792, 612}, 1},
    {"LandscapeA4", kPortrait, "choose Host:40 \"A4 (210 x 297 mm)\"\nset Host:41 3\n", {842, 595}, 3},
};

/// What the user sets in the editor.
struct Wish {
    const char* name;
    const char* text;  // null: the picture
    SInt32 angle;
    float x, y;  // points
    WatermarkColor color;
    SInt32 density;
    SInt32 scale;
};
constexpr Wish kWishes[] = {
    // name, text, angle, x, y, color, density, scale
    {"text", "Draft", 0, 0, 0, {0, 0, 0, 1}, 100, 150},
    {"turned and moved text", "Copy gj", 45, 60, -100, {0, 0, 1, 0.5F}, 50, 100},
    {"picture", nullptr, 0, -40, 90, {}, 100, 100},
    {"turned picture", nullptr, 45, 0, 0, {}, 40, 150},
};

class WatermarkPreview : public WatermarkJobs, public testing::WithParamInterface<Sheet> {
protected:
    WatermarkPreview() : picture_(folder / "stamp.png") {
        QImage picture(240, 100, QImage::Format_RGB32);
        picture.fill(QColor(200, 30, 60));
        QPainter(&picture).fillRect(0, 0, 60, 40, QColor(20, 90, 160));
        QPainter(&picture).fillRect(100, 30, 100, 40, Qt::white);
        EXPECT_TRUE(picture.save(QString::fromStdString(picture_)));
    }

    /// The record that the editor hands back.
    WatermarkRecord edited(const Wish& wish) const {
        WatermarkRecord record = {};
        record.kind = wish.text != nullptr ? kTextWatermark : kImageWatermark;
        SetText(record.text, wish.text != nullptr ? wish.text : "");
        SetText(record.fileName, "stamp.png");
        SetText(record.filePath, picture_);
        SetText(record.fontName, "LiberationSerif-Italic");
        record.fontSize = 96;
        record.angle = wish.angle;
        record.xOffset = wish.x;
        record.yOffset = wish.y;
        record.wellColor = wish.color;
        record.density = wish.density;
        record.scale = wish.scale;
        return EndOfEditing(StartOfEditing(record));
    }

    QImage preview(const WatermarkRecord& record, PageSize page) {
        QImage image(static_cast<int>(page.width) * kPixelsAPoint, static_cast<int>(page.height) * kPixelsAPoint,
                     QImage::Format_RGB32);
        image.fill(Qt::white);
        MarkDrawing drawing(&fonts_);
        drawing.setRecord(record);
        QPainter painter(&image);
        drawing.draw(&painter, PageView(page, image.width(), image.height(), 0), page);
        return image;
    }

    QImage printed(const WatermarkRecord& record, const Sheet& sheet) {
        keep(record);
        const auto pages = print(sheet.choice + kFirstMark, document(sheet.document), kPixelsAPoint);
        EXPECT_EQ(errors, "");
        EXPECT_EQ(pages.size(), 1U);
        if (pages.size() != 1) {
            return {};
        }
        const Page& page = pages.front();
        const QImage image(page.at(0, 0), page.width, page.height, qsizetype{3} * page.width, QImage::Format_RGB888);
        return image.transformed(QTransform().rotate(90 * sheet.turns)).convertToFormat(QImage::Format_RGB32);
    }

private:
    std::string picture_;
    MarkFonts fonts_;
};

}  // namespace

TEST_P(WatermarkPreview, IsThePrintedPage) {
    for (const Wish& wish : kWishes) {
        SCOPED_TRACE(wish.name);
        const WatermarkRecord record = edited(wish);
        const QImage paper = printed(record, GetParam());
        const QImage screen = preview(record, GetParam().page);
        ASSERT_EQ(paper.size(), screen.size());
        const Ink onPaper = inkOf(paper);
        const Ink onScreen = inkOf(screen);
        ASSERT_GT(onScreen.right, onScreen.left);
        EXPECT_NEAR(onPaper.left, onScreen.left, 1);
        EXPECT_NEAR(onPaper.top, onScreen.top, 1);
        EXPECT_NEAR(onPaper.right, onScreen.right, 1);
        EXPECT_NEAR(onPaper.bottom, onScreen.bottom, 1);
        EXPECT_NEAR(onPaper.x, onScreen.x, 0.5);
        EXPECT_NEAR(onPaper.y, onScreen.y, 0.5);
        for (std::size_t i = 0; i < onPaper.amounts.size(); ++i) {
            // The fine dots of the screen are whole pixels of the printer's, and so a little larger.
            EXPECT_NEAR(onPaper.amounts[i], onScreen.amounts[i], 0.06 * onScreen.amounts[i] + 1) << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(OnEverySheet, WatermarkPreview, testing::ValuesIn(kSheets),
                         [](const testing::TestParamInfo<Sheet>& sheet) { return sheet.param.name; });
