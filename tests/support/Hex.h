// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <stdexcept>
#include <string>
#include <string_view>

/// Bytes as lower-case hexadecimal text.
inline std::string toHex(ByteView bytes) {
    std::string text;
    for (const auto byte : bytes)
        text += {"0123456789abcdef"[byte >> 4], "0123456789abcdef"[byte & 15]};
    return text;
}

/// The bytes of hexadecimal text in either case, blanks passed over.
inline Bytes fromHex(std::string_view text) {
    Bytes bytes;
    int high = -1;
    for (const char character : text) {
        if (character == ' ' || character == '\n')
            continue;
        const auto digit = std::string_view("0123456789abcdef").find(static_cast<char>(character | 0x20));
        if (digit == std::string_view::npos)
            throw std::invalid_argument("not hexadecimal: " + std::string(text));
        if (high < 0) {
            high = static_cast<int>(digit);
        } else {
            bytes.push_back(static_cast<std::uint8_t>(high << 4 | static_cast<int>(digit)));
            high = -1;
        }
    }
    if (high >= 0)
        throw std::invalid_argument("half a byte: " + std::string(text));
    return bytes;
}
