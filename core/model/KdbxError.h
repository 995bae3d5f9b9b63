// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <variant>

/// Why a vault could not be read or written.
class KdbxError final : public std::exception {
public:
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

    static KdbxError unsupportedVersion(std::uint16_t major, std::uint16_t minor);
    static KdbxError corruptedData(std::string text);
    static KdbxError unsupportedCipher(std::string text);
    static KdbxError unsupportedKdf(std::string text);
    static KdbxError blockHmacMismatch(std::int64_t index);
    static KdbxError xmlParseFailure(std::string text);
    static KdbxError cryptoFailure(std::string text);
    static KdbxError notAKdbxFile();
    static KdbxError invalidCredentials();
    static KdbxError headerHashMismatch();
    static KdbxError nestedTooDeep();

    [[nodiscard]] const Case& failure() const noexcept { return m_failure; }
    /// For the user, in Turkish.
    [[nodiscard]] const std::string& errorDescription() const noexcept { return m_description; }
    [[nodiscard]] const char* what() const noexcept override { return m_description.c_str(); }
    friend bool operator==(const KdbxError& a, const KdbxError& b) { return a.m_failure == b.m_failure; }

private:
    explicit KdbxError(Case failure);

    Case m_failure;
    std::string m_description;
};
