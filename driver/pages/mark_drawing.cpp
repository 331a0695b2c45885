#include "driver/pages/mark_drawing.h"

#include "driver/pages/font_outlines.h"
#include "driver/pages/pdf_page.h"
#include "driver/pages/pdf_text.h"
#include "watermark/records/watermark_record.h"

#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFWriter.hh>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <span>
#include <utility>

namespace {

// ---- Dots

constexpr int kSide = 8;                 // of the matrix of dots
constexpr double kDotSize = 72.0 / 600;  // points: a dot of the coarsest printer of the house

// In which order the dots of a cell come as the color gets darker: two round spots a cell that grow towards each other,
// as printers screen a tint themselves.
constexpr std::array<std::array<int, kSide>, kSide> kOrder{{
    {24, 10, 12, 26, 35, 47, 49, 37},
    {8, 0, 2, 14, 45, 59, 61, 51},
    {22, 6, 4, 16, 43, 57, 63, 53},
    {30, 20, 18, 28, 33, 41, 55, 39},
    {34, 46, 48, 36, 25, 11, 13, 27},
    {44, 58, 60, 50, 9, 1, 3, 15},
    {42, 56, 62, 52, 23, 7, 5, 17},
    {32, 40, 54, 38, 31, 21, 19, 29},
}};

bool isDot(int x, int y, double coverage) {
    return kOrder[static_cast<std::size_t>(y % kSide)][static_cast<std::size_t>(x % kSide)] <
           std::lround(coverage * kSide * kSide);
}

/// A light color as a full one that covers a part of the paper.
struct ScreenedColor {
    MarkColor full;
    double coverage;  // 0 to 1
};

ScreenedColor screened(const MarkColor& light) {
    const double coverage = std::max({1 - light.red, 1 - light.green, 1 - light.blue});
    const auto full = [coverage](double ink) { return coverage > 0 ? 1 - (1 - ink) / coverage : 1.0; };
    return {{full(light.red), full(light.green), full(light.blue)}, coverage};
}

// ---- PDF

void setFill(std::string* content, const MarkColor& color) {
    append(content, {color.red, color.green, color.blue}, "rg");
}

QPDFObjectHandle rectangle(double half) {
    return QPDFObjectHandle::newFromRectangle(QPDFObjectHandle::Rectangle(-half, -half, half, half));
}

/// A pattern of dots, colored by whoever fills with it.
QPDFObjectHandle makeDots(QPDF& pdf, double coverage, double scale) {
    const double side = kSide * kDotSize / scale;
    std::string content;
    append(&content, {side, 0, 0, side, 0, 0}, "cm");
    content += "BI /W 8 /H 8 /IM true /BPC 1 /D [1 0] ID ";
    for (int y = 0; y < kSide; ++y) {
        unsigned char row = 0;
        for (int x = 0; x < kSide; ++x) {
            row = static_cast<unsigned char>(row << 1 | static_cast<int>(isDot(x, y, coverage)));
        }
        content += static_cast<char>(row);
    }
    content += "\nEI\n";
    QPDFObjectHandle pattern = QPDFObjectHandle::newStream(&pdf, content);
    QPDFObjectHandle keys = pattern.getDict();
    keys.replaceKey("/Type", QPDFObjectHandle::newName("/Pattern"));
    keys.replaceKey("/PatternType", QPDFObjectHandle::newInteger(1));
    keys.replaceKey("/PaintType", QPDFObjectHandle::newInteger(2));
    keys.replaceKey("/TilingType", QPDFObjectHandle::newInteger(1));
    keys.replaceKey("/BBox", QPDFObjectHandle::newFromRectangle(QPDFObjectHandle::Rectangle(0, 0, side, side)));
    keys.replaceKey("/XStep", QPDFObjectHandle::newReal(side, 5));
    keys.replaceKey("/YStep", QPDFObjectHandle::newReal(side, 5));
    keys.replaceKey("/Resources", QPDFObjectHandle::newDictionary());
    return pattern;
}

QPDFObjectHandle makeImage(QPDF& pdf, const std::string& pixels, int width, int height) {
    QPDFObjectHandle image = QPDFObjectHandle::newStream(&pdf, pixels);
    QPDFObjectHandle keys = image.getDict();
    keys.replaceKey("/Type", QPDFObjectHandle::newName("/XObject"));
    keys.replaceKey("/Subtype", QPDFObjectHandle::newName("/Image"));
    keys.replaceKey("/Width", QPDFObjectHandle::newInteger(width));
    keys.replaceKey("/Height", QPDFObjectHandle::newInteger(height));
    keys.replaceKey("/BitsPerComponent", QPDFObjectHandle::newInteger(8));
    keys.replaceKey("/ColorSpace", QPDFObjectHandle::newName("/DeviceRGB"));
    return image;
}

/// A picture in narrow strips, between which all can be read; where it is white there is nothing.
///
/// Dots would need a stencil, and a stencil, or a color that is left out, becomes a picture as fine as the printer on
/// its way through the filters, of megabytes a page. Strips are pictures like any others.
class Strips {
public:
    Strips(QPDF& pdf, const Picture& picture, double pixelSize) : pdf_(pdf), picture_(picture), pixelSize_(pixelSize) {}

