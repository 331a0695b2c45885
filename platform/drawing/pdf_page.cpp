#include "platform/drawing/picture_pixels.h"
#include "platform/drawing/text_lines.h"
#include "platform/drawing/units.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kPointsPerInch = 72;

QRectF unitsOf(const DrawingRect& rect) {
    return {rect.left * kUnitsPerPoint, rect.top * kUnitsPerPoint, rect.width * kUnitsPerPoint,
            rect.height * kUnitsPerPoint};
}

QColor colorOf(double ink) {
    return QColor::fromRgbF(static_cast<float>(1 - ink), static_cast<float>(1 - ink), static_cast<float>(1 - ink));
}

}  // namespace

struct PDFPage::Canvas {
    Canvas(const std::string& title, double width, double height) : writer(&file) {
        file.open(QIODevice::WriteOnly);
        writer.setTitle(textOf(title));
        writer.setResolution(kUnitsPerPoint * kPointsPerInch);
        writer.setPageSize(QPageSize({width, height}, QPageSize::Point));
        writer.setPageMargins({});
        painter.begin(&writer);
        painter.setRenderHint(QPainter::LosslessImageRendering);  // a logo has edges
    }

    /// Moves the origin to a point and turns the page around it.
    void turnAround(double x, double y, double degrees) {
        painter.translate(x * kUnitsPerPoint, y * kUnitsPerPoint);
        painter.rotate(-degrees);
    }

    QBuffer file;
    QPdfWriter writer;
    QPainter painter;  // ends before the writer
};

PDFPage::PDFPage(const std::string& title, double width, double height)
    : canvas_(std::make_unique<Canvas>(title, width, height)) {}
PDFPage::~PDFPage() = default;

void PDFPage::draw(const TextBlock& block, double left, double top) {
    block.lines_->draw(&canvas_->painter, {left * kUnitsPerPoint, top * kUnitsPerPoint});
}

void PDFPage::drawAround(const std::string& text, const std::string& fontPostScriptName, double size, double x,
                         double y, double degrees, double ink, double longest) {
    const QString line = textOf(text).simplified();
    QFont font = fontByPostScriptName(fontPostScriptName, size);
    const double width = QFontMetricsF(font, &canvas_->writer).horizontalAdvance(line);
    if (const double excess = width / (longest * kUnitsPerPoint); excess > 1) {
        font.setPixelSize(std::max(1, static_cast<int>(std::floor(font.pixelSize() / excess))));
    }
    QPainter& painter = canvas_->painter;
    painter.save();
    canvas_->turnAround(x, y, degrees);
    painter.setFont(font);
    painter.setPen(colorOf(ink));
    painter.drawText(QRectF(), Qt::AlignCenter | Qt::TextDontClip | Qt::TextSingleLine, line);
    painter.restore();
}

void PDFPage::drawAround(const Picture& picture, double width, double height, double x, double y, double degrees) {
    canvas_->painter.save();
    canvas_->turnAround(x, y, degrees);
    draw(picture, {-width / 2, -height / 2, width, height});
    canvas_->painter.restore();
}

void PDFPage::draw(const Picture& picture, const DrawingRect& place) {
    canvas_->painter.drawImage(unitsOf(place), picture.pixels_->image);
}

void PDFPage::drawRule(double left, double top, double width, double thickness) {
    canvas_->painter.fillRect(unitsOf({left, top, width, thickness}), Qt::black);
}

CFRef<CFDataRef> PDFPage::finish() {
    canvas_->painter.end();
    const QByteArray& bytes = canvas_->file.data();
    return CFRef<CFDataRef>::adopt(
        CFDataCreate(nullptr, reinterpret_cast<const UInt8*>(bytes.constData()), static_cast<CFIndex>(bytes.size())));
}
