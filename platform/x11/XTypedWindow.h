// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/Applications.h"
#include "platform/x11/XConnection.h"
#include "platform/x11/XWindows.h"

#include <xcb/xcb.h>

#include <functional>
#include <optional>
#include <vector>

/// The window that one run types into. X gives a key to the window that has the focus when the key is struck, and
/// any program may move the focus at any time.
class XTypedWindow {
public:
    /// The connection outlives it. A window that has gone by now, or whose number is another process's by now, is
    /// never in front.
    XTypedWindow(XConnection& connection, const DesktopWindow& window);

    /// Strikes keys while the server serves no other client, so that the focus cannot move in between. False, with
    /// nothing struck, where the window does not have it. Costs one answer of the server, some tens of microseconds.
    [[nodiscard]] bool perform(const std::function<void()>& strike);

    /// As `KeyEventSource::follow` says.
    [[nodiscard]] bool follow();

private:
    [[nodiscard]] bool hasFocus();
    [[nodiscard]] bool contains(xcb_window_t window);
    [[nodiscard]] std::optional<xcb_window_t> successor();
    [[nodiscard]] bool hasGone();
    void become(xcb_window_t window);

    XConnection& m_connection;
    XWindows m_windows;
    std::int64_t m_processIdentifier;
    std::vector<xcb_window_t> m_windowsAtStart;  // of all programs
    xcb_window_t m_window = XCB_WINDOW_NONE;
    std::optional<xcb_window_t> m_owner;       // the window that it is a dialogue of
    xcb_window_t m_focused = XCB_WINDOW_NONE;  // it, or one within it, that had the focus last
};
