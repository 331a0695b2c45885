// Drawing and pressing of panes and custom views.

#include "platform/toolbox/view_widget.h"

#include "platform/toolbox/objects.h"
#include "platform/toolbox/pictures.h"
#include "platform/toolbox/return_key.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QWheelEvent>
#include <algorithm>
#include <array>

namespace {

struct KeyRow {
    Qt::Key key;
    UniChar character;
};
constexpr std::array kMovingKeys{
    // key, character
    KeyRow{Qt::Key_Left, kLeftArrowCharCode}, KeyRow{Qt::Key_Right, kRightArrowCharCode},
    KeyRow{Qt::Key_Up, kUpArrowCharCode},     KeyRow{Qt::Key_Down, kDownArrowCharCode},
    KeyRow{Qt::Key_PageUp, kPageUpCharCode},  KeyRow{Qt::Key_PageDown, kPageDownCharCode},
    KeyRow{Qt::Key_Home, kHomeCharCode},      KeyRow{Qt::Key_End, kEndCharCode},
};

bool takesKeys(const OpaqueControlRef& control) {
    return control.hasHandlerFor(kEventClassKeyboard, kEventRawKeyDown);
}

bool sendMovingKey(OpaqueControlRef* control, const QKeyEvent& key) {
    const auto* const row = std::ranges::find(kMovingKeys, key.key(), &KeyRow::key);
    return row != kMovingKeys.end() && !(key.modifiers() & ~Qt::KeypadModifier) && takesKeys(*control) &&
           sendKey(control, row->character);
}

}  // namespace

bool drawControl(ControlRef control, QPainter& painter) {
    if (!control->viewClass && !control->hasHandlerFor(kEventClassControl, kEventControlDraw)) {
        return false;
    }
    OpaqueCGContextRef context{&painter, control->widget};
    ScopedEvent event(kEventClassControl, kEventControlDraw);
    event.with(kEventParamDirectObject, typeControlRef, control);
    event.with(kEventParamCGContextRef, typeCGContextRef, CGContextRef(&context));
    const QPointer<OpaqueControlRef> alive(control);
    control->drawContext = &context;
    const OSStatus status = event.sendTo(control);
    if (alive) {
        control->drawContext = nullptr;
    }
    return status == noErr;
}

void ViewWidget::paintEvent(QPaintEvent*) {
    const QPointer<QWidget> alive(this);
    QPainter painter(this);
    if (OpaqueControlRef* control = OpaqueControlRef::of(this)) {
        drawControl(control, painter);
    }
    if (alive && hasFocus()) {
        QStyleOptionFocusRect ring;
        ring.initFrom(this);
        ring.backgroundColor = palette().window().color();
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &ring, &painter, this);
    }
}

bool ViewWidget::isHot(QPointF place) const {
    OpaqueControlRef* control = OpaqueControlRef::of(this);
    if (!control || !rect().contains(place.toPoint())) {
        return false;
    }
    ScopedEvent event(kEventClassControl, kEventControlHitTest);
    event.with(kEventParamDirectObject, typeControlRef, ControlRef(control));
    event.with(kEventParamMouseLocation, typeHIPoint, HIPoint{place.x(), place.y()});
    if (event.sendTo(control) != noErr) {
        return control->command != 0;
    }
    ControlPartCode part = 0;
    GetEventParameter(event.get(), kEventParamControlPart, typeControlPartCode, nullptr, sizeof part, nullptr, &part);
    return part != 0;
}

void ViewWidget::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->button() == Qt::LeftButton && isHot(event->position());
    event->setAccepted(pressed_);
}

void ViewWidget::mouseReleaseEvent(QMouseEvent* event) {
    const bool hit = pressed_ && event->button() == Qt::LeftButton && isHot(event->position());
    pressed_ = false;
    OpaqueControlRef* control = OpaqueControlRef::of(this);
    if (hit && control) {
        control->userHit();
    }
}

void ViewWidget::keyPressEvent(QKeyEvent* event) {
    const bool presses = isReturn(*event) || (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier);
    OpaqueControlRef* control = OpaqueControlRef::of(this);
    if (control && sendMovingKey(control, *event)) {
        return;
    }
    if (control && presses && !event->isAutoRepeat() && focusPolicy() != Qt::NoFocus &&
        isHot(QRectF(rect()).center())) {
        control->userHit();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void ViewWidget::wheelEvent(QWheelEvent* event) {
    OpaqueControlRef* control = OpaqueControlRef::of(this);
    const bool isHeard = control && control->hasHandlerFor(kEventClassMouse, kEventMouseWheelMoved);
    event->setAccepted(isHeard && wheel_.turn(control, *event));
}

void ViewWidget::showEvent(QShowEvent* event) {
    const OpaqueControlRef* control = OpaqueControlRef::of(this);
    const bool pressable = control && (control->command != 0 || control->viewClass);
    setFocusPolicy(control && takesKeys(*control) ? Qt::StrongFocus : pressable ? Qt::TabFocus : Qt::NoFocus);
    QWidget::showEvent(event);
}
