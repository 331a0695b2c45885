#include "platform/toolbox/wayland_owner.h"

#include <qpa/qplatformnativeinterface.h>
#include <xdg-foreign.h>
#include <QEvent>
#include <QGuiApplication>
#include <QWindow>

#include <cstring>

namespace {

constexpr std::size_t kMostHandle = 1024;

wl_display* displayOfQt() {
    return static_cast<wl_display*>(
        QGuiApplication::platformNativeInterface()->nativeResourceForIntegration(QByteArrayLiteral("wl_display")));
}

/// What the compositor has for windows of other programs; null where it has nothing.
zxdg_importer_v2* findImporter(wl_display* display) {
    // A queue of our own, so that nobody else's events are handed out meanwhile.
    wl_event_queue* const queue = wl_display_create_queue(display);
    auto* const wrapped = static_cast<wl_display*>(wl_proxy_create_wrapper(display));
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(wrapped), queue);
    wl_registry* const registry = wl_display_get_registry(wrapped);
    wl_proxy_wrapper_destroy(wrapped);
    zxdg_importer_v2* importer = nullptr;
    static constexpr wl_registry_listener kListener{
        [](void* found, wl_registry* all, uint32_t name, const char* interface, uint32_t) {
            if (std::strcmp(interface, zxdg_importer_v2_interface.name) == 0) {
                *static_cast<zxdg_importer_v2**>(found) =
                    static_cast<zxdg_importer_v2*>(wl_registry_bind(all, name, &zxdg_importer_v2_interface, 1));
            }
        },
        [](void*, wl_registry*, uint32_t) {}};
    wl_registry_add_listener(registry, &kListener, &importer);
    wl_display_roundtrip_queue(display, queue);
    wl_registry_destroy(registry);
    if (importer != nullptr) {
        wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(importer), nullptr);
    }
    wl_event_queue_destroy(queue);
    return importer;
}

/// The other program's window, as long as this one lives. A window gets another surface each time that it is shown.
class Owner : public QObject {
public:
    Owner(QWindow* window, zxdg_importer_v2* importer, const char* handle)
        : QObject(window),
          window_(window),
          importer_(importer),
          imported_(zxdg_importer_v2_import_toplevel(importer, handle)) {
        window->installEventFilter(this);
        own();
    }
    ~Owner() override {
        if (displayOfQt() != nullptr) {
            zxdg_imported_v2_destroy(imported_);
            zxdg_importer_v2_destroy(importer_);
        }
    }
    Owner(const Owner&) = delete;
    Owner& operator=(const Owner&) = delete;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Expose) {
            own();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    /// Only a surface that is a window can have an owner; it is one from its first exposure on.
    void own() {
        auto* const surface =
            !window_->isExposed()
                ? nullptr
                : static_cast<wl_surface*>(QGuiApplication::platformNativeInterface()->nativeResourceForWindow(
                      QByteArrayLiteral("surface"), window_));
        if (surface != nullptr && surface != owned_) {
            zxdg_imported_v2_set_parent_of(imported_, surface);
        }
        owned_ = surface;
    }

    QWindow* window_;
    zxdg_importer_v2* importer_;
    zxdg_imported_v2* imported_;
    wl_surface* owned_ = nullptr;
};

}  // namespace

bool tavroSetWaylandOwner(QWindow* window, const char* handle) {
    // The header is private to one version of Qt, and a message that is too long ends the connection.
    if (std::strcmp(qVersion(), QT_VERSION_STR) != 0 || std::strlen(handle) > kMostHandle) {
        return false;
    }
    wl_display* const display = displayOfQt();
    zxdg_importer_v2* const importer = display == nullptr ? nullptr : findImporter(display);
    if (importer == nullptr) {
        return false;
    }
    new Owner(window, importer, handle);  // owned by the window
    return true;
}
