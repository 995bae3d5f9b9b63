// SPDX-License-Identifier: MIT
#include "app/state/HotKeyFormatter.h"

#include "core/autotype/KeyLabels.h"
#include "core/platform/KeyboardEvents.h"

#include <array>

namespace HotKeyFormatter {

namespace {

struct Modifier {
    HotKeyModifier stored;
    std::uint64_t eventFlag;
};

constexpr std::array modifiers{Modifier{hotKeyControl, KeyFlag::control}, Modifier{hotKeyOption, KeyFlag::option},
                               Modifier{hotKeyShift, KeyFlag::shift}, Modifier{hotKeyCommand, KeyFlag::command}};

bool isLetterOrDigit(char label) {
    return (label >= 'A' && label <= 'Z') || (label >= '0' && label <= '9');
}

std::string keyName(std::uint32_t code) {
    switch (code) {
        case VirtualKey::enter:
            return "⏎";
        case VirtualKey::tab:
            return "⇥";
        case VirtualKey::space:
            return "Boşluk";
        default:
            break;
    }
    if (const auto number = VirtualKey::functionNumber(code); number && *number <= 12)
        return "F" + std::to_string(*number);
    if (const char label = VirtualKey::usLabel(code); isLetterOrDigit(label))
        return {label};
    return "#" + std::to_string(code);
}

}  // namespace

std::string describe(const HotKey& hotKey) {
    return KeyLabels::signsOf(hotKey.modifiers) + keyName(hotKey.keyCode);
}

std::uint32_t carbonModifiers(std::uint64_t eventFlags) noexcept {
    std::uint32_t stored = 0;
    for (const auto& modifier : modifiers)
        if ((eventFlags & modifier.eventFlag) != 0)
            stored |= modifier.stored;
    return stored;
}

}  // namespace HotKeyFormatter
