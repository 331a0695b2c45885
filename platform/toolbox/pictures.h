// What stands behind pictures and the contexts that they are drawn into.
#pragma once

#include "platform/toolbox/Views.h"

#include <QColor>
#include <QIcon>
#include <QImage>
#include <optional>

/// Where a draw event paints: a painter over the view, for as long as the event is on its way.
struct OpaqueCGContextRef {
    QPainter* painter;
    const QWidget* view;
    bool drawnOn = false;
    QColor fill = Qt::black;
    QColor stroke = Qt::black;
};

/// A picture at its natural size and, read when a dense screen first asks for it, the one of twice that size.
struct OpaqueCGImageRef {
    OpaqueCGImageRef(QImage image, QString densePath) : image_(std::move(image)), densePath_(std::move(densePath)) {}

    QSize size() const { return image_.size(); }
    const QImage& forPixelRatio(double ratio) const;

private:
    QImage image_;
    QString densePath_;
    mutable std::optional<QImage> dense_;
};

/// The picture for a button, on any screen; an empty icon for null.
QIcon iconOf(CGImageRef image);
