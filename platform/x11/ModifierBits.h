// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <cstdint>

/// The bits of a key event's state for the modifiers that have no fixed one; 0 for a modifier that the keyboard lacks.
struct ModifierBits {
    std::uint16_t alt = 0;
    std::uint16_t super = 0;
    std::uint16_t numLock = 0;

    /// As the modifier map of the keyboard has them now.
    [[nodiscard]] static ModifierBits of(xcb_connection_t* connection);

    friend bool operator==(const ModifierBits&, const ModifierBits&) = default;
};
