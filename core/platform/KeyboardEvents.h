// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/Applications.h"
#include "core/platform/VirtualKey.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

/// The modifier bits of a key event.
namespace KeyFlag {
inline constexpr std::uint64_t shift = 0x20000;
inline constexpr std::uint64_t control = 0x40000;
inline constexpr std::uint64_t option = 0x80000;
inline constexpr std::uint64_t command = 0x100000;
inline constexpr std::uint64_t all = shift | control | option | command;
}  // namespace KeyFlag

/// A key that is held for one of the flags.
struct ModifierKey {
    std::uint64_t flag;
    VirtualKey::Code code;
};

/// In the order in which they are pressed.
inline constexpr std::array modifierKeys{
    ModifierKey{KeyFlag::shift, VirtualKey::shift}, ModifierKey{KeyFlag::control, VirtualKey::control},
    ModifierKey{KeyFlag::option, VirtualKey::option}, ModifierKey{KeyFlag::command, VirtualKey::command}};

/// One event of the keyboard.
struct KeyEvent {
    enum class Kind : std::uint8_t {
        key,          // an ordinary key
        flagsChanged  // a modifier key; `flags` is what is held after it
    };

    Kind kind = Kind::key;
    std::uint16_t code = 0;  // virtual key code
    bool down = true;
    std::uint64_t flags = 0;  // `KeyFlag` bits
    /// Where it is not empty: one character, which the event types whatever its code. Borrowed for the call, since it
    /// may be of a password.
    std::string_view text;
};

/// Posts the events of one run into one window, and into no other. What that needs of the desktop, such as Caps Lock
/// off, lasts for the source's life. The user's own keyboard and mouse work all the time.
class KeyEventSource {
public:
    virtual ~KeyEventSource() = default;

    /// Announces characters that no key gives, in the order in which they are going to be typed, after those that were
    /// announced before. Some desktops have to be made ready for them a while before.
    virtual void expect(std::string_view characters) = 0;

    enum class Posted : std::uint8_t {
        yes,
        impossible,  // one of the events cannot be made
        elsewhere    // the window is not in front any more
    };

    /// Posts the events in their order, or none of them. No other window can come in front between the check of the
    /// window and the press of a key. Releases alone are posted without a check: they type nothing, and no key may stay
    /// down.
    [[nodiscard]] virtual Posted post(std::span<const KeyEvent> events) = 0;

    /// Whether the window is in front. A key may have answered a dialogue, so that another window of the process is in
    /// front instead. That one becomes the source's window if it is either of these:
    /// - a window that was not there when the source was made, and that is a dialogue of the former one or appeared
    /// when
    ///   that had closed;
    /// - the window that the former one, which has closed, was a dialogue of.
    [[nodiscard]] virtual bool follow() = 0;
};

/// The keyboard, as far as typing into another application needs it.
class KeyboardEvents {
public:
    virtual ~KeyboardEvents() = default;

    /// Whether this process may post events and read other applications' windows. The user is not asked. Cheap.
    [[nodiscard]] virtual bool hasPermission() = 0;

    /// Whether the user can be asked for it.
    [[nodiscard]] virtual bool canRequestPermission() const = 0;

    /// Asks the user for it, where that is possible. The answer shows in `hasPermission`, at some later time.
    virtual void requestPermission() = 0;

    /// The modifiers that the user's hands hold down now, as `KeyFlag` bits. Locks and posted events do not count.
    [[nodiscard]] virtual std::uint64_t heldModifiers() = 0;

    /// Whether the key of our own hot key is still down. On some desktops no other key reaches its receiver until then.
    [[nodiscard]] virtual bool isHotKeyHeld() = 0;

    /// Releases for all applications the keys that the user still holds, where the desktop would mix them with what is
    /// posted. They are not pressed again afterwards: the user may have let go.
    virtual void releaseHeldKeys() = 0;

    /// A source for one run into a window, or null. Changes of the layout until now are reported before it returns.
    [[nodiscard]] virtual std::unique_ptr<KeyEventSource> makeSource(const DesktopWindow& window) = 0;
};
