// SPDX-License-Identifier: MIT
#include "platform/x11/ClipboardChangeCount.h"

#include "platform/x11/XAnswer.h"

#include <xcb/xfixes.h>

#include <optional>
#include <utility>

namespace {

std::optional<std::uint8_t> firstXFixesEvent(xcb_connection_t* connection) {
    const auto* extension = xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (!extension || !extension->present)
        return std::nullopt;
    // The server takes no other XFIXES request before this one.
    const auto version = xcb_xfixes_query_version(connection, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION);
    if (!XAnswer<xcb_xfixes_query_version_reply_t>(xcb_xfixes_query_version_reply(connection, version, nullptr)))
        return std::nullopt;
    return extension->first_event;
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
    const XAnswer<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, selection), nullptr));
}

}  // namespace

std::unique_ptr<ClipboardChangeCount> ClipboardChangeCount::connected() {
    XHandle handle;
    if (!handle.isOpen())
        return nullptr;
    const auto firstEvent = firstXFixesEvent(handle.get());
    const auto clipboard = handle.atom("CLIPBOARD");
    if (!firstEvent || clipboard == XCB_ATOM_NONE)
        return nullptr;
    selectChanges(handle.get(), handle.root(), clipboard);
    roundTrip(handle.get(), clipboard);
    const auto notification = static_cast<std::uint8_t>(*firstEvent + XCB_XFIXES_SELECTION_NOTIFY);
    return std::unique_ptr<ClipboardChangeCount>(new ClipboardChangeCount(std::move(handle), clipboard, notification));
}

std::int64_t ClipboardChangeCount::value() {
    roundTrip(m_handle.get(), m_clipboard);
    while (const XAnswer<xcb_generic_event_t> event{xcb_poll_for_event(m_handle.get())})
        if ((event->response_type & ~0x80) == m_notification)  // the upper bit says that a program sent it
            ++m_value;
    return m_value;
}

ClipboardChangeCount::ClipboardChangeCount(XHandle handle, xcb_atom_t clipboard, std::uint8_t notification) noexcept
    : m_handle(std::move(handle)), m_clipboard(clipboard), m_notification(notification) {}
