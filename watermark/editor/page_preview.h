// The page with the watermark on it, which can be moved by the mouse and by the arrow keys.
#pragma once

#include "watermark/editor/mark_painter.h"

#include <QWidget>
#include <functional>
#include <optional>

class PagePreview : public QWidget {
public:
    /// The drawing is somebody else's, and outlives the widget.
    PagePreview(const MarkDrawing* drawing, QWidget* parent);

    void setPage(PageSize page);
    /// Shows the record, which the drawing has already.
    void setRecord(const WatermarkRecord& record);

    /// Called with the offsets that the user gives the mark, in points; and when a drag is over.
    std::function<void(PagePoint)> moved;
    std::function<void()> released;

    [[nodiscard]] QSize sizeHint() const override { return {380, 460}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {320, 400}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] PageView view() const;
    [[nodiscard]] PagePoint middle() const { return MiddleOfMark(record_, page_); }
    [[nodiscard]] PagePoint pageAt(const QMouseEvent& event) const;
    [[nodiscard]] bool isOnMark(PagePoint point) const;

    const MarkDrawing* drawing_;
    PageSize page_{612, 792};
    WatermarkRecord record_ = {};
    std::optional<PagePoint> grip_;  // while the mark is dragged: from where it is held to its middle
};
