// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <bit>
#include <concepts>
#include <cstring>

static_assert(std::endian::native == std::endian::little, "every number of the file format is little-endian");

/// The number in the first bytes at `bytes`; the caller has made sure that they are there.
template <std::integral Number>
[[nodiscard]] Number loadLE(const std::uint8_t* bytes) noexcept {
    Number number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

/// The number in the first bytes of a field, and 0 where there are too few: other writers' slips are forgiven.
template <std::integral Number>
[[nodiscard]] Number leadingLE(ByteView bytes) noexcept {
    return bytes.size() < sizeof(Number) ? 0 : loadLE<Number>(bytes.data());
}

/// Writes a number to the bytes at `bytes`; the caller has made sure of their room.
template <std::integral Number>
void storeLE(std::uint8_t* bytes, Number number) noexcept {
    std::memcpy(bytes, &number, sizeof number);
}

/// Appends a number to a buffer.
template <std::integral Number>
void appendLE(Bytes& buffer, Number number) {
    const auto offset = buffer.size();
    buffer.resize(offset + sizeof number);
    storeLE(buffer.data() + offset, number);
}
