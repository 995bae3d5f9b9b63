// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// The key of our own combination, which the hot keys set and the keyboard reads. While that key is down the server
/// sends every key to us, so what is typed reaches no other program.
struct HotKeyState {
    std::uint8_t keycode = 0;  // as X counts; 0 while no combination is taken
};
