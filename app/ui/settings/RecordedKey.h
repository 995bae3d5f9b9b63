// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

class QKeyEvent;

/// What a key event means while a hot key is recorded.
namespace RecordedKey {

/// The virtual key code of the pressed key, by its position on the keyboard. An event without a position, as those of
/// input methods and of tests are, goes by the letter and the US layout. Nothing for a key that has no code.
[[nodiscard]] std::optional<std::uint32_t> keyCode(const QKeyEvent& event);

/// The held modifiers as settings store them: Ctrl is Command, Alt is Option, Super is Control.
[[nodiscard]] std::uint32_t modifiers(const QKeyEvent& event);

/// Whether the key is itself a modifier or a lock. Its press comes with its own modifier set and is no combination.
[[nodiscard]] bool isModifier(const QKeyEvent& event);

}  // namespace RecordedKey
