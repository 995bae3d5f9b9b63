// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Blake2bCompress.h"
#include "core/primitives/Bytes.h"
#include "core/primitives/Implementation.h"

#include <array>
#include <cstdint>

/// BLAKE2b (RFC 7693) and the variable-length hash H' of Argon2 (RFC 9106, section 3.3).
namespace Blake2b {

/// A hash under way: made, updated any number of times, finalized once, then dropped.
class State {
public:
    /// `outputLength` is 1 to 64, `key` 0 to 64 bytes, both preconditions: no length here comes from a file.
    /// The digest is the same with every implementation; that the processor supports it is a precondition too.
    explicit State(std::int64_t outputLength, ByteView key = {}, Implementation implementation = widestVectors());
    State(const State&) = default;
    State& operator=(const State&) = default;
    ~State();

    /// An empty input does nothing.
    void update(ByteView data);

    /// The digest, `outputLength` bytes.
    [[nodiscard]] Bytes finalize();

private:
    void fill(ByteView data);

    Chain m_chain;
    std::array<std::uint8_t, blockSize> m_buf{};
    std::size_t m_bufLen = 0;  // a full block is a legal rest: it is compressed when a further byte comes
    std::int64_t m_digestLength;
    CompressBlocks m_compress;
};

/// The digest of `data`; an empty key is no key.
[[nodiscard]] Bytes hash(ByteView data, std::int64_t outputLength, ByteView key = {});

/// H' of RFC 9106: any length from 1 to the largest unsigned number of 32 bits.
[[nodiscard]] Bytes longHash(ByteView data, std::int64_t outputLength);

}  // namespace Blake2b
