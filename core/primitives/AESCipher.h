// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"
#include "core/primitives/Derivation.h"

#include <cstdint>
#include <exception>
#include <string>
#include <variant>

/// AES-256 (FIPS 197): CBC with PKCS#7 padding for payloads, ECB without padding for key derivation.
namespace AESCipher {

/// Why AES could not run.
class Error final : public std::exception {
public:
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

    static Error invalidKeyLength(std::int64_t length);
    static Error invalidIVLength(std::int64_t length);
    static Error invalidBlockAlignment(std::int64_t length);
    static Error cryptoFailure(std::int32_t status);

    [[nodiscard]] const Case& failure() const noexcept { return m_failure; }
    /// For the user, in Turkish.
    [[nodiscard]] const std::string& errorDescription() const noexcept { return m_description; }
    [[nodiscard]] const char* what() const noexcept override { return m_description.c_str(); }
    friend bool operator==(const Error& a, const Error& b) { return a.m_failure == b.m_failure; }

private:
    explicit Error(Case failure);

    Case m_failure;
    std::string m_description;
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