    /// Draws them around the origin, so that they cover that part of the picture.
    std::string draw(double coverage, double scale) {
        const double height = picture_.height() * pixelSize_;
        const int count = std::clamp(static_cast<int>(std::lround(height * scale / kPeriod)), 1, kMostStrips);
        const double period = height / count;
        for (int strip = 0; strip < count; ++strip) {
            const int row = static_cast<int>((std::int64_t{2} * strip + 1) * picture_.height() / (2 * count));
            drawRow(picture_.row(row), height / 2 - (strip + (1 + coverage) / 2) * period, coverage * period);
        }
        return std::move(content_);
    }
    [[nodiscard]] QPDFObjectHandle images() const { return images_; }

private:
    static constexpr double kPeriod = 1.5;  // points from one strip to the next
    static constexpr int kMostStrips = 800;
    static constexpr int kLeastGap = 4;  // white pixels that part a strip

    /// The parts of a row that are not white.
    void drawRow(std::span<const unsigned char> row, double bottom, double height) {
        int begin = -1;
        int end = 0;  // behind the last pixel that is not white
        for (int x = 0; x < picture_.width(); ++x) {
            const unsigned char* const pixel = &row[std::size_t{3} * static_cast<std::size_t>(x)];
            if (std::all_of(pixel, pixel + 3, [](unsigned char ink) { return ink == 255; })) {
                continue;
            }
            if (begin >= 0 && x - end > kLeastGap) {
                drawPart(row, begin, end, bottom, height);
                begin = -1;
            }
            begin = begin < 0 ? x : begin;
            end = x + 1;
        }
        if (begin >= 0) {
            drawPart(row, begin, end, bottom, height);
        }
    }

    void drawPart(std::span<const unsigned char> row, int begin, int end, double bottom, double height) {
        const std::string name = "/S" + std::to_string(++count_);
        const auto* const pixels = reinterpret_cast<const char*>(row.data());
        images_.replaceKey(name, makeImage(pdf_, {pixels + std::ptrdiff_t{3} * begin, pixels + std::ptrdiff_t{3} * end},
                                           end - begin, 1));
        content_ += "q\n";
        append(&content_,
               {(end - begin) * pixelSize_, 0, 0, height, (begin - picture_.width() / 2.0) * pixelSize_, bottom}, "cm");
        content_ += name + " Do\nQ\n";
    }

