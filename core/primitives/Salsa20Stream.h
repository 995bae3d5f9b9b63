// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/BlockStream.h"
#include "core/primitives/InnerStreamCipher.h"

#include <array>

/// Salsa20 with 20 rounds, as published.
class Salsa20Stream final : public InnerStreamCipher {
public:
    /// The nonce that the vault format publishes for its inner stream.
    static constexpr std::array<std::uint8_t, 8> kdbxNonce{0xE8, 0x30, 0x09, 0x4B, 0x97, 0x20, 0x5D, 0x2A};

    /// `key` has 32 or 16 bytes, `nonce` 8. Other sizes are a precondition: callers hand in hashes and constants.
    explicit Salsa20Stream(const StreamKey& start);

    void processInPlace(std::span<std::uint8_t> data) override;

private:
    BlockStream m_stream;
};
