// SPDX-License-Identifier: MIT
#include "tests/desktop/x11/Hands.h"

#include "platform/x11/XAnswer.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <vector>

Hands::Hands()
    : m_connection(xcb_connect(nullptr, nullptr)),
      m_root(xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data->root) {}

void Hands::press(xcb_keycode_t key) {
    xcb_test_fake_input(connection(), XCB_KEY_PRESS, key, 0, XCB_WINDOW_NONE, 0, 0, 0);
    roundTrip();
}

void Hands::release(xcb_keycode_t key) {
    xcb_test_fake_input(connection(), XCB_KEY_RELEASE, key, 0, XCB_WINDOW_NONE, 0, 0, 0);
    roundTrip();
}

void Hands::strike(std::initializer_list<xcb_keycode_t> keys) {
    for (const auto key : keys)
        press(key);
    std::vector<xcb_keycode_t> reversed(keys);
    std::ranges::reverse(reversed);
    for (const auto key : reversed)
        release(key);
}

void Hands::roundTrip() {
    const XAnswer<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(connection(), xcb_get_input_focus(connection()), nullptr));
}
