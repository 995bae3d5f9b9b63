// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <string>
#include <string_view>

/// Two small digits a byte, as the names of our own files have them.
[[nodiscard]] inline std::string hexadecimal(ByteView bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const auto byte : bytes) {
        text += digits[byte >> 4U];
        text += digits[byte & 15U];
    }
    return text;
}
