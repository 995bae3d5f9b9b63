// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/HotKeys.h"
#include "platform/x11/HotKeyState.h"
#include "platform/x11/ModifierBits.h"
#include "platform/x11/XConnection.h"

#include <QTimer>

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

/// Combinations of keys that are grabbed from the X server, by the key's position on the keyboard: Command is Ctrl,
/// Option is Alt, Control is Super. NumLock and Caps Lock make no difference.
///
/// A connection of its own keeps the presses apart from the program's other traffic. If it breaks, no more presses are
/// reported, and nothing else happens.
class XHotKeys final : public HotKeys {
public:
    /// `state` outlives the hot keys. Needs Qt's loop.
    XHotKeys(std::unique_ptr<XConnection> connection, HotKeyState& state);
    ~XHotKeys() override;

    bool installHandler(std::function<void(Identifier)> pressed) override;
    void removeHandler() override;
    [[nodiscard]] bool registerHotKey(const HotKey& hotKey, Identifier identifier) override;
    void unregisterHotKey(Identifier identifier) override;

private:
    struct Combination {
        Identifier identifier;
        HotKey hotKey;
        xcb_keycode_t keycode;
    };

    void useKeyboardExtension();
    [[nodiscard]] bool isDown(xcb_keycode_t keycode) const;

    [[nodiscard]] bool grab(const Combination& combination);
    void ungrab(const Combination& combination);
    void grabAnew();

    void take(const xcb_generic_event_t& event);
    void keyPressed(const xcb_key_press_event_t& event);
    void keyReleased(xcb_keycode_t keycode);
    void waitForRelease(xcb_keycode_t keycode);
    void publishKey();

    std::unique_ptr<XConnection> m_connection;
    HotKeyState& m_state;
    ModifierBits m_bits;
    std::optional<std::uint8_t> m_keyboardEvent;  // the type of the events on a change of the keyboard
    std::vector<Combination> m_combinations;
    std::function<void(Identifier)> m_pressed;
    xcb_keycode_t m_heldKey = 0;  // its presses are ignored until it is released; 0 when none
    QTimer m_untilReleased;       // polls a key whose release goes to another client
};
