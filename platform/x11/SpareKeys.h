// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"
#include "platform/x11/XConnection.h"

#include <QTimer>

#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <optional>
#include <vector>

/// Keycodes to which the keyboard map gives no meaning, lent to characters that no key gives. A second after the last
/// stroke they mean nothing again.
///
/// A program that is notified of a change asks the server for the map, which may have changed again by then. And some
/// programs get changes and strokes on two connections, and so in any order. So a character has its key for some time
/// before its stroke and for some time after it. That delays no stroke as long as the
/// characters are known ahead and there are about as many keys.
class SpareKeys {
public:
    /// Code points, which may be of a password.
    using Characters = std::vector<char32_t, WipingAllocator<char32_t>>;

    /// The connection outlives the keys. Needs Qt's loop.
    explicit SpareKeys(XConnection& connection);
    SpareKeys(const SpareKeys&) = delete;
    SpareKeys& operator=(const SpareKeys&) = delete;

    /// Takes the keys back as soon as the receiver of the last stroke will have read it.
    ~SpareKeys();

    /// Whether a character can be lent a key at all: control characters have no symbol.
    [[nodiscard]] static bool canStandFor(char32_t character) noexcept;

    /// Whether the keyboard has any spare key.
    [[nodiscard]] bool areThere() const;

    /// Announces what will be struck, after what was announced before: the first of them get their keys now.
    void expect(const Characters& characters);

    /// Forgets all that was announced.
    void expectNothing() noexcept { m_expected = {}; }

    /// The key that gives the character with no modifier held, to be struck at once; nothing where there is no spare
    /// one. It waits until programs know the key, which takes up to 1.2 seconds for a character that was
    /// not expected.
    [[nodiscard]] std::optional<xcb_keycode_t> lendTo(char32_t character);

private:
    using Clock = std::chrono::steady_clock;

    struct Key {
        xcb_keycode_t keycode;
        xcb_keysym_t symbol;  // what it gives now; none where it is not lent
    };
    struct Times {
        Clock::time_point lent;
        Clock::time_point struck;
    };

    [[nodiscard]] std::vector<Key> keys() const;
    [[nodiscard]] bool isExpected(const Key& key) const;
    [[nodiscard]] std::vector<Key>::iterator longestRested(std::vector<Key>& keys) const;
    void forgetUntil(char32_t character);
    void giveAhead(std::vector<Key>& keys, xcb_keycode_t exception);
    void give(Key& key, xcb_keysym_t symbol);
    void remember(xcb_keycode_t keycode);
    void takeBack();
    void takeBackUnlessExpecting();

    XConnection& m_connection;
    std::array<Times, 256> m_times{};  // by keycode
    Characters m_expected;             // in the order of their strokes
    std::vector<xcb_keycode_t> m_lent;
    Clock::time_point m_lastStroke;
    QTimer m_untilTakenBack;
};
