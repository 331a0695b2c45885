// Windows in front of those of other programs.

#include "platform/foundation/own_module.h"
#include "platform/toolbox/Windows.h"
#include "platform/toolbox/objects.h"
#include "platform/toolbox/wayland_owner.h"

#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

#include <string>

namespace {

constexpr const char* kWaylandModule = "libtavro_toolbox_wayland.so";

bool setX11Owner(QWidget* widget, const QString& name) {
    bool isNumber = false;
    const qulonglong number = name.toULongLong(&isNumber, 16);
    if (!isNumber || number == 0 || number > UINT32_MAX) {
        return false;
    }
    QWindow* const foreign = QWindow::fromWinId(static_cast<WId>(number));
    foreign->setParent(nullptr);
    QObject::connect(widget, &QObject::destroyed, foreign, &QObject::deleteLater);
    widget->windowHandle()->setTransientParent(foreign);
    return true;
}

/// A build may be without the module.
bool setWaylandOwner(QWidget* widget, const QString& name) {
    std::string reason;
    const auto set = ownModuleFunction<decltype(tavroSetWaylandOwner)>(kWaylandModule, "tavroSetWaylandOwner", &reason);
    return set != nullptr && set(widget->windowHandle(), name.toUtf8().constData());
}

}  // namespace

OSStatus SetWindowForeignOwner(WindowRef window, CFStringRef owner) {
    if (!IsValidWindowPtr(window)) {
        return errInvalidWindowRef;
    }
    struct ScreenRow {
        QLatin1String platform;  // how Qt's name for it begins
        QLatin1String prefix;
        bool (*set)(QWidget*, const QString&);
    };
    static constexpr ScreenRow kScreens[] = {
        // Qt's platform, what names its windows, what gives them an owner
        {QLatin1String("xcb"), QLatin1String("x11:"), setX11Owner},
        {QLatin1String("wayland"), QLatin1String("wayland:"), setWaylandOwner},
    };
    const QString name = toQString(owner);
    for (const ScreenRow& screen : kScreens) {
        if (name.startsWith(screen.prefix) && QGuiApplication::platformName().startsWith(screen.platform)) {
            window->widget->winId();  // makes its handle
            return screen.set(window->widget, name.mid(screen.prefix.size())) ? noErr : paramErr;
        }
    }
    return paramErr;
}
