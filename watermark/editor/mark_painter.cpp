#include "watermark/editor/mark_painter.h"

#include <QFontMetricsF>
#include <QImageReader>

namespace {

constexpr int kLargestPreview = 2000;      // pixels, a side
constexpr qint64 kMostPixels = 100000000;  // of a file

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
    outlines_ = {};
    box_ = {0, record.fontSize * kTextBoxHeight};
    if (const NamedFont& named = fonts_->named(record.fontName); named.face) {
        const QFont font = FontOfFace(*named.face, record.fontSize);
        const QString text = QString::fromUtf8(record.text);
        outlines_.addText(0, 0, font, text);
        outlines_.setFillRule(Qt::WindingFill);
        box_.width = QFontMetricsF(font).horizontalAdvance(text);
    }
}

void MarkDrawing::readPicture(const QString& path) {
    if (path == picturePath_) {
        return;
    }
    picturePath_ = path;
    picture_ = {};
    pictureSize_ = {};
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (!size.isValid() || qint64{size.width()} * size.height() > kMostPixels) {
        return;
    }
    if (std::max(size.width(), size.height()) > kLargestPreview) {
        reader.setScaledSize(size.scaled(kLargestPreview, kLargestPreview, Qt::KeepAspectRatio));
    }
    picture_ = reader.read();
    if (!picture_.isNull()) {
        const bool isTurned = reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
        const QSize shown = isTurned ? size.transposed() : size;
        pictureSize_ = {static_cast<double>(shown.width()), static_cast<double>(shown.height())};
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
