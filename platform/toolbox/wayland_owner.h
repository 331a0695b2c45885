// Windows in front of those of other programs, on Wayland.
#pragma once

class QWindow;

/// The function of the object that does it (libtavro_toolbox_wayland.so), which only programs on Wayland load: lays the
/// window, from when it is shown on, in front of the one that another program has exported under the handle
/// (xdg-foreign). False, and nothing is done, where the compositor or this build of Qt cannot do it.
extern "C" __attribute__((visibility("default"))) bool tavroSetWaylandOwner(QWindow* window, const char* handle);
