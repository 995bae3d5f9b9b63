// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>

/// The keyboard layout that is selected now.
class KeyboardLayout {
public:
    /// Modifiers that lead to another character of a key. Others never do.
    enum class Modifiers : std::uint8_t { none = 0, shift = 2, option = 8, shiftAndOption = 0xA };

    virtual ~KeyboardLayout() = default;

    /// Whether there is a layout to translate with.
    [[nodiscard]] virtual bool isAvailable() = 0;

    /// What a key gives, with no lock on and no dead key before it: at most four UTF-16 units. Empty for a key that
    /// gives no text, a dead key, a code that no key has, and without a layout. Return, Tab, Escape and Backspace give
    /// their control characters.
    [[nodiscard]] virtual std::string translate(std::uint16_t keyCode, Modifiers modifiers) = 0;

    /// Calls `changed` after each change of the layout. There is one observer; an empty one ends it.
    virtual void observe(std::function<void()> changed) = 0;
};
