// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/KeyboardLayout.h"

#include <cstdint>
#include <optional>
#include <string_view>

/// A key and the `KeyFlag` bits that are held with it.
struct KeyStroke {
    std::uint16_t code = 0;
    std::uint64_t flags = 0;
    friend bool operator==(const KeyStroke&, const KeyStroke&) = default;
};

/// The stroke that gives a character under the layout, or nothing: the one with the fewest modifiers, then the lowest
/// code. A key of the numeric keypad is the last resort, since what it gives depends on a lock. A character that only
/// a dead key leads to is not found.
[[nodiscard]] std::optional<KeyStroke> findKeyStroke(KeyboardLayout& layout, std::string_view character);
