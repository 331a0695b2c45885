// Windows in front of those of other programs.

#include "platform/toolbox/Windows.h"
#include "platform/toolbox/objects.h"

#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

OSStatus SetWindowForeignOwner(WindowRef window, CFStringRef owner) {
    if (!IsValidWindowPtr(window)) {
        return errInvalidWindowRef;
    }
    const QString name = toQString(owner);
    const QString prefix = QStringLiteral("x11:");
    bool isNumber = false;
    const qulonglong number = name.mid(prefix.size()).toULongLong(&isNumber, 16);
    if (!name.startsWith(prefix) || !isNumber || number == 0 || number > UINT32_MAX ||
        QGuiApplication::platformName() != QStringLiteral("xcb")) {
        return paramErr;
    }
    QWidget* const widget = window->widget;
    widget->winId();  // makes its handle
    QWindow* const foreign = QWindow::fromWinId(static_cast<WId>(number));
    foreign->setParent(nullptr);
    QObject::connect(widget, &QObject::destroyed, foreign, &QObject::deleteLater);
    widget->windowHandle()->setTransientParent(foreign);
    return noErr;
}
