// Pictures: read once, drawn at natural size, sharp on dense screens.

#include "platform/toolbox/pictures.h"

#include "platform/toolbox/objects.h"

#include <QFileInfo>
#include <QPainter>

namespace {

constexpr double kDense = 2;

QRectF toRect(const HIRect& rect) {
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

QColor colorOf(double red, double green, double blue, double alpha) {
    return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue),
                            static_cast<float>(alpha));
}

}  // namespace

const QImage& OpaqueCGImageRef::forPixelRatio(double ratio) const {
    if (ratio <= 1) {
        return image_;
    }
    if (!dense_) {
        dense_ = QImage(densePath_);
        dense_->setDevicePixelRatio(kDense);
    }
    return dense_->isNull() ? image_ : *dense_;
}

QIcon iconOf(CGImageRef image) {
    QIcon icon;
    if (image) {
        icon.addPixmap(QPixmap::fromImage(image->forPixelRatio(1)));
        icon.addPixmap(QPixmap::fromImage(image->forPixelRatio(kDense)));
    }
    return icon;
}

CGImageRef CGImageCreateWithURL(CFURLRef url) {
    const QFileInfo file(toFilePath(url));
    const QImage image = file.isFile() ? QImage(file.filePath()) : QImage();
    if (image.isNull()) {
        return nullptr;
    }
    const QString dense = QStringLiteral("%1/%2@2x.%3").arg(file.path(), file.completeBaseName(), file.suffix());
    return new OpaqueCGImageRef(image, dense);
}

CGImageRef CGImageCreate(ByteCount width, ByteCount height, const UInt32* pixels) {
    if (width == 0 || height == 0 || pixels == nullptr) {
        return nullptr;
    }
    const QImage lent(reinterpret_cast<const uchar*>(pixels), static_cast<int>(width), static_cast<int>(height),
                      QImage::Format_ARGB32_Premultiplied);
    return new OpaqueCGImageRef(lent.copy(), {});
}

void CGImageRelease(CGImageRef image) {
    delete image;
}

ByteCount CGImageGetWidth(CGImageRef image) {
    return image ? image->size().width() : 0;
}

ByteCount CGImageGetHeight(CGImageRef image) {
    return image ? image->size().height() : 0;
}

OSStatus HIViewDrawCGImage(CGContextRef context, const HIRect* bounds, CGImageRef image) {
    if (!context || !bounds || !image) {
        return paramErr;
    }
    QPainter& painter = *context->painter;
    const double ratio = painter.device()->devicePixelRatioF();
    const QImage& picture = image->forPixelRatio(ratio);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, toRect(*bounds).size() * ratio != QSizeF(picture.size()));
    painter.drawImage(toRect(*bounds), picture);
    context->drawnOn = true;
    return noErr;
}

void CGContextSetRGBFillColor(CGContextRef context, double red, double green, double blue, double alpha) {
    if (context) {
        context->fill = colorOf(red, green, blue, alpha);
    }
}

void CGContextSetRGBStrokeColor(CGContextRef context, double red, double green, double blue, double alpha) {
    if (context) {
        context->stroke = colorOf(red, green, blue, alpha);
    }
}

void CGContextFillRect(CGContextRef context, HIRect rect) {
    if (context) {
        context->painter->fillRect(toRect(rect), context->fill);
        context->drawnOn = true;
    }
}

void CGContextStrokeRect(CGContextRef context, HIRect rect) {
    if (context) {
        context->painter->setPen(QPen(context->stroke, 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        context->painter->setBrush(Qt::NoBrush);
        context->painter->drawRect(toRect(rect).adjusted(0.5, 0.5, -0.5, -0.5));
        context->drawnOn = true;
    }
}

CGContextRef HIViewGetDrawContext(ControlRef control) {
    return control ? control->drawContext : nullptr;
}

void HIThemeEraseBackground(CGContextRef context, const HIRect* bounds) {
    // Qt has painted all that lies behind the view just before the draw event; a fill with the window's colour would
    // only hide the frames and tab pages of other colours among it.
    if (context && bounds && context->drawnOn) {
        context->painter->fillRect(toRect(*bounds), context->view->palette().window());
    }
}

OSStatus HIViewGetBounds(ControlRef control, HIRect* bounds) {
    if (!control || !bounds) {
        return paramErr;
    }
    const QSize size = control->widget->size();
    *bounds = {{0, 0}, {static_cast<double>(size.width()), static_cast<double>(size.height())}};
    return noErr;
}
