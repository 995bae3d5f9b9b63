// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/VirtualKey.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

/// X's keycodes, which are evdev's and 8.
namespace XKeycode {

/// The keycode of a virtual key code; nothing for one that no key has.
[[nodiscard]] inline std::optional<xcb_keycode_t> of(std::uint32_t keyCode) noexcept {
    const auto evdevCode = VirtualKey::evdevCode(keyCode);
    if (!evdevCode)
        return std::nullopt;
    return static_cast<xcb_keycode_t>(*evdevCode + 8);
}

/// Whether a keycode is that of any virtual key code.
[[nodiscard]] inline bool hasKeyCode(unsigned keycode) noexcept {
    return keycode >= 8 && VirtualKey::ofEvdevCode(keycode - 8).has_value();
}

}  // namespace XKeycode
