// SPDX-License-Identifier: MIT
#include "core/primitives/Hexadecimal.h"

#include <array>
#include <charconv>

namespace {

std::optional<std::uint8_t> digitValue(char digit) {
    if (digit >= '0' && digit <= '9')
        return static_cast<std::uint8_t>(digit - '0');
    if (digit >= 'A' && digit <= 'F')
        return static_cast<std::uint8_t>(digit - 'A' + 10);
    if (digit >= 'a' && digit <= 'f')
        return static_cast<std::uint8_t>(digit - 'a' + 10);
    return std::nullopt;
}

}  // namespace

std::string hexadecimal(ByteView bytes, HexLetters letters) {
    const std::string_view digits = letters == HexLetters::lower ? "0123456789abcdef" : "0123456789ABCDEF";
    std::string text;
    text.reserve(2 * bytes.size());
    for (const auto byte : bytes) {
        text += digits[byte >> 4U];
        text += digits[byte & 15U];
    }
    return text;
}

std::string hexadecimalNumber(std::uint32_t number) {
    std::array<char, 8> digits{};
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number, 16).ptr};
}

std::optional<Bytes> hexDecode(std::string_view text) {
    if (text.size() % 2 != 0)
        return std::nullopt;
    Bytes bytes;
    bytes.reserve(text.size() / 2);
    for (std::size_t i = 0; i < text.size(); i += 2) {
        const auto high = digitValue(text[i]);
        const auto low = digitValue(text[i + 1]);
        if (!high || !low)
            return std::nullopt;
        bytes.push_back(static_cast<std::uint8_t>(*high << 4U | *low));
    }
    return bytes;
}
