// SPDX-License-Identifier: MIT
#include "core/autotype/KeyStroke.h"

#include "core/platform/KeyboardEvents.h"
#include "core/text/Text.h"

#include <algorithm>
#include <array>

namespace {

struct SearchedModifiers {
    KeyboardLayout::Modifiers modifiers;
    std::uint64_t flags;
};

// In the order of the search. Control and Command make commands of keys, not characters.
constexpr std::array searchedModifiers{
    SearchedModifiers{KeyboardLayout::Modifiers::none, 0},
    SearchedModifiers{KeyboardLayout::Modifiers::shift, KeyFlag::shift},
    SearchedModifiers{KeyboardLayout::Modifiers::option, KeyFlag::option},
    SearchedModifiers{KeyboardLayout::Modifiers::shiftAndOption, KeyFlag::shift | KeyFlag::option}};

constexpr std::uint16_t lastKeyCode = 127;

constexpr std::array<std::uint16_t, 18> keypadKeyCodes{65, 67, 69, 71, 75, 76, 78, 81, 82,
                                                       83, 84, 85, 86, 87, 88, 89, 91, 92};

bool isOnKeypad(std::uint16_t code) {
    return std::ranges::find(keypadKeyCodes, code) != keypadKeyCodes.end();
}

bool gives(KeyboardLayout& layout, std::uint16_t code, KeyboardLayout::Modifiers modifiers,
           std::string_view character) {
    const auto output = layout.translate(code, modifiers);
    return !output.empty() && Text::equal(output, character);
}

}  // namespace

std::optional<KeyStroke> findKeyStroke(KeyboardLayout& layout, std::string_view character) {
    if (!layout.isAvailable())
        return std::nullopt;
    std::optional<KeyStroke> onKeypad;
    for (const auto& [modifiers, flags] : searchedModifiers)
        for (std::uint16_t code = 0; code <= lastKeyCode; ++code) {
            if (!gives(layout, code, modifiers, character))
                continue;
            if (!isOnKeypad(code))
                return KeyStroke{.code = code, .flags = flags};
            if (!onKeypad)
                onKeypad = KeyStroke{.code = code, .flags = flags};
        }
    return onKeypad;
}
