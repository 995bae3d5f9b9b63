// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <endian.h>

#include <array>
#include <compare>
#include <cstring>
#include <functional>
#include <optional>
#include <string>

/// A 16-byte identifier.
class UUID {
public:
    /// Sixteen zero bytes.
    UUID() noexcept = default;

    /// A new random one (RFC 9562, version 4).
    [[nodiscard]] static UUID random();

    /// From the bytes as a vault file has them. Nothing unless there are exactly 16.
    [[nodiscard]] static std::optional<UUID> fromKdbxBytes(ByteView bytes);

    /// From its canonical text, in either letter case. Nothing for any other text.
    [[nodiscard]] static std::optional<UUID> fromText(std::string_view text);

    /// The 16 bytes in the order of the text form, no swapping.
    [[nodiscard]] const std::array<std::uint8_t, 16>& kdbxBytes() const noexcept { return m_bytes; }

    /// Canonical text: upper-case hexadecimal with hyphens.
    [[nodiscard]] std::string text() const;

    [[nodiscard]] bool isZero() const noexcept { return (word(0) | word(1)) == 0; }

    // By words: a key that selects all of a long list sorts a hundred thousand, and the compiler calls a function for
    // each two arrays.
    friend bool operator==(const UUID& a, const UUID& b) noexcept {
        return a.word(0) == b.word(0) && a.word(1) == b.word(1);
    }
    /// By the bytes, which is the order of the texts.
    friend std::strong_ordering operator<=>(const UUID& a, const UUID& b) noexcept {
        const auto order = a.word(0) <=> b.word(0);
        return order != 0 ? order : a.word(1) <=> b.word(1);
    }

private:
    [[nodiscard]] std::uint64_t word(std::size_t index) const noexcept {
        std::uint64_t word = 0;
        std::memcpy(&word, m_bytes.data() + index * sizeof word, sizeof word);
        return be64toh(word);
    }

    std::array<std::uint8_t, 16> m_bytes{};
};

template <>
struct std::hash<UUID> {
    std::size_t operator()(const UUID& id) const noexcept;
};
