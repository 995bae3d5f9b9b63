// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/XAnswer.h"

#include <xcb/xcb.h>

/// The keys that are down, held by hands or by programs, at the time of construction. None on a broken connection.
class DownKeys {
public:
    explicit DownKeys(xcb_connection_t* connection)
        : m_keys(xcb_query_keymap_reply(connection, xcb_query_keymap(connection), nullptr)) {}

    [[nodiscard]] bool contains(xcb_keycode_t keycode) const noexcept {
        return m_keys && (m_keys->keys[keycode / 8] & (1U << (keycode % 8))) != 0;
    }

private:
    XAnswer<xcb_query_keymap_reply_t> m_keys;
};
