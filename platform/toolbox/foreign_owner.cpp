// Windows in front of those of other programs.

#include "platform/toolbox/Windows.h"
#include "platform/toolbox/objects.h"
#include "platform/toolbox/wayland_owner.h"

#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

#include <string>

#include <dlfcn.h>

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

/// The module lies beside the library that this function is in; a build may be without it.
bool setWaylandOwner(QWidget* widget, const QString& name) {
    Dl_info self = {};
    const bool isKnown = dladdr(reinterpret_cast<const void*>(&SetWindowForeignOwner), &self) != 0;
    const std::string path = isKnown ? self.dli_fname : "";
    void* const module = dlopen((path.substr(0, path.rfind('/') + 1) + kWaylandModule).c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const set = module == nullptr ? nullptr : dlsym(module, "tavroSetWaylandOwner");
    return set != nullptr &&
           reinterpret_cast<decltype(&tavroSetWaylandOwner)>(set)(widget->windowHandle(), name.toUtf8().constData());
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
