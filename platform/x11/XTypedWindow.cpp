// SPDX-License-Identifier: MIT
#include "platform/x11/XTypedWindow.h"

#include "platform/x11/XAnswer.h"

#include <algorithm>

namespace {

/// Has the server serve no other client. What the keys bring about reaches the others afterwards.
class ServerToOurselves {
public:
    explicit ServerToOurselves(xcb_connection_t* connection) : m_connection(connection) { xcb_grab_server(connection); }
    ~ServerToOurselves() {
        xcb_ungrab_server(m_connection);
        xcb_flush(m_connection);
    }
    ServerToOurselves(const ServerToOurselves&) = delete;
    ServerToOurselves& operator=(const ServerToOurselves&) = delete;

private:
    xcb_connection_t* m_connection;
};

// With no window in focus keys go nowhere, or to whatever lies under the pointer: so it is for a moment when a window
// has closed.
bool isWindow(xcb_window_t focus) {
    return focus != XCB_INPUT_FOCUS_NONE && focus != XCB_INPUT_FOCUS_POINTER_ROOT;
}

xcb_window_t focusOf(xcb_connection_t* connection) {
    const XAnswer<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    return reply ? reply->focus : xcb_window_t{XCB_INPUT_FOCUS_NONE};
}

}  // namespace

XTypedWindow::XTypedWindow(XConnection& connection, const DesktopWindow& window)
    : m_connection(connection),
      m_windows(connection),
      m_processIdentifier(window.processIdentifier),
      m_windowsAtStart(m_windows.stacked().value_or(std::vector<xcb_window_t>())) {
    const auto number = static_cast<xcb_window_t>(window.number);
    if (isWindow(number) && m_windows.exists(number) && m_windows.processIdentifier(number) == m_processIdentifier)
        become(number);
}

bool XTypedWindow::perform(const std::function<void()>& strike) {
    const ServerToOurselves toOurselves(m_connection.get());
    if (!hasFocus())
        return false;
    strike();
    return true;
}

bool XTypedWindow::follow() {
    if (hasFocus())
        return true;
    const auto window = successor();
    if (!window)
        return false;
    become(*window);
    return hasFocus();
}

bool XTypedWindow::hasFocus() {
    const auto focus = focusOf(m_connection.get());
    if (m_window == XCB_WINDOW_NONE || !isWindow(focus) || (focus != m_focused && !contains(focus)))
        return false;
    m_focused = focus;
    return true;
}

// Many programs give the focus to a window of theirs within the one that the window manager knows.
bool XTypedWindow::contains(xcb_window_t window) {
    while (window != m_window) {
        const XAnswer<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(m_connection.get(), xcb_query_tree(m_connection.get(), window), nullptr));
        if (!tree || tree->parent == XCB_WINDOW_NONE || tree->parent == m_connection.root())
            return false;
        window = tree->parent;
    }
    return true;
}

std::optional<xcb_window_t> XTypedWindow::successor() {
    const auto front = m_windows.active();
    if (!front || m_window == XCB_WINDOW_NONE || !m_windows.exists(*front) ||
        m_windows.processIdentifier(*front) != m_processIdentifier)
        return std::nullopt;
    if (front == m_owner)
        return hasGone() ? front : std::nullopt;
    const bool isNew = std::ranges::find(m_windowsAtStart, *front) == m_windowsAtStart.end();
    return isNew && (m_windows.owner(*front) == m_window || hasGone()) ? front : std::nullopt;
}

// A dialogue that is closed may live on, unseen.
bool XTypedWindow::hasGone() {
    const auto stacked = m_windows.stacked();
    return !stacked || std::ranges::find(*stacked, m_window) == stacked->end();
}

void XTypedWindow::become(xcb_window_t window) {
    m_window = window;
    m_owner = m_windows.owner(window);
    m_focused = XCB_WINDOW_NONE;
}
