// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/XConnection.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The top-level windows of all programs, as the window manager and they themselves describe them (Extended Window
/// Manager Hints). Every question is answered live; a window that has gone by then is no fault.
class XWindows {
public:
    /// The connection outlives it.
    explicit XWindows(XConnection& connection) : m_connection(connection) {}

    /// The window that has the focus; nothing for a moment between two windows, and without a window manager.
    [[nodiscard]] std::optional<xcb_window_t> active();

    /// The windows that the manager looks after, the topmost last; nothing where it keeps no list.
    [[nodiscard]] std::optional<std::vector<xcb_window_t>> stacked();

    [[nodiscard]] bool exists(xcb_window_t window);

    /// The process of a window that exists, as the server knows it, else as the window says. Windows of a program
    /// that neither knows share a negative number.
    [[nodiscard]] std::int64_t processIdentifier(xcb_window_t window);

    /// The same for ourselves; nothing where the server does not know.
    [[nodiscard]] std::optional<std::int64_t> ownProcessIdentifier();

    /// Empty where there is none.
    [[nodiscard]] std::string title(xcb_window_t window);

    /// The class of the window's program: a name in Latin letters that goes for all its windows. Empty where there is
    /// none.
    [[nodiscard]] std::string className(xcb_window_t window);

    /// The window that a window is a dialogue of; nothing where it is none.
    [[nodiscard]] std::optional<xcb_window_t> owner(xcb_window_t window);

    /// The desktop that a window is on; nothing where it is on all or the manager has no desktops.
    [[nodiscard]] std::optional<std::uint32_t> desktop(xcb_window_t window);
    [[nodiscard]] std::optional<std::uint32_t> currentDesktop();

private:
    struct Property {
        xcb_atom_t type = XCB_ATOM_NONE;
        std::vector<std::uint8_t> value;  // of items of 8 bits; other items make it empty
    };

    [[nodiscard]] Property textProperty(xcb_window_t window, xcb_atom_t name);
    [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_window_t window, std::string_view name, xcb_atom_t type);
    [[nodiscard]] std::optional<std::uint32_t> number(xcb_window_t window, std::string_view name);
    [[nodiscard]] std::optional<std::int64_t> clientProcess(std::uint32_t resource);
    [[nodiscard]] std::string decoded(const Property& property);

    XConnection& m_connection;
};
