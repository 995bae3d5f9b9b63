// SPDX-License-Identifier: MIT
#include "platform/x11/XConnection.h"

#include "platform/x11/XAnswer.h"

#include <QAbstractEventDispatcher>

#include <utility>

std::unique_ptr<XConnection> XConnection::connected() {
    XHandle handle;
    if (!handle.isOpen())
        return nullptr;
    return std::unique_ptr<XConnection>(new XConnection(std::move(handle)));
}

XConnection::XConnection(XHandle handle)
    : m_handle(std::move(handle)),
      m_root(m_handle.root()),
      m_readable(xcb_get_file_descriptor(get()), QSocketNotifier::Read) {
    connect(&m_readable, &QSocketNotifier::activated, this, &XConnection::drain);
    // An answer that is waited for brings events along, and the socket no longer looks readable.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, &XConnection::drain);
}

bool XConnection::hasKey(xcb_keycode_t keycode) const {
    const auto* const setup = xcb_get_setup(get());
    return isOpen() && keycode >= setup->min_keycode && keycode <= setup->max_keycode;
}

xcb_atom_t XConnection::atom(std::string_view name) {
    const auto known = m_atoms.find(name);
    if (known != m_atoms.end())
        return known->second;
    const auto atom = m_handle.atom(name);
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
