// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/InnerStreamCipher.h"

#include <array>

/// ChaCha20: RFC 8439 for a nonce of 12 bytes, the original form with a counter of 64 bits for one of 8.
class ChaCha20Stream final : public InnerStreamCipher {
public:
    /// `key` has 32 bytes; `nonce` 12, or 8 for the wide counter. `counter` is that of the first block.
    /// Other sizes are a precondition: every caller takes them from a hash or has checked them.
    ChaCha20Stream(ByteView key, ByteView nonce, std::uint32_t counter);
    ~ChaCha20Stream() override;

    void processInPlace(std::span<std::uint8_t> data) override;

private:
    void generateBlock();

    std::array<std::uint32_t, 16> m_state{};
    bool m_wideCounter;
    std::array<std::uint8_t, 64> m_keystream{};
    std::size_t m_keystreamOffset = 64;  // next unused byte of m_keystream, 0 to 64
};
