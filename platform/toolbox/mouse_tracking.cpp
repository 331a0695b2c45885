// Regions of a window that tell when the mouse enters and leaves them, and the cursor.

#include "platform/toolbox/Views.h"
#include "platform/toolbox/objects.h"

#include <QApplication>
#include <QEnterEvent>
#include <QMouseEvent>
#include <QRect>
#include <QWindow>

struct OpaqueRgn {
    QRect rect;
};

/// Watches the native window, which hears of every move of the mouse whatever its widgets ask for.
struct OpaqueMouseTrackingRef final : QObject {
    OpaqueMouseTrackingRef(OpaqueWindowRef* window, QRect rect, OpaqueEventTargetRef* target)
        : window_(window->widget),
          rect_(rect),
          target_(target),
          // Every target but the application is an object that may go before its region does.
          targetLife_(dynamic_cast<QObject*>(target)),
          targetCanGo_(targetLife_) {
        window_->installEventFilter(this);
        watchHandle();
    }
    ~OpaqueMouseTrackingRef() override { setEnabled(false); }

    void setEnabled(bool enabled) {
        enabled_ = enabled;
        if (!enabled && std::exchange(inside_, false)) {
            SetThemeCursor(kThemeArrowCursor);  // nobody will hear of the mouse's leaving
        }
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        switch (event->type()) {
            case QEvent::Show:
                watchHandle();
                break;
            case QEvent::MouseMove:
                if (watched->isWindowType()) {
                    mouseAt(static_cast<QMouseEvent*>(event)->position());
                }
                break;
            case QEvent::Enter:
                if (watched->isWindowType()) {
                    mouseAt(static_cast<QEnterEvent*>(event)->position());
                }
                break;
            case QEvent::Leave:
            case QEvent::Hide:
                setInside(false);
                break;
            default:
                break;
        }
        return false;
    }

private:
    void watchHandle() {
        if (QWindow* handle = window_->windowHandle()) {
            handle->installEventFilter(this);
        }
    }

    void mouseAt(QPointF place) { setInside(rect_.contains(place.toPoint())); }

    void setInside(bool inside) {
        if (!enabled_ || std::exchange(inside_, inside) == inside || (targetCanGo_ && !targetLife_)) {
            return;
        }
        ScopedEvent(kEventClassMouse, inside ? kEventMouseEntered : kEventMouseExited).sendTo(target_);
    }

    const QPointer<QWidget> window_;
    const QRect rect_;
    OpaqueEventTargetRef* const target_;
    const QPointer<QObject> targetLife_;
    const bool targetCanGo_;
    bool enabled_ = false;
    bool inside_ = false;
};

RgnHandle NewRgn() {
    return new OpaqueRgn;
}

void RectRgn(RgnHandle region, const Rect* rect) {
    if (region && rect) {
        region->rect = QRect(QPoint(rect->left, rect->top), QPoint(rect->right - 1, rect->bottom - 1));
    }
}

void DisposeRgn(RgnHandle region) {
    delete region;
}

OSStatus CreateMouseTrackingRegion(WindowRef window, RgnHandle region, RgnHandle, UInt32, MouseTrackingRegionID, void*,
                                   EventTargetRef target, MouseTrackingRef* ref) {
    if (!window || !region || !ref) {
        return paramErr;
    }
    *ref = new OpaqueMouseTrackingRef(window, region->rect, target ? target : window);
    return noErr;
}

OSStatus SetMouseTrackingRegionEnabled(MouseTrackingRef ref, Boolean enabled) {
    if (!ref) {
        return paramErr;
    }
    ref->setEnabled(enabled);
    return noErr;
}

OSStatus ReleaseMouseTrackingRegion(MouseTrackingRef ref) {
    delete ref;
    return noErr;
}

OSStatus SetThemeCursor(ThemeCursor cursor) {
    static bool pointing = false;
    if (cursor != kThemeArrowCursor && cursor != kThemePointingHandCursor) {
        return paramErr;
    }
    const bool point = cursor == kThemePointingHandCursor;
    if (point != std::exchange(pointing, point)) {
        if (point) {
            QGuiApplication::setOverrideCursor(Qt::PointingHandCursor);
        } else {
            QGuiApplication::restoreOverrideCursor();
        }
    }
    return noErr;
}
