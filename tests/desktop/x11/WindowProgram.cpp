// SPDX-License-Identifier: MIT
// A program with windows that tells nobody who it is. Each line of its input is a command, and each is answered with
// a line: "create" makes a window and tells its number, "map N" shows it, "destroy N" ends it.
#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

namespace {

xcb_window_t create(xcb_connection_t* connection) {
    const auto* const screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const xcb_window_t window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 20, 20, 300, 200, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, XCB_CW_BACK_PIXEL, &screen->white_pixel);
    return window;
}

}  // namespace

int main() {
    auto* const connection = xcb_connect(nullptr, nullptr);
    std::string command;
    std::uint32_t window = 0;
    while (std::cin >> command) {
        if (command == "create")
            window = create(connection);
        else if (std::cin >> window; command == "map")
            xcb_map_window(connection, window);
        else
            xcb_destroy_window(connection, window);
        std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
        std::cout << window << std::endl;
    }
    xcb_disconnect(connection);
}
