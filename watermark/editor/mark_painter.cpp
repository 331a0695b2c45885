#include "watermark/editor/mark_painter.h"

#include <QFileInfo>
#include <QHash>
#include <QImageReader>
#include <QRawFont>
#include <algorithm>

namespace {

// Of a picture's file, as when it is printed.
constexpr qint64 kMostPixels = 200'000'000;
constexpr int kLargestSide = 2400;  // pixels; a larger picture is read in fewer

}  // namespace

QColor ColorOf(const WatermarkColor& color) {
    return QColor::fromRgbF(color.red, color.green, color.blue, color.alpha);
}

void MarkDrawing::setRecord(const WatermarkRecord& record) {
    record_ = record;
    readPicture(QString::fromUtf8(record.filePath));
    if (record.kind == kImageWatermark) {
        box_ = pictureSize_;
        return;
    }
    setText(QString::fromUtf8(record.text));
}

void MarkDrawing::setText(const QString& text) {
    outlines_ = {};
    outlines_.setFillRule(Qt::WindingFill);
    box_ = {0, record_.fontSize * kTextBoxHeight};
    const NamedFont& named = fonts_->named(record_.fontName);
    if (!named.face) {
        return;
    }
    const QRawFont font = QRawFont::fromFont(FontOfFace(*named.face, record_.fontSize));
    const QList<quint32> glyphs = font.glyphIndexesForString(text);
    const QList<QPointF> advances = font.advancesForGlyphIndexes(glyphs, QRawFont::UseDesignMetrics);
    QHash<quint32, QPainterPath> outlines;
    for (qsizetype i = 0; i < glyphs.size(); ++i) {
        if (!outlines.contains(glyphs[i])) {
            outlines.insert(glyphs[i], font.pathForGlyph(glyphs[i]));
        }
        outlines_.addPath(outlines.value(glyphs[i]).translated(box_.width, 0));
        box_.width += advances[i].x();
    }
}

void MarkDrawing::readPicture(const QString& path) {
    if (path == picturePath_) {
        return;
    }
    picturePath_ = path;
    picture_ = {};
    pictureSize_ = {};
    if (!QFileInfo(path).isFile()) {  // a pipe would wait for its writer
        return;
    }
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (qint64{size.width()} * size.height() > kMostPixels) {
        return;
    }
    if (std::max(size.width(), size.height()) > kLargestSide) {
        reader.setScaledSize(size.scaled(kLargestSide, kLargestSide, Qt::KeepAspectRatio).expandedTo({1, 1}));
    }
    if (const QImage image = reader.read(); !image.isNull()) {
        picture_ = QImage(image.size(), QImage::Format_RGB32);
        picture_.fill(Qt::white);
        QPainter(&picture_).drawImage(0, 0, image);
        const double reduction =
            std::max(1.0, std::max(size.width(), size.height()) / double(std::max(image.width(), image.height())));
        pictureSize_ = {image.width() * reduction, image.height() * reduction};
    }
}

PageSize MarkDrawing::scaledBox() const {
    return {box_.width * record_.scale / 100, box_.height * record_.scale / 100};
}

void MarkDrawing::draw(QPainter* painter, const PageView& view, PageSize page) const {
    const PagePoint middle = view.toView(MiddleOfMark(record_, page));
    const double scale = view.scale() * record_.scale / 100;
    painter->save();
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter->translate(middle.x, middle.y);
    painter->rotate(-record_.angle);
    painter->scale(scale, scale);
    if (record_.kind == kImageWatermark) {
        painter->setOpacity(record_.density / 100.0);
        painter->drawImage(QRectF(-box_.width / 2, -box_.height / 2, box_.width, box_.height), picture_);
    } else {
        painter->translate(-box_.width / 2, box_.height / 2 - kTextBaseLine * record_.fontSize);
        painter->fillPath(outlines_, ColorOf(record_.fontColor));
    }
    painter->restore();
}
