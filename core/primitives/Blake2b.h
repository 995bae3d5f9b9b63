// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <array>
#include <cstdint>

/// BLAKE2b (RFC 7693) and the variable-length hash H' of Argon2 (RFC 9106, section 3.3).
namespace Blake2b {

/// A hash under way: made, updated any number of times, finalized once, then dropped.
class State {
public:
    /// `outputLength` is 1 to 64, `key` 0 to 64 bytes, both preconditions: no length here comes from a file.
    explicit State(std::int64_t outputLength, ByteView key = {});
    ~State();

    /// An empty input does nothing.
    void update(ByteView data);

    /// The digest, `outputLength` bytes.
    [[nodiscard]] Bytes finalize();

private:
    void compress(bool final);

    std::array<std::uint64_t, 8> m_h;
    std::array<std::uint8_t, 128> m_buf{};
    std::int64_t m_bufLen = 0;  // 128 is a legal rest: the block is full and not compressed yet
    std::uint64_t m_tLow = 0;
    std::uint64_t m_tHigh = 0;
    std::int64_t m_digestLength;
};

/// The digest of `data`; an empty key is no key.
[[nodiscard]] Bytes hash(ByteView data, std::int64_t outputLength, ByteView key = {});

/// H' of RFC 9106: any length from 1 to the largest unsigned number of 32 bits.
[[nodiscard]] Bytes longHash(ByteView data, std::int64_t outputLength);

}  // namespace Blake2b
