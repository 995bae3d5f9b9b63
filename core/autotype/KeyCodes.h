// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

/// The virtual key codes, by which all settings and tables speak of keys, and the codes that Linux gives the same keys
/// of a keyboard (evdev; those of X are 8 more). The table is one-to-one. Not every code of either side is in it.
namespace KeyCodes {

/// The evdev code of a virtual key code; nothing for one that no key has.
[[nodiscard]] std::optional<std::uint16_t> evdevCode(std::uint32_t keyCode) noexcept;

/// The virtual key code of an evdev code; nothing for a key that has none, such as Print Screen.
[[nodiscard]] std::optional<std::uint16_t> keyCode(std::uint32_t evdevCode) noexcept;

}  // namespace KeyCodes
