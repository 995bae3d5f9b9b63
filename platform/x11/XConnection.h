// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/XHandle.h"

#include <QObject>
#include <QSocketNotifier>

#include <xcb/xcb.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

/// A connection to the X server beside Qt's, whose events come from Qt's loop. If it breaks, there are no more answers
/// and no more events, and nothing else happens.
class XConnection final : public QObject {
    Q_OBJECT

public:
    /// Connects to the display of the environment; null where that fails. Needs Qt's loop.
    [[nodiscard]] static std::unique_ptr<XConnection> connected();

    [[nodiscard]] xcb_connection_t* get() const noexcept { return m_handle.get(); }
    [[nodiscard]] xcb_window_t root() const noexcept { return m_root; }
    [[nodiscard]] bool isOpen() const { return m_handle.isOpen(); }

    /// Whether the keyboard can have a key of that code. No key is there once the connection is broken.
    [[nodiscard]] bool hasKey(xcb_keycode_t keycode) const;

    /// The atom of a name, which the server knows from then on.
    [[nodiscard]] xcb_atom_t atom(std::string_view name);

    /// Returns when the server has done all that was asked of it; its events until then have been received.
    void roundTrip();

    /// Sends what is waiting, and emits the events that have come.
    void drain();

signals:
    /// An event, for all listeners: an answer that one of them waits for brings along the events of others.
    void received(const xcb_generic_event_t& event);

private:
    explicit XConnection(XHandle handle);

    XHandle m_handle;
    xcb_window_t m_root;
    std::map<std::string, xcb_atom_t, std::less<>> m_atoms;
    QSocketNotifier m_readable;  // goes before the connection
};
