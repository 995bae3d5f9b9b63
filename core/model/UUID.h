// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <array>
#include <compare>
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

    [[nodiscard]] bool isZero() const noexcept { return *this == UUID(); }

    friend auto operator<=>(const UUID&, const UUID&) = default;

private:
    std::array<std::uint8_t, 16> m_bytes{};
};

template <>
struct std::hash<UUID> {
    std::size_t operator()(const UUID& id) const noexcept;
};
