// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <initializer_list>
#include <memory>

/// The user's hands on the keyboard of the display of the environment. Keys go by X's keycodes.
class Hands {
public:
    static constexpr xcb_keycode_t a = 38, b = 56, x = 53, shift = 50, control = 37, alt = 64, super = 133,
                                   capsLock = 66, numLock = 77;

    Hands();

    void press(xcb_keycode_t key);
    void release(xcb_keycode_t key);

    /// Presses the keys in their order and lets go in the reverse one.
    void strike(std::initializer_list<xcb_keycode_t> keys);

    /// The connection that the hands work on, for what else a test asks of the server.
    [[nodiscard]] xcb_connection_t* connection() const { return m_connection.get(); }
    [[nodiscard]] xcb_window_t root() const { return m_root; }

    /// Returns when the server has done all of it.
    void roundTrip();

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    xcb_window_t m_root;
};
