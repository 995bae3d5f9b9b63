// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

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
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = hotKeyCommand | hotKeyOption;
    friend bool operator==(const HotKey&, const HotKey&) = default;
};

/// Hot keys as the settings show them: by the US layout, whatever layout is in use.
namespace HotKeyFormatter {

/// The modifiers' signs in the order Control, Option, Shift, Command, then the key's name: "⌥⌘A".
[[nodiscard]] std::string describe(const HotKey& hotKey);

/// The stored form of an event's modifier flags: bit 17 is Shift, 18 Control, 19 Option, 20 Command. Others count for
/// nothing.
[[nodiscard]] std::uint32_t carbonModifiers(std::uint64_t eventFlags) noexcept;

}  // namespace HotKeyFormatter
