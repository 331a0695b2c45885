// Windows: their life, place, order and buttons.

#include "platform/toolbox/Windows.h"

#include "platform/toolbox/Controls.h"
#include "platform/toolbox/nib_window.h"
#include "platform/toolbox/objects.h"
#include "platform/toolbox/screen_fit.h"
#include "platform/toolbox/tab_order.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QLayout>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

namespace {

constexpr OSType kCommandOK = FourCharCode("ok  ");
constexpr OSType kCommandCancel = FourCharCode("not!");

void bringToEnd(OpaqueWindowRef* window) {
    auto& windows = livingWindows();
    const auto found = std::find(windows.begin(), windows.end(), window);
    if (found != windows.end()) {
        std::rotate(found, found + 1, windows.end());
    }
}

/// The rectangle, moved as little as it takes to lie on a screen, and no larger than that; a screen may be gone since
/// it was remembered.
QRect movedOntoScreen(QRect rect) {
    const QScreen* screen = QGuiApplication::screenAt(rect.center());
    const QRect place = (screen != nullptr ? screen : QGuiApplication::primaryScreen())->availableGeometry();
    if (isScreenSeen()) {
        rect.setSize(rect.size().boundedTo(place.size()));
    }
    return movedInto(place, rect);
}

/// The first push button of the window that is a control with that command.
OSStatus findButton(WindowRef window, OSType command, ControlRef* result) {
    if (!IsValidWindowPtr(window) || result == nullptr) {
        return errInvalidWindowRef;
    }
    for (const QPushButton* button : window->widget->findChildren<QPushButton*>()) {
        OpaqueControlRef* control = OpaqueControlRef::of(button);
        const bool isOwn = button->window() == window->widget;  // not one of a window in front of it
        if (control != nullptr && isOwn && control->command == command) {
            *result = control;
            return noErr;
        }
    }
    return errUnknownControl;
}

}  // namespace

std::vector<OpaqueWindowRef*>& livingWindows() {
    static std::vector<OpaqueWindowRef*> windows;
    return windows;
}

// ---- What the user does to a window

void NibWindow::reject() {
    if (OpaqueWindowRef* window = OpaqueWindowRef::of(this)) {
        window->userCloses();
    }
}

void NibWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    reject();
}

void NibWindow::showEvent(QShowEvent* event) {
    firstFrame_ = true;
    if (focusWidget() == nullptr) {
        focusFirstTabStop(this);
    }
    QDialog::showEvent(event);
}

bool NibWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate) {
        bringToEnd(OpaqueWindowRef::of(this));
    } else if (event->type() == QEvent::Paint && firstFrame_) {
        firstFrame_ = false;
        // The dialog's own paint is the first of its widgets'; what is queued here comes after the last one.
        QMetaObject::invokeMethod(
            this,
            [this] {
                OpaqueWindowRef* window = OpaqueWindowRef::of(this);
                ScopedEvent(kEventClassWindow, kEventWindowShown)
                    .with(kEventParamDirectObject, typeWindowRef, static_cast<WindowRef>(window))
                    .sendTo(window);
            },
            Qt::QueuedConnection);
    }
    return QDialog::event(event);
}

// ---- Window objects

OpaqueWindowRef::OpaqueWindowRef(QWidget* ownWidget) : QObject(ownWidget), widget(ownWidget) {
    livingWindows().push_back(this);
}

OpaqueWindowRef::~OpaqueWindowRef() {
    std::erase(livingWindows(), this);
    for (QEventLoop* loop : modalLoops) {
        loop->quit();
    }
}

OpaqueWindowRef* OpaqueWindowRef::of(const QWidget* widget) {
    const auto& windows = livingWindows();
    const auto found =
        std::find_if(windows.begin(), windows.end(), [widget](const auto* window) { return window->widget == widget; });
    return found != windows.end() ? *found : nullptr;
}

OpaqueEventTargetRef* OpaqueWindowRef::nextTarget() const {
    return GetApplicationEventTarget();
}

OSStatus OpaqueWindowRef::handleByDefault(EventRef event) {
    HICommand command{};
    const bool isCancel = GetEventClass(event) == kEventClassCommand &&
                          GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command,
                                            nullptr, &command) == noErr &&
                          command.commandID == kCommandCancel;
    if (isCancel && !modalLoops.empty()) {
        return QuitAppModalLoopForWindow(this);
    }
    return eventNotHandledErr;
}

void OpaqueWindowRef::userCloses() {
    ControlRef cancel = nullptr;
    if (GetWindowCancelButton(this, &cancel) == noErr) {
        if (IsControlEnabled(cancel)) {
            cancel->userHit();
        }
        return;
    }
    sendCommand(kCommandCancel);
}

OSStatus OpaqueWindowRef::sendCommand(OSType command) {
    return ScopedEvent(kEventClassCommand, kEventCommandProcess)
        .with(kEventParamDirectObject, typeHICommand, HICommand{0, command, nullptr, 0, nullptr})
        .sendTo(this);
}

