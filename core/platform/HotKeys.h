// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/VirtualKey.h"

#include <cstdint>
#include <functional>

/// Modifiers as settings store them.
enum HotKeyModifier : std::uint32_t {
    hotKeyCommand = 0x100,
    hotKeyShift = 0x200,
    hotKeyOption = 0x800,
    hotKeyControl = 0x1000
};

/// A key and the modifiers that are held with it. As it is made, it is the default: Option, Command and the key that
/// US layouts label A.
struct HotKey {
    std::uint32_t keyCode = VirtualKey::a;
    std::uint32_t modifiers = hotKeyCommand | hotKeyOption;
    friend bool operator==(const HotKey&, const HotKey&) = default;
};

/// Key combinations that reach us whatever application is in front.
class HotKeys {
public:
    using Identifier = std::uint32_t;

    virtual ~HotKeys() = default;

    /// Whether the desktop grants any combination at all.
    [[nodiscard]] virtual bool areGranted() const { return true; }

    /// Calls `pressed` for each press of a registered combination, on the main thread, and once however long the keys
    /// are held. `pressed` must return soon: the desktop may be waiting. False where that is refused.
    virtual bool installHandler(std::function<void(Identifier)> pressed) = 0;

    /// Calls the handler no more.
    virtual void removeHandler() = 0;

    /// Takes a combination, whose presses come with the given identifier. False, with nothing taken, where the desktop
    /// refuses it: another program has it, or there is no such key.
    [[nodiscard]] virtual bool registerHotKey(const HotKey& hotKey, Identifier identifier) = 0;

    /// Gives a combination back; it can be taken again at once.
    virtual void unregisterHotKey(Identifier identifier) = 0;
};
