// SPDX-License-Identifier: MIT
#include "core/platform/VirtualKey.h"

#include <linux/input-event-codes.h>

#include <algorithm>

namespace VirtualKey {

namespace {

struct Key {
    Code code{};
    std::uint16_t evdevCode = 0;
    char usLabel = 0;
};

// clang-format off
constexpr std::array keys{
    Key{a, KEY_A, 'A'}, Key{s, KEY_S, 'S'}, Key{d, KEY_D, 'D'}, Key{f, KEY_F, 'F'}, Key{h, KEY_H, 'H'},
    Key{g, KEY_G, 'G'}, Key{z, KEY_Z, 'Z'}, Key{x, KEY_X, 'X'}, Key{c, KEY_C, 'C'}, Key{v, KEY_V, 'V'},
    Key{isoSection, KEY_102ND}, Key{b, KEY_B, 'B'}, Key{q, KEY_Q, 'Q'}, Key{w, KEY_W, 'W'}, Key{e, KEY_E, 'E'},
    Key{r, KEY_R, 'R'}, Key{y, KEY_Y, 'Y'}, Key{t, KEY_T, 'T'}, Key{digit1, KEY_1, '1'}, Key{digit2, KEY_2, '2'},
    Key{digit3, KEY_3, '3'}, Key{digit4, KEY_4, '4'}, Key{digit6, KEY_6, '6'}, Key{digit5, KEY_5, '5'},
    Key{equal, KEY_EQUAL, '='}, Key{digit9, KEY_9, '9'}, Key{digit7, KEY_7, '7'}, Key{minus, KEY_MINUS, '-'},
    Key{digit8, KEY_8, '8'}, Key{digit0, KEY_0, '0'}, Key{bracketRight, KEY_RIGHTBRACE, ']'}, Key{o, KEY_O, 'O'},
    Key{u, KEY_U, 'U'}, Key{bracketLeft, KEY_LEFTBRACE, '['}, Key{i, KEY_I, 'I'}, Key{p, KEY_P, 'P'},
    Key{enter, KEY_ENTER}, Key{l, KEY_L, 'L'}, Key{j, KEY_J, 'J'}, Key{apostrophe, KEY_APOSTROPHE, '\''},
    Key{k, KEY_K, 'K'}, Key{semicolon, KEY_SEMICOLON, ';'}, Key{backslash, KEY_BACKSLASH, '\\'},
    Key{comma, KEY_COMMA, ','}, Key{slash, KEY_SLASH, '/'}, Key{n, KEY_N, 'N'}, Key{m, KEY_M, 'M'},
    Key{period, KEY_DOT, '.'}, Key{tab, KEY_TAB}, Key{space, KEY_SPACE}, Key{backquote, KEY_GRAVE, '`'},
    Key{backspace, KEY_BACKSPACE}, Key{escape, KEY_ESC}, Key{rightCommand, KEY_RIGHTMETA},
    Key{command, KEY_LEFTMETA}, Key{shift, KEY_LEFTSHIFT}, Key{capsLock, KEY_CAPSLOCK}, Key{option, KEY_LEFTALT},
    Key{control, KEY_LEFTCTRL}, Key{rightShift, KEY_RIGHTSHIFT}, Key{rightOption, KEY_RIGHTALT},
    Key{rightControl, KEY_RIGHTCTRL}, Key{f17, KEY_F17}, Key{keypadDecimal, KEY_KPDOT},
    Key{keypadMultiply, KEY_KPASTERISK}, Key{keypadPlus, KEY_KPPLUS}, Key{keypadClear, KEY_NUMLOCK},
    Key{volumeUp, KEY_VOLUMEUP}, Key{volumeDown, KEY_VOLUMEDOWN}, Key{mute, KEY_MUTE},
    Key{keypadDivide, KEY_KPSLASH}, Key{keypadEnter, KEY_KPENTER}, Key{keypadMinus, KEY_KPMINUS}, Key{f18, KEY_F18},
    Key{f19, KEY_F19}, Key{keypadEqual, KEY_KPEQUAL}, Key{keypad0, KEY_KP0}, Key{keypad1, KEY_KP1},
    Key{keypad2, KEY_KP2}, Key{keypad3, KEY_KP3}, Key{keypad4, KEY_KP4}, Key{keypad5, KEY_KP5},
    Key{keypad6, KEY_KP6}, Key{keypad7, KEY_KP7}, Key{f20, KEY_F20}, Key{keypad8, KEY_KP8}, Key{keypad9, KEY_KP9},
    Key{yen, KEY_YEN}, Key{ro, KEY_RO}, Key{keypadComma, KEY_KPCOMMA}, Key{f5, KEY_F5}, Key{f6, KEY_F6},
    Key{f7, KEY_F7}, Key{f3, KEY_F3}, Key{f8, KEY_F8}, Key{f9, KEY_F9}, Key{eisu, KEY_HANJA}, Key{f11, KEY_F11},
    Key{kana, KEY_HANGEUL}, Key{f13, KEY_F13}, Key{f16, KEY_F16}, Key{f14, KEY_F14}, Key{f10, KEY_F10},
    Key{menu, KEY_COMPOSE}, Key{f12, KEY_F12}, Key{f15, KEY_F15}, Key{insert, KEY_INSERT}, Key{home, KEY_HOME},
    Key{pageUp, KEY_PAGEUP}, Key{forwardDelete, KEY_DELETE}, Key{f4, KEY_F4}, Key{end, KEY_END}, Key{f2, KEY_F2},
    Key{pageDown, KEY_PAGEDOWN}, Key{f1, KEY_F1}, Key{left, KEY_LEFT}, Key{right, KEY_RIGHT}, Key{down, KEY_DOWN},
    Key{up, KEY_UP},
};
// clang-format on

constexpr auto keysByCode = [] {
    std::array<Key, lastCode + 1> table{};
    for (const auto& key : keys)
        table[key.code] = key;
    return table;
}();

/// No key has the evdev code 0.
bool isKey(std::uint32_t code) noexcept {
    return code <= lastCode && keysByCode[code].evdevCode != 0;
}

}  // namespace

std::optional<unsigned> functionNumber(std::uint32_t code) noexcept {
    const auto* const key = std::ranges::find(functionKeys, code);
    if (key == functionKeys.end())
        return std::nullopt;
    return static_cast<unsigned>(key - functionKeys.begin()) + 1;
}

std::optional<std::uint16_t> evdevCode(std::uint32_t code) noexcept {
    return isKey(code) ? std::optional(keysByCode[code].evdevCode) : std::nullopt;
}

std::optional<Code> ofEvdevCode(std::uint32_t evdevCode) noexcept {
    const auto* const key = std::ranges::find(keys, evdevCode, &Key::evdevCode);
    return key == keys.end() ? std::nullopt : std::optional(key->code);
}

char usLabel(std::uint32_t code) noexcept {
    return isKey(code) ? keysByCode[code].usLabel : '\0';
}

std::optional<Code> ofUSLabel(char label) noexcept {
    const auto* const key = std::ranges::find(keys, label, &Key::usLabel);
    return label == '\0' || key == keys.end() ? std::nullopt : std::optional(key->code);
}

}  // namespace VirtualKey
