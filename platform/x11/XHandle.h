// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <memory>
#include <string_view>

/// A bare connection to the display of the environment, which ends with its owner. It may fail to open, and may break
/// later: there are no answers then.
class XHandle {
public:
    XHandle();

    [[nodiscard]] xcb_connection_t* get() const noexcept { return m_connection.get(); }
    [[nodiscard]] bool isOpen() const;

    /// The number of the environment's screen, and its root window. They need a connection that has opened.
    [[nodiscard]] int screen() const noexcept { return m_screen; }
    [[nodiscard]] xcb_window_t root() const;

    /// The atom of a name, which the server knows from then on.
    [[nodiscard]] xcb_atom_t atom(std::string_view name) const { return atom(name, false); }

    /// The atom of a name, or XCB_ATOM_NONE where the server does not know it yet.
    [[nodiscard]] xcb_atom_t existingAtom(std::string_view name) const { return atom(name, true); }

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const noexcept { xcb_disconnect(connection); }
    };

    [[nodiscard]] xcb_atom_t atom(std::string_view name, bool onlyIfExists) const;

    int m_screen = 0;
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
};
