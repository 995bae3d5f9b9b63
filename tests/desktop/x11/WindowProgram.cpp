// SPDX-License-Identifier: MIT
// A program with windows that does not say who it is. Each line of its input is a command, and each is answered with
// a line: "create" makes a window and answers with its number, "map N" shows it, "destroy N" ends it.
// "refuse N" has it take no focus any more, "grab N" takes the key with Ctrl and Alt.
#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

namespace {

xcb_window_t rootOf(xcb_connection_t* connection) {
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

xcb_window_t create(xcb_connection_t* connection) {
    const auto* const screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const xcb_window_t window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 20, 20, 300, 200, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, XCB_CW_BACK_PIXEL, &screen->white_pixel);
    return window;
}

void takeNoFocus(xcb_connection_t* connection, xcb_window_t window) {
    constexpr std::uint32_t inputHint = 1;
    constexpr std::array<std::uint32_t, 9> hints{inputHint, 0};
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, 32,
                        hints.size(), hints.data());
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
        else if (command == "refuse")
            takeNoFocus(connection, window);
        else if (command == "grab")
            xcb_grab_key(connection, 0, rootOf(connection), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1,
                         static_cast<xcb_keycode_t>(window), XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        else
            xcb_destroy_window(connection, window);
        std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
        std::cout << window << std::endl;
    }
    xcb_disconnect(connection);
}
