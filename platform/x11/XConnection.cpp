// SPDX-License-Identifier: MIT
#include "platform/x11/XConnection.h"

#include "platform/x11/XAnswer.h"

#include <QAbstractEventDispatcher>

#include <cstdint>
#include <utility>

namespace {

xcb_window_t rootOf(xcb_connection_t* connection, int screen) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screen > 0 && screens.rem > 1; --screen)
        xcb_screen_next(&screens);
    return screens.data->root;
}

}  // namespace

std::unique_ptr<XConnection> XConnection::connected() {
    int screen = 0;
    Connection connection(xcb_connect(nullptr, &screen));
    if (xcb_connection_has_error(connection.get()))
        return nullptr;
    return std::unique_ptr<XConnection>(new XConnection(std::move(connection), screen));
}

XConnection::XConnection(Connection connection, int screen)
    : m_connection(std::move(connection)),
      m_root(rootOf(m_connection.get(), screen)),
      m_readable(xcb_get_file_descriptor(m_connection.get()), QSocketNotifier::Read) {
    connect(&m_readable, &QSocketNotifier::activated, this, &XConnection::drain);
    // An answer that is waited for brings events along, and the socket no longer looks readable.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, &XConnection::drain);
}

bool XConnection::isOpen() const {
    return xcb_connection_has_error(m_connection.get()) == 0;
}

bool XConnection::hasKey(xcb_keycode_t keycode) const {
    const auto* const setup = xcb_get_setup(get());
    return isOpen() && keycode >= setup->min_keycode && keycode <= setup->max_keycode;
}

xcb_atom_t XConnection::atom(std::string_view name) {
    const auto known = m_atoms.find(name);
    if (known != m_atoms.end())
        return known->second;
    const auto request = xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(name.size()), name.data());
    const XAnswer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(get(), request, nullptr));
    const xcb_atom_t atom = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    m_atoms.emplace(name, atom);
    return atom;
}

void XConnection::roundTrip() {
    const XAnswer<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(get(), xcb_get_input_focus(get()), nullptr));
    drain();
}

void XConnection::drain() {
    xcb_flush(get());
    while (const XAnswer<xcb_generic_event_t> event{xcb_poll_for_event(get())})
        emit received(*event);
    if (!isOpen())
        m_readable.setEnabled(false);  // what is broken stays readable for ever
}
