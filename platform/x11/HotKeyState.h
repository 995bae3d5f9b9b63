// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// What the hot keys tell the keyboard: which key of the keyboard is that of our own combination. While it is down the
/// server sends every key to us, so what is typed reaches nobody else.
struct HotKeyState {
    std::uint8_t keycode = 0;  // as X counts; 0 while no combination is taken
};
