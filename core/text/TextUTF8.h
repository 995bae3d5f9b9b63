// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

/// The bytes of UTF-8, one scalar at a time.
namespace TextUTF8 {

struct Scalar {
    char32_t value;      // U+FFFD for an ill-formed piece
    std::size_t length;  // in bytes; of an ill-formed piece that of its longest valid beginning, or 1
    bool isWellFormed;
};

/// As `next`, for what is not ASCII.
[[nodiscard]] Scalar nextBeyondASCII(std::string_view text, std::size_t offset) noexcept;

/// The scalar or the ill-formed piece that begins at `offset`, which must lie within the text.
[[nodiscard]] inline Scalar next(std::string_view text, std::size_t offset) noexcept {
    const auto lead = static_cast<unsigned char>(text[offset]);
    return lead < 0x80 ? Scalar{.value = lead, .length = 1, .isWellFormed = true} : nextBeyondASCII(text, offset);
}

/// How many bytes at the beginning are ASCII.
[[nodiscard]] inline std::size_t asciiPrefix(std::string_view text) noexcept {
    std::size_t offset = 0;
    for (; offset + sizeof(std::uint64_t) <= text.size(); offset += sizeof(std::uint64_t)) {
        std::uint64_t word;
        std::memcpy(&word, text.data() + offset, sizeof word);
        if (word & 0x8080808080808080)
            break;
    }
    while (offset < text.size() && static_cast<unsigned char>(text[offset]) < 0x80)
        ++offset;
    return offset;
}

[[nodiscard]] inline bool isASCII(std::string_view text) noexcept {
    return asciiPrefix(text) == text.size();
}

}  // namespace TextUTF8
