// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Failure.h"

#include <cstdint>
#include <string>
#include <variant>

struct KdbxErrorCases {
    struct UnsupportedVersion {
        std::uint16_t major;
        std::uint16_t minor;
        bool operator==(const UnsupportedVersion&) const = default;
    };
    struct CorruptedData {
        std::string text;
        bool operator==(const CorruptedData&) const = default;
    };
    struct UnsupportedCipher {
        std::string text;
        bool operator==(const UnsupportedCipher&) const = default;
    };
    struct UnsupportedKdf {
        std::string text;
        bool operator==(const UnsupportedKdf&) const = default;
    };
    struct BlockHmacMismatch {
        std::int64_t index;  // 0 for the first block
        bool operator==(const BlockHmacMismatch&) const = default;
    };
    struct XmlParseFailure {
        std::string text;
        bool operator==(const XmlParseFailure&) const = default;
    };
    struct CryptoFailure {
        std::string text;
        bool operator==(const CryptoFailure&) const = default;
    };
    struct NotAKdbxFile {
        bool operator==(const NotAKdbxFile&) const = default;
    };
    struct InvalidCredentials {
        bool operator==(const InvalidCredentials&) const = default;
    };
    struct HeaderHashMismatch {
        bool operator==(const HeaderHashMismatch&) const = default;
    };
    struct NestedTooDeep {
        bool operator==(const NestedTooDeep&) const = default;
    };
    using Case = std::variant<UnsupportedVersion, CorruptedData, UnsupportedCipher, UnsupportedKdf, BlockHmacMismatch,
                              XmlParseFailure, CryptoFailure, NotAKdbxFile, InvalidCredentials, HeaderHashMismatch,
                              NestedTooDeep>;

    [[nodiscard]] static std::string describe(const Case& failure);
};

/// Why a vault could not be read or written.
class KdbxError final : public FailureFamily<KdbxErrorCases> {
public:
    using FailureFamily::FailureFamily;

    static constexpr FailureMaker<KdbxError, UnsupportedVersion, std::uint16_t, std::uint16_t> unsupportedVersion{};
    static constexpr FailureMaker<KdbxError, CorruptedData, std::string> corruptedData{};
    static constexpr FailureMaker<KdbxError, UnsupportedCipher, std::string> unsupportedCipher{};
    static constexpr FailureMaker<KdbxError, UnsupportedKdf, std::string> unsupportedKdf{};
    static constexpr FailureMaker<KdbxError, BlockHmacMismatch, std::int64_t> blockHmacMismatch{};
    static constexpr FailureMaker<KdbxError, XmlParseFailure, std::string> xmlParseFailure{};
    static constexpr FailureMaker<KdbxError, CryptoFailure, std::string> cryptoFailure{};
    static constexpr FailureMaker<KdbxError, NotAKdbxFile> notAKdbxFile{};
    static constexpr FailureMaker<KdbxError, InvalidCredentials> invalidCredentials{};
    static constexpr FailureMaker<KdbxError, HeaderHashMismatch> headerHashMismatch{};
    static constexpr FailureMaker<KdbxError, NestedTooDeep> nestedTooDeep{};
};
