// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/BlockStream.h"
#include "core/primitives/InnerStreamCipher.h"

/// ChaCha20: RFC 8439 for a nonce of 12 bytes, the original form with a counter of 64 bits for one of 8.
class ChaCha20Stream final : public InnerStreamCipher {
public:
    /// `key` has 32 bytes; `nonce` 12, or 8 for the wide counter. `counter` is that of the first block.
    /// Other sizes are a precondition: every caller takes them from a hash or has checked them.
    ChaCha20Stream(const StreamKey& start, std::uint32_t counter);

    void processInPlace(std::span<std::uint8_t> data) override;

private:
    BlockStream m_stream;
};
