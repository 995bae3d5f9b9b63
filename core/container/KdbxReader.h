// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <cstdint>

/// A little-endian cursor over the bytes of a vault file, copied freely.
/// Every read is checked against the bytes that are left. A failed read moves nothing.
/// The bytes are borrowed, and must outlive the cursor and what it returns.
class KdbxReader {
public:
    explicit KdbxReader(ByteView bytes) noexcept : m_bytes(bytes) {}

    [[nodiscard]] std::int64_t offset() const noexcept { return m_offset; }
    [[nodiscard]] std::int64_t remaining() const noexcept {
        return static_cast<std::int64_t>(m_bytes.size()) - m_offset;
    }
    [[nodiscard]] bool isAtEnd() const noexcept { return remaining() <= 0; }

    /// The next `count` bytes. A count may come straight from the file: a negative one is not a huge one.
    ///
    /// @throws KdbxError corruptedData, with both counts, when `count` is negative or too large.
    [[nodiscard]] ByteView read(std::int64_t count);

    /// The next 1, 2, 4 or 8 bytes as a number. They fail as `read` does.
    [[nodiscard]] std::uint8_t u8();
    [[nodiscard]] std::uint16_t u16();
    [[nodiscard]] std::uint32_t u32();
    [[nodiscard]] std::uint64_t u64();
    [[nodiscard]] std::int32_t i32();
    [[nodiscard]] std::int64_t i64();

private:
    ByteView m_bytes;
    std::int64_t m_offset = 0;  // next byte to read, in 0...m_bytes.size()
};