// ---- The calls

Boolean IsValidWindowPtr(WindowRef window) {
    const auto& windows = livingWindows();
    return window != nullptr && std::find(windows.begin(), windows.end(), window) != windows.end();
}

void DisposeWindow(WindowRef window) {
    if (!IsValidWindowPtr(window)) {
        return;
    }
    QWidget* widget = window->widget;
    widget->hide();
    if (!isDispatching()) {
        delete widget;
        return;
    }
    // A handler of the window is running: the reference ends now, the widgets when the handler has returned.
    QuitAppModalLoopForWindow(window);
    std::erase(livingWindows(), window);
    widget->deleteLater();
}

void ShowWindow(WindowRef window) {
    if (!IsValidWindowPtr(window)) {
        return;
    }
    if (!window->widget->isVisible()) {
        const WindowRef front = FrontNonFloatingWindow();
        placeOnScreen(window->widget, front == nullptr ? nullptr : front->widget);
    }
    window->widget->show();
    bringToEnd(window);
}

void HideWindow(WindowRef window) {
    if (IsValidWindowPtr(window)) {
        window->widget->hide();
    }
}

Boolean IsWindowVisible(WindowRef window) {
    return IsValidWindowPtr(window) && window->widget->isVisible();
}

void SelectWindow(WindowRef window) {
    if (IsValidWindowPtr(window)) {
        window->widget->raise();
        window->widget->activateWindow();
        bringToEnd(window);
    }
}

WindowRef FrontNonFloatingWindow() {
    if (const QWidget* modal = QApplication::activeModalWidget()) {
        if (OpaqueWindowRef* window = OpaqueWindowRef::of(modal)) {
            return window;
        }
    }
    const auto& windows = livingWindows();
    const auto front =
        std::find_if(windows.rbegin(), windows.rend(), [](const auto* window) { return window->widget->isVisible(); });
    return front != windows.rend() ? *front : nullptr;
}

OSStatus SetWindowTitleWithCFString(WindowRef window, CFStringRef title) {
    if (!IsValidWindowPtr(window)) {
        return errInvalidWindowRef;
    }
    window->widget->setWindowTitle(toQString(title));
    return noErr;
}

OSStatus CopyWindowTitleAsCFString(WindowRef window, CFStringRef* title) {
    if (!IsValidWindowPtr(window) || title == nullptr) {
        return errInvalidWindowRef;
    }
    *title = toCFString(window->widget->windowTitle()).leak();
    return noErr;
}

OSStatus GetWindowContentBounds(WindowRef window, Rect* bounds) {
    if (!IsValidWindowPtr(window) || bounds == nullptr) {
        return errInvalidWindowRef;
    }
    const QRect rect = window->widget->geometry();
    *bounds = {static_cast<SInt16>(rect.y()), static_cast<SInt16>(rect.x()),
               static_cast<SInt16>(rect.y() + rect.height()), static_cast<SInt16>(rect.x() + rect.width())};
    return noErr;
}

OSStatus SetWindowContentBounds(WindowRef window, const Rect* bounds) {
    if (!IsValidWindowPtr(window) || bounds == nullptr) {
        return errInvalidWindowRef;
    }
    QWidget* const widget = window->widget;
    if (widget->isMaximized() || widget->isFullScreen()) {
        return noErr;
    }
    const QRect wanted(bounds->left, bounds->top, bounds->right - bounds->left, bounds->bottom - bounds->top);
    if (QLayout* const layout = widget->layout()) {
        layout->activate();  // controls that have been hidden hold it no wider
    }
    widget->setGeometry(movedOntoScreen(wanted));
    return noErr;
}

OSStatus GetWindowResizeLimits(WindowRef window, HISize* smallest) {
    if (!IsValidWindowPtr(window) || smallest == nullptr) {
        return errInvalidWindowRef;
    }
    const QLayout* const layout = window->widget->layout();
    const QSize least = layout != nullptr ? layout->totalMinimumSize() : window->widget->minimumSize();
    *smallest = {static_cast<double>(least.width()), static_cast<double>(least.height())};
    return noErr;
}

OSStatus GetAvailableWindowPositioningBounds(WindowRef window, Rect* bounds) {
    if (!IsValidWindowPtr(window) || bounds == nullptr) {
        return errInvalidWindowRef;
    }
    const QRect room = roomOnScreen(window->widget);
    *bounds = {static_cast<SInt16>(room.y()), static_cast<SInt16>(room.x()),
               static_cast<SInt16>(room.y() + room.height()), static_cast<SInt16>(room.x() + room.width())};
    return noErr;
}

double HIWindowGetScaleFactor(WindowRef window) {
    return IsValidWindowPtr(window) ? window->widget->devicePixelRatioF() : 1;
}

OSStatus GetWindowDefaultButton(WindowRef window, ControlRef* button) {
    return findButton(window, kCommandOK, button);
}

OSStatus GetWindowCancelButton(WindowRef window, ControlRef* button) {
    return findButton(window, kCommandCancel, button);
}
