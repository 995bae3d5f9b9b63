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

/// @throws Error, the key's length before the IV's.
[[nodiscard]] Bytes cbcEncrypt(ByteView data, ByteView key, ByteView iv);
[[nodiscard]] Bytes cbcDecrypt(ByteView data, ByteView key, ByteView iv);

/// @throws Error, the data's length before the key's.
[[nodiscard]] Bytes ecbEncryptNoPadding(ByteView data, ByteView key);
[[nodiscard]] Bytes ecbDecryptNoPadding(ByteView data, ByteView key);

/// `block`, of 32 bytes, with each half enciphered `rounds` times over itself: the loop of the AES key derivation,
/// which one who is given may watch and give up. Sizes are a precondition: KdbxKeys has checked both.
///
/// @throws Error, DerivationGivenUp
[[nodiscard]] Bytes ecbEncryptRepeatedly(ByteView block, ByteView key, std::uint64_t rounds,
                                         Derivation* derivation = nullptr);

}  // namespace AESCipher