    QPDF& pdf_;
    const Picture& picture_;
    double pixelSize_;
    QPDFObjectHandle images_ = QPDFObjectHandle::newDictionary();
    std::string content_;
    int count_ = 0;
};

/// The picture as it is, around the origin.
std::string drawWhole(QPDF& pdf, const Picture& picture, double pixelSize, QPDFObjectHandle* images) {
    std::string pixels;
    for (int y = 0; y < picture.height(); ++y) {
        const auto row = picture.row(y);
        pixels.append(reinterpret_cast<const char*>(row.data()), row.size());
    }
    images->replaceKey("/Picture", makeImage(pdf, pixels, picture.width(), picture.height()));
    const double width = picture.width() * pixelSize;
    const double height = picture.height() * pixelSize;
    std::string content;
    append(&content, {width, 0, 0, height, -width / 2, -height / 2}, "cm");
    return content + "/Picture Do\n";
}

/// A document of one page, written.
std::string write(QPDF& pdf, const std::string& content, QPDFObjectHandle resources) {
    constexpr double kHalf = 14400;  // a mark may be larger than any sheet
    QPDFObjectHandle page = QPDFObjectHandle::newDictionary();
    page.replaceKey("/Type", QPDFObjectHandle::newName("/Page"));
    page.replaceKey("/MediaBox", rectangle(kHalf));
    page.replaceKey("/Resources", resources);
    page.replaceKey("/Contents", QPDFObjectHandle::newStream(&pdf, content));
    QPDFPageDocumentHelper(pdf).addPage(QPDFPageObjectHelper(pdf.makeIndirectObject(page)), false);
    QPDFWriter writer(pdf);
    writer.setOutputMemory();
    writer.write();
    const std::shared_ptr<Buffer> buffer = writer.getBufferSharedPointer();
    return {reinterpret_cast<const char*>(buffer->getBuffer()), buffer->getSize()};
}

/// Offsets first, then the angle about the middle.
std::string placed(const StoredMark& mark) {
    const double radians = mark.angle * std::numbers::pi / 180;
    std::string content;
    append(&content,
           {std::cos(radians), std::sin(radians), -std::sin(radians), std::cos(radians), mark.xOffset, mark.yOffset},
           "cm");
    return content;
}

std::optional<std::string> drawText(const StoredMark& mark, MarkInk ink, double scale, std::string* reason) {
    const double size = mark.fontSize * mark.scale / 100;
    const auto outline = outlineText(mark.text, mark.font, size, reason);
    if (!outline) {
        return std::nullopt;
    }
    QPDF pdf;
    pdf.emptyPDF();
    QPDFObjectHandle resources = QPDFObjectHandle::newDictionary();
    std::string content;
    const ScreenedColor color = screened(mark.color);
    if (ink == MarkInk::opaque || color.coverage >= 1) {
        setFill(&content, mark.color);
    } else {
        resources.replaceKey("/Pattern",
                             QPDFObjectHandle::newDictionary({{"/Dots", makeDots(pdf, color.coverage, scale)}}));
        resources.replaceKey("/ColorSpace", QPDFObjectHandle::newDictionary(
                                                {{"/Ink", QPDFObjectHandle::parse("[/Pattern /DeviceRGB]")}}));
        content += "/Ink cs ";
        append(&content, {color.full.red, color.full.green, color.full.blue}, "/Dots scn");
    }
    content += placed(mark);
    append(&content, {1, 0, 0, 1, -outline->width / 2, -size * (kTextBoxHeight / 2 - kTextBaseLine)}, "cm");
    return write(pdf, content + outline->path + "f\n", resources);
}

/// A pixel of the picture's file is a point wide.
std::optional<std::string> drawPicture(const StoredMark& mark, MarkInk ink, double scale, std::string* reason) {
    auto picture = Picture::read(mark.filePath, PictureInk::colors, reason);
    if (!picture) {
        *reason = mark.filePath + ": " + *reason;
        return std::nullopt;
    }
    const double density = mark.density / 100;
    const double pixelSize = mark.scale / 100 * picture->reduction();
    QPDF pdf;
    pdf.emptyPDF();
    QPDFObjectHandle images = QPDFObjectHandle::newDictionary();
    std::string content = placed(mark);
    if (ink == MarkInk::opaque || density >= 1) {
        content += drawWhole(pdf, picture->lightened(density), pixelSize, &images);
    } else {
        Strips strips(pdf, *picture, pixelSize);
        content += strips.draw(density, scale);
        images = strips.images();
    }
    return write(pdf, content, QPDFObjectHandle::newDictionary({{"/XObject", images}}));
}

}  // namespace

std::optional<std::string> drawMark(const StoredMark& mark, MarkInk ink, double scale, std::string* reason) {
    try {
        return mark.text.empty() ? drawPicture(mark, ink, scale, reason) : drawText(mark, ink, scale, reason);
    } catch (const std::exception& error) {
        *reason = error.what();
        return std::nullopt;
    }
}
