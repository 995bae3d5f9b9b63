// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Implementation.h"

#include <array>
#include <cstddef>
#include <cstdint>

/// The keystream blocks of ChaCha20 and Salsa20.
namespace StreamBlocks {

enum class Cipher : std::uint8_t {
    chaCha20,      // RFC 8439: a counter of 32 bits in word 12, which wraps
    chaCha20Wide,  // the original form: a counter of 64 bits in words 12 and 13
    salsa20,       // a counter of 64 bits in words 8 and 9
};

/// Constants, key, counter and nonce, where the cipher has them.
using State = std::array<std::uint32_t, 16>;

inline constexpr std::size_t blockSize = 64;

/// XORs, by a supported implementation, `blocks` whole blocks at `data` with the keystream from the counter on, and
/// raises the counter by as many.
void process(Implementation implementation, Cipher cipher, State& state, std::uint8_t* data,
             std::size_t blocks) noexcept;

}  // namespace StreamBlocks
