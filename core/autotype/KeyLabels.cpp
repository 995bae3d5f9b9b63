// SPDX-License-Identifier: MIT
#include "core/autotype/KeyLabels.h"

#include <algorithm>
#include <array>
#include <limits>

namespace KeyLabels {

namespace {

bool isPrintable(std::string_view text) {
    return std::ranges::none_of(text, [](char byte) {
        const auto value = static_cast<unsigned char>(byte);
        return value < 0x20 || value == 0x7F;
    });
}

}  // namespace

std::string_view signOf(HotKeyModifier modifier) noexcept {
    switch (modifier) {
        case hotKeyControl:
            return "⌃";
        case hotKeyOption:
            return "⌥";
        case hotKeyShift:
            return "⇧";
        case hotKeyCommand:
            return "⌘";
    }
    return {};
}

std::string signsOf(std::uint32_t modifiers) {
    std::string signs;
    for (const auto modifier : {hotKeyControl, hotKeyOption, hotKeyShift, hotKeyCommand})
        if ((modifiers & modifier) != 0)
            signs += signOf(modifier);
    return signs;
}

std::string under(KeyboardLayout& layout, std::uint32_t keyCode, KeyboardLayout::Modifiers modifiers) {
    if (keyCode > std::numeric_limits<std::uint16_t>::max() || !layout.isAvailable())
        return {};
    auto text = layout.translate(static_cast<std::uint16_t>(keyCode), modifiers);
    return isPrintable(text) ? text : std::string();
}

}  // namespace KeyLabels
