// SPDX-License-Identifier: MIT
#include "core/autotype/HotKeyFormatter.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace HotKeyFormatter {

namespace {

struct Modifier {
    HotKeyModifier stored;
    std::uint64_t eventFlag;
    std::string_view sign;
};

// In the order in which they are written.
constexpr std::array modifiers{Modifier{hotKeyControl, 1U << 18, "⌃"}, Modifier{hotKeyOption, 1U << 19, "⌥"},
                               Modifier{hotKeyShift, 1U << 17, "⇧"}, Modifier{hotKeyCommand, 1U << 20, "⌘"}};

struct KeyName {
    std::uint32_t code;
    std::string_view name;
};

constexpr std::array keyNames{
    KeyName{0, "A"},     KeyName{1, "S"},     KeyName{2, "D"},     KeyName{3, "F"},       KeyName{4, "H"},
    KeyName{5, "G"},     KeyName{6, "Z"},     KeyName{7, "X"},     KeyName{8, "C"},       KeyName{9, "V"},
    KeyName{11, "B"},    KeyName{12, "Q"},    KeyName{13, "W"},    KeyName{14, "E"},      KeyName{15, "R"},
    KeyName{16, "Y"},    KeyName{17, "T"},    KeyName{18, "1"},    KeyName{19, "2"},      KeyName{20, "3"},
    KeyName{21, "4"},    KeyName{22, "6"},    KeyName{23, "5"},    KeyName{25, "9"},      KeyName{26, "7"},
    KeyName{28, "8"},    KeyName{29, "0"},    KeyName{31, "O"},    KeyName{32, "U"},      KeyName{34, "I"},
    KeyName{35, "P"},    KeyName{36, "⏎"},    KeyName{37, "L"},    KeyName{38, "J"},      KeyName{40, "K"},
    KeyName{45, "N"},    KeyName{46, "M"},    KeyName{48, "⇥"},    KeyName{49, "Boşluk"}, KeyName{96, "F5"},
    KeyName{97, "F6"},   KeyName{98, "F7"},   KeyName{99, "F3"},   KeyName{100, "F8"},    KeyName{101, "F9"},
    KeyName{103, "F11"}, KeyName{109, "F10"}, KeyName{111, "F12"}, KeyName{118, "F4"},    KeyName{120, "F2"},
    KeyName{122, "F1"}};

std::string keyName(std::uint32_t code) {
    const auto* const named = std::ranges::find(keyNames, code, &KeyName::code);
    return named == keyNames.end() ? "#" + std::to_string(code) : std::string(named->name);
}

}  // namespace

std::string describe(const HotKey& hotKey) {
    std::string text;
    for (const auto& modifier : modifiers)
        if ((hotKey.modifiers & modifier.stored) != 0)
            text += modifier.sign;
    return text + keyName(hotKey.keyCode);
}

std::uint32_t carbonModifiers(std::uint64_t eventFlags) noexcept {
    std::uint32_t stored = 0;
    for (const auto& modifier : modifiers)
        if ((eventFlags & modifier.eventFlag) != 0)
            stored |= modifier.stored;
    return stored;
}

}  // namespace HotKeyFormatter
