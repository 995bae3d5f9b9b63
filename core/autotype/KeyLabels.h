// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/HotKeys.h"
#include "core/platform/KeyboardLayout.h"

#include <cstdint>
#include <string>
#include <string_view>

/// What is written on keys, as far as all texts on combinations agree on it.
namespace KeyLabels {

/// "⌘" for Command, and so on.
[[nodiscard]] std::string_view signOf(HotKeyModifier modifier) noexcept;

/// The signs of stored modifiers, in the order Control, Option, Shift, Command: "⌥⌘". Other bits have none.
[[nodiscard]] std::string signsOf(std::uint32_t modifiers);

/// What a key gives under the layout, where that can be shown. Empty for Delete and its like, which give control
/// characters under some layouts, for a dead key and without a layout.
[[nodiscard]] std::string under(KeyboardLayout& layout, std::uint32_t keyCode,
                                KeyboardLayout::Modifiers modifiers = KeyboardLayout::Modifiers::none);

}  // namespace KeyLabels
