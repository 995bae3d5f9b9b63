// SPDX-License-Identifier: MIT
#include "core/autotype/KeyStroke.h"

#include "core/platform/KeyboardEvents.h"
#include "core/platform/VirtualKey.h"
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

bool isOnKeypad(std::uint16_t code) {
    using namespace VirtualKey;
    constexpr std::array keypadKeyCodes{keypadDecimal, keypadMultiply, keypadPlus,  keypadClear, keypadDivide,
                                        keypadEnter,   keypadMinus,    keypadEqual, keypad0,     keypad1,
                                        keypad2,       keypad3,        keypad4,     keypad5,     keypad6,
                                        keypad7,       keypad8,        keypad9};
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
        for (std::uint16_t code = 0; code <= VirtualKey::lastCode; ++code) {
            if (!gives(layout, code, modifiers, character))
                continue;
            if (!isOnKeypad(code))
                return KeyStroke{.code = code, .flags = flags};
            if (!onKeypad)
                onKeypad = KeyStroke{.code = code, .flags = flags};
        }
    return onKeypad;
}
