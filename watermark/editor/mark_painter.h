// A watermark, drawn as it will be printed: the glyphs of a text side by side by their own widths, a picture on white.
#pragma once

#include "watermark/editor/mark_fonts.h"
#include "watermark/editor/mark_geometry.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

QColor ColorOf(const WatermarkColor& color);

/// What a record looks like: made anew when the record has changed.
class MarkDrawing {
public:
    explicit MarkDrawing(MarkFonts* fonts) : fonts_(fonts) {}

    void setRecord(const WatermarkRecord& record);

    /// The box before it is scaled. A picture is as large as its file has pixels, a point each.
    [[nodiscard]] PageSize box() const { return box_; }
    /// The box on the page.
    [[nodiscard]] PageSize scaledBox() const;
    /// Whether the record's picture could be read.
    [[nodiscard]] bool hasPicture() const { return !picture_.isNull(); }

    /// Draws it in a page of the view.
    void draw(QPainter* painter, const PageView& view, PageSize page) const;

private:
    void setText(const QString& text);
    void readPicture(const QString& path);

    MarkFonts* fonts_;
    WatermarkRecord record_ = {};
    PageSize box_;
    QPainterPath outlines_;  // of the text, from the left end of its base line
    QString picturePath_;
    QImage picture_;        // on white; of fewer pixels than the file, if that has many
    PageSize pictureSize_;  // of the file
};
