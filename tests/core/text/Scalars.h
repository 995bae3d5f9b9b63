// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// One scalar as UTF-8, by no code of the project.
inline std::string utf8(char32_t scalar) {
    std::string text;
    const auto continuation = [&](int shift) { text += static_cast<char>(0x80 | (scalar >> shift & 0x3F)); };
    if (scalar < 0x80) {
        text += static_cast<char>(scalar);
    } else if (scalar < 0x800) {
        text += static_cast<char>(0xC0 | scalar >> 6);
        continuation(0);
    } else if (scalar < 0x10000) {
        text += static_cast<char>(0xE0 | scalar >> 12);
        continuation(6);
        continuation(0);
    } else {
        text += static_cast<char>(0xF0 | scalar >> 18);
        continuation(12);
        continuation(6);
        continuation(0);
    }
    return text;
}
