// SPDX-License-Identifier: MIT
#include "platform/x11/PostedKeys.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <cstdint>

namespace {

void post(xcb_connection_t* connection, std::uint8_t type, xcb_keycode_t keycode) {
    xcb_test_fake_input(connection, type, keycode, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_flush(connection);
}

}  // namespace

void PostedKeys::press(xcb_keycode_t keycode) {
    post(m_connection.get(), XCB_KEY_PRESS, keycode);
    m_down.push_back(keycode);
}

void PostedKeys::release(xcb_keycode_t keycode) {
    if (std::erase(m_down, keycode) > 0)
        post(m_connection.get(), XCB_KEY_RELEASE, keycode);
}

void PostedKeys::releaseAll() {
    while (!m_down.empty())
        release(m_down.back());
}

void PostedKeys::releaseForUser(xcb_keycode_t keycode) {
    post(m_connection.get(), XCB_KEY_RELEASE, keycode);
}

bool PostedKeys::isDown(xcb_keycode_t keycode) const noexcept {
    return std::ranges::find(m_down, keycode) != m_down.end();
}
