// SPDX-License-Identifier: MIT
#include "core/text/TextUTF8.h"

#include "core/text/Text.h"

namespace {

constexpr std::string_view replacement = "\uFFFD";

}  // namespace

namespace TextUTF8 {

Scalar nextBeyondASCII(std::string_view text, std::size_t offset) noexcept {
    const auto byte = [&](std::size_t i) -> unsigned { return static_cast<unsigned char>(text[i]); };
    const auto lead = byte(offset);

    // The second byte's range keeps out overlong forms, surrogates and what lies beyond U+10FFFF (Unicode 15,
    // table 3-7); each further byte is 80 to BF.
    unsigned low = 0x80;
    unsigned high = 0xBF;
    unsigned length = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        low = lead == 0xE0 ? 0xA0 : low;
        high = lead == 0xED ? 0x9F : high;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        low = lead == 0xF0 ? 0x90 : low;
        high = lead == 0xF4 ? 0x8F : high;
    } else {
        return {.value = 0xFFFD, .length = 1, .isWellFormed = false};
    }

    char32_t value = lead & (0x7Fu >> length);
    for (unsigned i = 1; i < length; ++i) {
        if (offset + i == text.size() || byte(offset + i) < low || byte(offset + i) > high)
            return {.value = 0xFFFD, .length = i, .isWellFormed = false};
        value = value << 6 | (byte(offset + i) & 0x3F);
        low = 0x80;
        high = 0xBF;
    }
    return {.value = value, .length = length, .isWellFormed = true};
}

}  // namespace TextUTF8

namespace Text {

bool isValidUTF8(std::span<const std::uint8_t> bytes) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    for (auto offset = TextUTF8::asciiPrefix(text); offset < text.size();) {
        const auto scalar = TextUTF8::next(text, offset);
        if (!scalar.isWellFormed)
            return false;
        offset += scalar.length;
        offset += TextUTF8::asciiPrefix(text.substr(offset));
    }
    return true;
}

std::string repairingUTF8(std::span<const std::uint8_t> bytes) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    std::string repaired;
    repaired.reserve(text.size());
    for (std::size_t offset = 0; offset < text.size();) {
        const auto scalar = TextUTF8::next(text, offset);
        repaired += scalar.isWellFormed ? text.substr(offset, scalar.length) : replacement;
        offset += scalar.length;
    }
    return repaired;
}

}  // namespace Text
