#include "platform/drawing/PixelCanvas.h"

#include "platform/drawing/text_lines.h"
#include "platform/drawing/units.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace {

QColor colorOf(const CanvasColor& color) {
    return {color.red, color.green, color.blue, color.alpha};
}

QPolygonF polygonOf(const CanvasShape& shape) {
    QPolygonF polygon;
    for (const CanvasPoint& point : shape) {
        polygon << QPointF(point.x, point.y);
    }
    return polygon;
}

QPen penOf(double thickness, const CanvasColor& color) {
    return {QBrush(colorOf(color)), thickness, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin};
}

}  // namespace

struct PixelCanvas::Surface {
    Surface(int width, int height, const CanvasColor& ground)
        : image(std::max(width, 1), std::max(height, 1), QImage::Format_ARGB32_Premultiplied) {
        image.fill(colorOf(ground));
        painter.begin(&image);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    }

    template <typename Changed>
    void change(Changed changed) {
        for (int y = 0; y < image.height(); ++y) {
            auto* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
            std::transform(row, row + image.width(), row, changed);
        }
    }

    QImage image;
    QPainter painter;  // ends before the image
};

PixelCanvas::PixelCanvas(int width, int height, const CanvasColor& ground)
    : surface_(std::make_unique<Surface>(width, height, ground)) {}
PixelCanvas::PixelCanvas(PixelCanvas&& other) noexcept = default;
PixelCanvas& PixelCanvas::operator=(PixelCanvas&& other) noexcept = default;
PixelCanvas::~PixelCanvas() = default;

void PixelCanvas::fill(const CanvasShape& area, const CanvasColor& color) {
    surface_->painter.setPen(Qt::NoPen);
    surface_->painter.setBrush(colorOf(color));
    surface_->painter.drawPolygon(polygonOf(area));
}

void PixelCanvas::outline(const CanvasShape& area, double thickness, const CanvasColor& color) {
    surface_->painter.setPen(penOf(thickness, color));
    surface_->painter.setBrush(Qt::NoBrush);
    surface_->painter.drawPolygon(polygonOf(area));
}

void PixelCanvas::line(const CanvasShape& path, double thickness, const CanvasColor& color, double dashes) {
    QPen pen = penOf(thickness, color);
    if (dashes > 0) {
        pen.setDashPattern({dashes / thickness, dashes / thickness});
    }
    surface_->painter.setPen(pen);
    surface_->painter.drawPolyline(polygonOf(path));
}

void PixelCanvas::disk(const CanvasPoint& middle, double radius, const CanvasColor& color) {
    surface_->painter.setPen(Qt::NoPen);
    surface_->painter.setBrush(colorOf(color));
    surface_->painter.drawEllipse(QPointF(middle.x, middle.y), radius, radius);
}

void PixelCanvas::print(const Pixels& picture, const CanvasMatrix& matrix, const CanvasShape& within) {
    const auto [a, b, c, d, e, f] = matrix;
    QImage image(reinterpret_cast<const uchar*>(picture.values.data()), picture.width, picture.height,
                 static_cast<qsizetype>(picture.width) * 4, QImage::Format_ARGB32_Premultiplied);
    // What becomes much smaller would lose lines when only its neighbours are looked at.
    const int across = static_cast<int>(std::ceil(std::hypot(a, b)));
    const int down = static_cast<int>(std::ceil(std::hypot(c, d)));
    if (across >= 1 && down >= 1 && (across * 2 < image.width() || down * 2 < image.height())) {
        image = image.scaled(across, down, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    QPainter& painter = surface_->painter;
    painter.save();
    if (!within.empty()) {
        QPainterPath path;
        path.addPolygon(polygonOf(within));
        painter.setClipPath(path);
    }
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    // From the picture's pixels, whose first row is the upper one.
    painter.setTransform(
        QTransform(a / image.width(), b / image.width(), -c / image.height(), -d / image.height(), e + c, f + d));
    painter.drawImage(0, 0, image);
    painter.restore();
}

void PixelCanvas::draw(const TextBlock& text, double left, double top, double scale) {
    QPainter& painter = surface_->painter;
    painter.save();
    painter.translate(left, top);
    painter.scale(scale / kUnitsPerPoint, scale / kUnitsPerPoint);
    painter.setPen(Qt::black);
    text.lines_->draw(&painter, {});
    painter.restore();
}

void PixelCanvas::invert() {
    surface_->image.invertPixels(QImage::InvertRgb);
}

void PixelCanvas::makeGray() {
    surface_->change([](QRgb pixel) {
        const int gray = qGray(pixel);
        return qRgba(gray, gray, gray, qAlpha(pixel));
    });
}

void PixelCanvas::saturate(double factor) {
    surface_->change([factor](QRgb pixel) {
        const int gray = qGray(pixel);
        const auto moved = [&](int value) { return std::clamp(qRound(gray + (value - gray) * factor), 0, 255); };
        return qRgba(moved(qRed(pixel)), moved(qGreen(pixel)), moved(qBlue(pixel)), qAlpha(pixel));
    });
}

void PixelCanvas::bend(const std::array<ToneCurve, 3>& curves) {
    surface_->change([&](QRgb pixel) {
        return qRgba(curves[0][static_cast<std::size_t>(qRed(pixel))],
                     curves[1][static_cast<std::size_t>(qGreen(pixel))],
                     curves[2][static_cast<std::size_t>(qBlue(pixel))], qAlpha(pixel));
    });
}

Pixels PixelCanvas::finish() {
    surface_->painter.end();
    const QImage& image = surface_->image;
    Pixels pixels{image.width(), image.height(), {}};
    const auto* const values = reinterpret_cast<const std::uint32_t*>(image.constBits());
    pixels.values.assign(values, values + static_cast<std::size_t>(image.width()) * image.height());
    return pixels;
}
