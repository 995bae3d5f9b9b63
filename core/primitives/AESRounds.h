// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/AESCipher.h"
#include "core/primitives/Implementation.h"

#include <cstdint>

/// The loop of the AES key derivation, by what the processor has.
namespace AESRounds {

/// The fastest that this processor supports: with its AES instructions or portable.
[[nodiscard]] Implementation bestImplementation() noexcept;

/// `block`, of 32 bytes, with each half enciphered by AES-256 in ECB `rounds` times over itself.
/// The key's 32 bytes and the block's are a precondition, as in `AESCipher::ecbEncryptRepeatedly`.
///
/// @throws AESCipher::Error cryptoFailure where the library fails, in the portable implementation alone;
/// DerivationGivenUp.
[[nodiscard]] Bytes run(Implementation implementation, ByteView block, const AESCipher::KeyMaterial& under,
                        std::uint64_t rounds, Derivation* derivation = nullptr);

}  // namespace AESRounds
