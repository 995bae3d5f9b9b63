// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/KeySymbols.h"
#include "platform/x11/XConnection.h"

#include <QTimer>

#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <optional>
#include <vector>

/// Keycodes to which the keyboard map gives no meaning, lent to characters that no key gives. A second after the last
/// loan they mean nothing again.
///
/// A program that hears of a change asks the server for the map as it is by then, which may be later than the next
/// change: so the loans go round, and a keycode rests between two characters.
class SpareKeys {
public:
    /// The connection outlives the keys. Needs Qt's loop.
    explicit SpareKeys(XConnection& connection);
    SpareKeys(const SpareKeys&) = delete;
    SpareKeys& operator=(const SpareKeys&) = delete;

    /// Takes the keys back as soon as whoever got the last stroke will have read it.
    ~SpareKeys();

    /// Whether a character can be lent a key at all: control characters have no symbol.
    [[nodiscard]] static bool canStandFor(char32_t character) noexcept;

    /// Whether the keyboard has any spare key.
    [[nodiscard]] bool areThere() const;

    /// The key that gives the character from now on, with no modifier held; nothing where there is no spare one. It is
    /// meant to be struck at once, and waits until a key has rested.
    [[nodiscard]] std::optional<xcb_keycode_t> lendTo(char32_t character);

private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] std::vector<xcb_keycode_t> spareKeycodes(const KeySymbols& symbols) const;
    [[nodiscard]] xcb_keycode_t longestRested(const std::vector<xcb_keycode_t>& keycodes) const;
    void waitUntilRested(xcb_keycode_t keycode) const;
    void give(xcb_keycode_t keycode, xcb_keysym_t symbol);
    void use(xcb_keycode_t keycode);
    void takeBack();

    XConnection& m_connection;
    std::array<Clock::time_point, 256> m_lastUses{};  // by keycode
    std::vector<xcb_keycode_t> m_lent;                // what has a meaning by us
    Clock::time_point m_lastUse;
    QTimer m_untilTakenBack;
};
