// SPDX-License-Identifier: MIT
#include "platform/x11/ClipboardChangeCount.h"

#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include <cstdlib>
#include <optional>
#include <string_view>
#include <utility>

namespace {

struct Free {
    void operator()(void* reply) const noexcept { std::free(reply); }
};

/// What the server answered; null where it did not.
template <class Reply>
using Answer = std::unique_ptr<Reply, Free>;

std::optional<std::uint8_t> firstXFixesEvent(xcb_connection_t* connection) {
    const auto* extension = xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (!extension || !extension->present)
        return std::nullopt;
    // The server takes no other XFIXES request before this one.
    const auto version = xcb_xfixes_query_version(connection, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION);
    if (!Answer<xcb_xfixes_query_version_reply_t>(xcb_xfixes_query_version_reply(connection, version, nullptr)))
        return std::nullopt;
    return extension->first_event;
}

xcb_atom_t atom(xcb_connection_t* connection, std::string_view name) {
    const auto request = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const Answer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, request, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

// Every kind of change: an owner that comes, its window that is destroyed, its program that ends.
void selectChanges(xcb_connection_t* connection, xcb_window_t root, xcb_atom_t selection) {
    xcb_xfixes_select_selection_input(connection, root, selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
}

// The answer comes behind every notification of what happened before the question.
void roundTrip(xcb_connection_t* connection, xcb_atom_t selection) {
    const Answer<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, selection), nullptr));
}

}  // namespace

std::unique_ptr<ClipboardChangeCount> ClipboardChangeCount::connected() {
    int screen = 0;
    Connection connection(xcb_connect(nullptr, &screen));
    if (xcb_connection_has_error(connection.get()))
        return nullptr;
    const auto firstEvent = firstXFixesEvent(connection.get());
    const auto clipboard = atom(connection.get(), "CLIPBOARD");
    if (!firstEvent || clipboard == XCB_ATOM_NONE)
        return nullptr;

    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    for (; screen > 0 && screens.rem > 1; --screen)
        xcb_screen_next(&screens);
    selectChanges(connection.get(), screens.data->root, clipboard);
    roundTrip(connection.get(), clipboard);

    const auto notification = static_cast<std::uint8_t>(*firstEvent + XCB_XFIXES_SELECTION_NOTIFY);
    return std::unique_ptr<ClipboardChangeCount>(
        new ClipboardChangeCount(std::move(connection), clipboard, notification));
}

std::int64_t ClipboardChangeCount::value() {
    roundTrip(m_connection.get(), m_clipboard);
    while (const Answer<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())})
        if ((event->response_type & ~0x80) == m_notification)  // the upper bit says that a program sent it
            ++m_value;
    return m_value;
}

ClipboardChangeCount::ClipboardChangeCount(Connection connection, std::uint32_t clipboard,
                                           std::uint8_t notification) noexcept
    : m_connection(std::move(connection)), m_clipboard(clipboard), m_notification(notification) {}

void ClipboardChangeCount::Disconnect::operator()(xcb_connection_t* connection) const noexcept {
    xcb_disconnect(connection);
}
