// SPDX-License-Identifier: MIT
#pragma once

#include "core/container/VariantDictionary.h"
#include "core/model/KdbxDatabase.h"
#include "core/model/UUID.h"
#include "core/primitives/Bytes.h"
#include "core/primitives/Derivation.h"

#include <cstdint>

/// The key derivations of the format: how a header names one, its parameters there with what replaces missing
/// ones, and its run. Parameters are those of a KDBX 4 header; KDBX 3 has one derivation and fields of its own for it.
namespace KdbxKeyDerivation {

/// The rounds of the AES derivation where a file names none: what the format began with.
inline constexpr std::uint64_t defaultRounds = 6000;

/// Which derivation the parameters ask for, known or not.
///
/// @throws KdbxError unsupportedKdf where they name none.
[[nodiscard]] UUID identifier(const VariantDictionary& parameters);

/// The derivation as the model keeps it, without the salt. Argon2's memory is at least 8 KiB, whatever is asked for.
///
/// @throws KdbxError unsupportedKdf.
[[nodiscard]] KdfSettings settings(const VariantDictionary& parameters);

/// The parameters for `settings`, in their order on disk.
[[nodiscard]] VariantDictionary parameters(const KdfSettings& settings, ByteView salt);

/// Runs the derivation that the parameters ask for, for as long as it takes; 32 bytes.
///
/// @throws KdbxError, AESCipher::Error, Argon2::Error or DerivationGivenUp.
[[nodiscard]] Bytes run(const VariantDictionary& parameters, ByteView compositeKey, Derivation* derivation);

/// What the AES derivation runs under, and how often.
struct AesKdfParameters {
    ByteView seed;
    std::uint64_t rounds;
};

/// The AES key derivation alone; 32 bytes.
///
/// @throws KdbxError cryptoFailure unless input and seed have 32 bytes; AESCipher::Error; DerivationGivenUp.
[[nodiscard]] Bytes aesKdf(ByteView input, const AesKdfParameters& parameters, Derivation* derivation = nullptr);

}  // namespace KdbxKeyDerivation
