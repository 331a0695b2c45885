#include "watermark/editor/page_preview.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace {

constexpr double kMargin = 12;
constexpr double kReach = 5;      // pixels around the page's middle lines that catch a dragged mark
constexpr double kSlack = 6;      // pixels around the mark where it can be taken still
constexpr double kSmallStep = 1;  // points, of the arrow keys
constexpr double kLargeStep = 10;

}  // namespace

PagePreview::PagePreview(const MarkDrawing* drawing, QWidget* parent) : QWidget(parent), drawing_(drawing) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PagePreview::setPage(PageSize page) {
    page_ = page;
    update();
}

void PagePreview::setRecord(const WatermarkRecord& record) {
    record_ = record;
    update();
}

PageView PagePreview::view() const {
    return {page_, static_cast<double>(width()), static_cast<double>(height()), kMargin};
}

PagePoint PagePreview::pageAt(const QMouseEvent& event) const {
    return view().toPage({event.position().x(), event.position().y()});
}

bool PagePreview::isOnMark(PagePoint point) const {
    const double slack = 2 * kSlack / view().scale();
    const PageSize box = drawing_->scaledBox();
    return IsOnMark(point, middle(), {box.width + slack, box.height + slack}, record_.angle);
}

void PagePreview::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const PageView page = view();
    const QRectF sheet(page.left(), page.top(), page_.width * page.scale(), page_.height * page.scale());
    painter.fillRect(sheet.translated(3, 3), QColor(0, 0, 0, 60));
    painter.fillRect(sheet, Qt::white);
    painter.save();
    painter.setClipRect(sheet);
    drawing_->draw(&painter, page, page_);
    if (grip_) {
        painter.setPen(QPen(QColor(40, 110, 220), 1, Qt::DashLine));
        if (record_.xOffset == 0) {
            painter.drawLine(QLineF(sheet.center().x(), sheet.top(), sheet.center().x(), sheet.bottom()));
        }
        if (record_.yOffset == 0) {
            painter.drawLine(QLineF(sheet.left(), sheet.center().y(), sheet.right(), sheet.center().y()));
        }
    }
    painter.restore();
    painter.setPen(QPen(hasFocus() ? palette().color(QPalette::Highlight) : QColor(150, 150, 150), hasFocus() ? 2 : 1));
    painter.drawRect(sheet);
}

void PagePreview::mousePressEvent(QMouseEvent* event) {
    const PagePoint point = pageAt(*event);
    if (event->button() == Qt::LeftButton && isOnMark(point)) {
        grip_ = PagePoint{middle().x - point.x, middle().y - point.y};
        setCursor(Qt::ClosedHandCursor);
        update();
    }
}

void PagePreview::mouseMoveEvent(QMouseEvent* event) {
    const PagePoint point = pageAt(*event);
    if (grip_) {
        moved(OffsetsAfterDrag({point.x + grip_->x, point.y + grip_->y}, page_, kReach / view().scale()));
    } else {
        setCursor(isOnMark(point) ? Qt::OpenHandCursor : Qt::ArrowCursor);
    }
}

void PagePreview::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && grip_) {
        grip_.reset();
        setCursor(Qt::OpenHandCursor);
        update();
        released();
    }
}

void PagePreview::keyPressEvent(QKeyEvent* event) {
    const double step = event->modifiers().testFlag(Qt::ShiftModifier) ? kLargeStep : kSmallStep;
    PagePoint to = middle();
    switch (event->key()) {
        case Qt::Key_Left:
            to.x -= step;
            break;
        case Qt::Key_Right:
            to.x += step;
            break;
        case Qt::Key_Up:
            to.y += step;
            break;
        case Qt::Key_Down:
            to.y -= step;
            break;
        default:
            QWidget::keyPressEvent(event);
            return;
    }
    moved(OffsetsAfterDrag(to, page_, 0));
}
