// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>

/// The keys of a keyboard, by virtual key codes: settings, sequences and events name keys by them alone. A code means a
/// position on the keyboard, whatever the layout gives there; its name is what a US keyboard has at that position.
namespace VirtualKey {

/// The codes are those of the settings, which have stored a hot key's key by them from the first version on.
enum Code : std::uint16_t {
    // clang-format off
    a = 0, s = 1, d = 2, f = 3, h = 4, g = 5, z = 6, x = 7, c = 8, v = 9,
    isoSection = 10,  // right of the left Shift, which US keyboards lack
    b = 11, q = 12, w = 13, e = 14, r = 15, y = 16, t = 17,
    digit1 = 18, digit2 = 19, digit3 = 20, digit4 = 21, digit6 = 22, digit5 = 23,
    equal = 24, digit9 = 25, digit7 = 26, minus = 27, digit8 = 28, digit0 = 29,
    bracketRight = 30, o = 31, u = 32, bracketLeft = 33, i = 34, p = 35, enter = 36,
    l = 37, j = 38, apostrophe = 39, k = 40, semicolon = 41, backslash = 42,
    comma = 43, slash = 44, n = 45, m = 46, period = 47,
    tab = 48, space = 49, backquote = 50, backspace = 51, escape = 53,
    rightCommand = 54, command = 55, shift = 56, capsLock = 57, option = 58, control = 59,
    rightShift = 60, rightOption = 61, rightControl = 62,
    f17 = 64, keypadDecimal = 65, keypadMultiply = 67, keypadPlus = 69, keypadClear = 71,
    volumeUp = 72, volumeDown = 73, mute = 74, keypadDivide = 75, keypadEnter = 76, keypadMinus = 78,
    f18 = 79, f19 = 80, keypadEqual = 81,
    keypad0 = 82, keypad1 = 83, keypad2 = 84, keypad3 = 85, keypad4 = 86, keypad5 = 87, keypad6 = 88, keypad7 = 89,
    f20 = 90, keypad8 = 91, keypad9 = 92,
    yen = 93, ro = 94, keypadComma = 95,  // of Japanese keyboards
    f5 = 96, f6 = 97, f7 = 98, f3 = 99, f8 = 100, f9 = 101,
    eisu = 102, f11 = 103, kana = 104, f13 = 105, f16 = 106, f14 = 107, f10 = 109, menu = 110, f12 = 111,
    f15 = 113, insert = 114, home = 115, pageUp = 116, forwardDelete = 117, f4 = 118, end = 119, f2 = 120,
    pageDown = 121, f1 = 122, left = 123, right = 124, down = 125, up = 126,
    // clang-format on
};

inline constexpr std::uint16_t lastCode = 127;  // some below it are of no key

/// F1 to F20, in their order.
inline constexpr std::array functionKeys{f1,  f2,  f3,  f4,  f5,  f6,  f7,  f8,  f9,  f10,
                                         f11, f12, f13, f14, f15, f16, f17, f18, f19, f20};

/// 1 for F1, and so on to 20; nothing for another key.
[[nodiscard]] std::optional<unsigned> functionNumber(std::uint32_t code) noexcept;

/// What Linux calls the key (evdev's KEY_A and so on; keycodes of X are 8 more). The table is one-to-one, and not every
/// code of either side is in it: nothing for a code that no key has.
[[nodiscard]] std::optional<std::uint16_t> evdevCode(std::uint32_t code) noexcept;

/// The key that Linux calls so; nothing for one that has no code here, such as Print Screen.
[[nodiscard]] std::optional<Code> ofEvdevCode(std::uint32_t evdevCode) noexcept;

/// What a US keyboard has on the key: a capital letter, a digit or a sign. 0 for a key that types none.
[[nodiscard]] char usLabel(std::uint32_t code) noexcept;

/// The key that has the label on a US keyboard, not on its keypad; nothing where none has.
[[nodiscard]] std::optional<Code> ofUSLabel(char label) noexcept;

}  // namespace VirtualKey
