// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <string>
#include <string_view>

/// The bytes that pairs of hexadecimal digits tell; spaces between pairs are passed over.
inline Bytes fromHex(std::string_view text) {
    Bytes bytes;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != ' ')
            bytes.push_back(static_cast<std::uint8_t>(std::stoi(std::string(text.substr(i++, 2)), nullptr, 16)));
    return bytes;
}

inline std::string toHex(ByteView bytes) {
    std::string text;
    for (const auto byte : bytes) {
        text += "0123456789abcdef"[byte >> 4];
        text += "0123456789abcdef"[byte & 15];
    }
    return text;
}
