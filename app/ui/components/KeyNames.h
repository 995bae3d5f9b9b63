// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/HotKeys.h"
#include "core/platform/KeyboardLayout.h"

#include <string>
#include <string_view>

/// Combinations in the words that are on the keyboard: "Ctrl+Alt+A" beside the signs of `HotKeyFormatter`, "⌥⌘A". The
/// signs are on no keyboard of this desktop, and screen readers cannot say them.
namespace KeyNames {

/// A combination: the modifiers in the order Super, Ctrl, Alt, Shift, then what the key gives under the present layout.
/// Where it gives nothing, as a dead key does, the name that `HotKeyFormatter` has for it.
[[nodiscard]] std::string describe(const HotKey& hotKey, KeyboardLayout& layout);

/// The combination that a text names in signs, in the desktop's words: "Ctrl+I" for "Yeni kayıt (⌘I)". Commands go by
/// the letter, so that no layout changes them. Empty where the text names none.
[[nodiscard]] std::string ofSigns(std::string_view text);

/// The text with other words in place of its signs and their key: "Yeni kayıt (Ctrl+I)".
[[nodiscard]] std::string withoutSigns(std::string_view text, std::string_view words);

}  // namespace KeyNames
