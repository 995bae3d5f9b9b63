// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/KeyboardLayout.h"
#include "platform/x11/XConnection.h"
#include "platform/x11/XKeymap.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

/// The layout of the X server's core keyboard, in the group that is active now. There is none where the server has no
/// XKB extension or the connection broke.
class XKeyboardLayout final : public KeyboardLayout {
public:
    /// The connection outlives the layout.
    explicit XKeyboardLayout(XConnection& connection);

    [[nodiscard]] bool isAvailable() override;
    [[nodiscard]] std::string translate(std::uint16_t keyCode, Modifiers modifiers) override;
    void observe(std::function<void()> changed) override;

    /// The key that has to be held for a `KeyFlag`, as X counts; nothing where the keyboard has no such key.
    [[nodiscard]] std::optional<xcb_keycode_t> modifierKey(std::uint64_t flag);

    /// The modifiers that a key holds while it is down, as bits of a key event's state; 0 for one that locks.
    [[nodiscard]] unsigned modifiersOf(xcb_keycode_t keycode);

private:
    void selectEvents();
    void take(const xcb_generic_event_t& event);
    [[nodiscard]] bool isChange(const xcb_generic_event_t& event) const;
    [[nodiscard]] const XKeymap* keymap();

    XConnection& m_connection;
    std::int32_t m_device = -1;         // the core keyboard; -1 where the server lacks XKB
    std::uint8_t m_eventType = 0;       // of all of XKB's events
    std::unique_ptr<XKeymap> m_keymap;  // null until it is asked for, and after a change
    std::function<void()> m_changed;
    QObject m_listener;  // the last: while it is there, events are taken
};
