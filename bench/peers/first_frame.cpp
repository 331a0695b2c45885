// Waits until a window of that title shows something, and says when that was: seconds since 1970. A window that is of
// one color shows nothing yet.
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <span>
#include <string_view>
#include <thread>

namespace {

template <typename T>
using Answer = std::unique_ptr<T, decltype(&std::free)>;

template <typename T>
Answer<T> answer(T* pointer) {
    return {pointer, &std::free};
}

bool isTitled(xcb_connection_t* screen, xcb_window_t window, std::string_view title) {
    const auto name = answer(xcb_get_property_reply(
        screen, xcb_get_property(screen, 0, window, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY, 0, 64), nullptr));
    return name && title == std::string_view(static_cast<const char*>(xcb_get_property_value(name.get())),
                                             static_cast<std::size_t>(xcb_get_property_value_length(name.get())));
}

/// Whether there are more colors than one in the window's middle row.
bool showsSomething(xcb_connection_t* screen, xcb_window_t window) {
    const auto attributes =
        answer(xcb_get_window_attributes_reply(screen, xcb_get_window_attributes(screen, window), nullptr));
    const auto place = answer(xcb_get_geometry_reply(screen, xcb_get_geometry(screen, window), nullptr));
    if (!attributes || !place || attributes->map_state != XCB_MAP_STATE_VIEWABLE) {
        return false;
    }
    const auto image = answer(
        xcb_get_image_reply(screen,
                            xcb_get_image(screen, XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0,
                                          static_cast<std::int16_t>(place->height / 2), place->width, 1, UINT32_MAX),
                            nullptr));
    if (!image) {
        return false;
    }
    const std::span pixels(reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get())), place->width);
    return std::ranges::any_of(pixels, [&](std::uint32_t pixel) { return pixel != pixels.front(); });
}

}  // namespace

int main(int argc, char** argv) {
    xcb_connection_t* const screen = xcb_connect(nullptr, nullptr);
    if (argc != 2 || xcb_connection_has_error(screen) != 0) {
        std::fprintf(stderr, "usage: first_frame TITLE (on a screen of 32 bits a pixel)\n");
        return 2;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(screen)).data->root;
    for (;;) {
        const auto tree = answer(xcb_query_tree_reply(screen, xcb_query_tree(screen, root), nullptr));
        if (!tree) {
            return 1;
        }
        for (const xcb_window_t window : std::span(xcb_query_tree_children(tree.get()), tree->children_len)) {
            if (isTitled(screen, window, argv[1]) && showsSomething(screen, window)) {
                const std::chrono::duration<double> now = std::chrono::system_clock::now().time_since_epoch();
                std::printf("%.4f\n", now.count());
                return 0;
            }
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}
