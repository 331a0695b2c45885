// Drawing and pressing of little arrows.

#include "platform/toolbox/little_arrows.h"

#include "platform/toolbox/objects.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QTimerEvent>
#include <QWheelEvent>
#include <algorithm>

namespace {

constexpr int kWidth = 17;
constexpr int kBesideText = 8;
constexpr int kLeastHeight = 22;
constexpr int kArrowSize = 8;
constexpr int kRepeatInterval = 50;  // ms

}  // namespace

LittleArrows::LittleArrows(QWidget* parent) : QAbstractSlider(parent) {
    setOrientation(Qt::Vertical);
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LittleArrows::sizeHint() const {
    return {kWidth, std::max(kLeastHeight, fontMetrics().height() + kBesideText)};  // as high as their field
}

QRect LittleArrows::partRect(ControlPartCode part) const {
    const int half = height() / 2;
    return part == kControlUpButtonPart ? QRect(0, 0, width(), half) : QRect(0, half, width(), height() - half);
}

/// One button of the style, divided in two: it looks like the buttons around it in every style and colour scheme.
void LittleArrows::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    for (const ControlPartCode part : {kControlUpButtonPart, kControlDownButtonPart}) {
        const QRect half = partRect(part);
        QStyleOptionButton button;
        button.initFrom(this);
        button.state.setFlag(QStyle::State_MouseOver, false);
        const bool down = inside_ && pressed_ == part;
        button.state |= down ? QStyle::State_Sunken : QStyle::State_Raised;
        painter.save();
        painter.setClipRect(half);
        painter.drawPrimitive(QStyle::PE_PanelButtonCommand, button);
        painter.restore();

        QStyleOption arrow = button;
        arrow.rect = QRect(0, 0, kArrowSize, kArrowSize);
        arrow.rect.moveCenter(half.center() + QPoint(0, part == kControlUpButtonPart ? 1 : -1));
        painter.drawPrimitive(
            part == kControlUpButtonPart ? QStyle::PE_IndicatorArrowUp : QStyle::PE_IndicatorArrowDown, arrow);
    }
    QColor line = palette().color(QPalette::ButtonText);
    line.setAlphaF(0.25F);
    painter.setPen(line);
    painter.drawLine(2, height() / 2, width() - 3, height() / 2);
}

ControlPartCode LittleArrows::partAt(QPoint place) const {
    for (const ControlPartCode part : {kControlUpButtonPart, kControlDownButtonPart}) {
        if (partRect(part).contains(place)) {
            return part;
        }
    }
    return 0;
}

void LittleArrows::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    pressed_ = partAt(event->position().toPoint());
    inside_ = pressed_ != 0;
    update();
    if (inside_) {
        repeat_.start(style()->styleHint(QStyle::SH_SpinBox_ClickAutoRepeatThreshold, nullptr, this), this);
        step();
    }
}

void LittleArrows::mouseMoveEvent(QMouseEvent* event) {
    const bool inside = pressed_ != 0 && partAt(event->position().toPoint()) == pressed_;
    if (inside != inside_) {
        inside_ = inside;
        update();
    }
}

void LittleArrows::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        release();
    }
}

void LittleArrows::release() {
    repeat_.stop();
    pressed_ = 0;
    inside_ = false;
    update();
}

void LittleArrows::hideEvent(QHideEvent* event) {
    release();
    QAbstractSlider::hideEvent(event);
}

void LittleArrows::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange && !isEnabled()) {
        release();
    }
    QAbstractSlider::changeEvent(event);
}

void LittleArrows::timerEvent(QTimerEvent* event) {
    if (event->timerId() != repeat_.timerId()) {
        QAbstractSlider::timerEvent(event);
        return;
    }
    repeat_.start(kRepeatInterval, this);
    if (inside_) {
        step();
    }
}

void LittleArrows::step() {
    if (OpaqueControlRef* control = OpaqueControlRef::of(this)) {
        control->userSteps(pressed_);
    }
}

void LittleArrows::keyPressEvent(QKeyEvent* event) {
    event->ignore();
}

void LittleArrows::wheelEvent(QWheelEvent* event) {
    event->ignore();
}
