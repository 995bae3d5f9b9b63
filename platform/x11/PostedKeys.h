// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/XConnection.h"

#include <xcb/xcb.h>

#include <vector>

/// The keys that we hold down through the XTEST extension. The server would keep them down after our end.
class PostedKeys {
public:
    /// The connection outlives the keys.
    explicit PostedKeys(XConnection& connection) noexcept : m_connection(connection) {}
    PostedKeys(const PostedKeys&) = delete;
    PostedKeys& operator=(const PostedKeys&) = delete;
    ~PostedKeys() { releaseAll(); }

    void press(xcb_keycode_t keycode);

    /// Does nothing for a key that is not ours: the user may hold it.
    void release(xcb_keycode_t keycode);

    /// Releases the keys in the reverse of their order.
    void releaseAll();

    /// Releases for all programs a key that the user holds.
    void releaseForUser(xcb_keycode_t keycode);

    [[nodiscard]] bool isDown(xcb_keycode_t keycode) const noexcept;

private:
    XConnection& m_connection;
    std::vector<xcb_keycode_t> m_down;  // in the order of the presses
};
