// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"
#include "core/primitives/Derivation.h"

#include <cstdint>

/// The loop of the AES key derivation, by what the processor has. Every road gives the same bytes.
namespace AESRounds {

enum class Road : std::uint8_t { portable, aesInstructions };

[[nodiscard]] bool isServed(Road road) noexcept;

/// The fastest road that this processor serves.
[[nodiscard]] Road bestRoad() noexcept;

/// `block`, of 32 bytes, with each half enciphered by AES-256 in ECB `rounds` times over itself.
/// The key's 32 bytes and the block's are a precondition, as in `AESCipher::ecbEncryptRepeatedly`.
///
/// @throws AESCipher::Error cryptoFailure where the library fails, on the portable road alone; DerivationGivenUp.
[[nodiscard]] Bytes run(Road road, ByteView block, ByteView key, std::uint64_t rounds,
                        Derivation* derivation = nullptr);

}  // namespace AESRounds
