// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"
#include "core/primitives/Derivation.h"
#include "core/primitives/Failure.h"

#include <cstdint>
#include <string>
#include <variant>

/// AES-256 (FIPS 197): CBC with PKCS#7 padding for payloads, ECB without padding for key derivation.
namespace AESCipher {

struct ErrorCases {
    struct InvalidKeyLength {
        std::int64_t length;
        bool operator==(const InvalidKeyLength&) const = default;
    };
    struct InvalidIVLength {
        std::int64_t length;
        bool operator==(const InvalidIVLength&) const = default;
    };
    struct InvalidBlockAlignment {
        std::int64_t length;
        bool operator==(const InvalidBlockAlignment&) const = default;
    };
    struct CryptoFailure {
        std::int32_t status;  // -4303: not a multiple of the block; -4304: bad padding; -4308: anything else
        bool operator==(const CryptoFailure&) const = default;
    };
    using Case = std::variant<InvalidKeyLength, InvalidIVLength, InvalidBlockAlignment, CryptoFailure>;

    [[nodiscard]] static std::string describe(const Case& failure);
};

/// Why AES could not run.
class Error final : public FailureFamily<ErrorCases> {
public:
    using FailureFamily::FailureFamily;

    static constexpr FailureMaker<Error, InvalidKeyLength, std::int64_t> invalidKeyLength{};
    static constexpr FailureMaker<Error, InvalidIVLength, std::int64_t> invalidIVLength{};
    static constexpr FailureMaker<Error, InvalidBlockAlignment, std::int64_t> invalidBlockAlignment{};
    static constexpr FailureMaker<Error, CryptoFailure, std::int32_t> cryptoFailure{};
};

/// What AES runs under: a key of 32 bytes, and in CBC an IV of 16.
struct KeyMaterial {
    ByteView key;
    ByteView iv = {};
};

/// @throws Error, the key's length before the IV's.
[[nodiscard]] Bytes cbcEncrypt(ByteView data, const KeyMaterial& under);
[[nodiscard]] Bytes cbcDecrypt(ByteView data, const KeyMaterial& under);

/// An IV is not looked at, here and below.
///
/// @throws Error, the data's length before the key's.
[[nodiscard]] Bytes ecbEncryptNoPadding(ByteView data, const KeyMaterial& under);
[[nodiscard]] Bytes ecbDecryptNoPadding(ByteView data, const KeyMaterial& under);

/// `block`, of 32 bytes, with each half enciphered `rounds` times over itself: the loop of the AES key derivation.
/// It reports to `derivation`, if there is one, and can be given up there. Sizes are a precondition: the derivation has
/// checked both.
///
/// @throws Error, DerivationGivenUp
[[nodiscard]] Bytes ecbEncryptRepeatedly(ByteView block, const KeyMaterial& under, std::uint64_t rounds,
                                         Derivation* derivation = nullptr);

}  // namespace AESCipher
