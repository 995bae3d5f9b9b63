// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <cstdint>
#include <exception>
#include <string>
#include <variant>

/// The gzip member format (RFC 1952) around raw DEFLATE (RFC 1951).
namespace Gzip {

/// Why a member could not be read or made.
class Error final : public std::exception {
public:
    struct CrcMismatch {
        std::uint32_t expected;
        std::uint32_t actual;
        bool operator==(const CrcMismatch&) const = default;
    };
    struct SizeMismatch {
        std::uint32_t expected;
        std::int64_t actual;
        bool operator==(const SizeMismatch&) const = default;
    };
    struct NotGzip {
        bool operator==(const NotGzip&) const = default;
    };
    struct Truncated {
        bool operator==(const Truncated&) const = default;
    };
    struct HeaderCRCMismatch {
        bool operator==(const HeaderCRCMismatch&) const = default;
    };
    struct StreamFailure {
        bool operator==(const StreamFailure&) const = default;
    };
    using Case = std::variant<CrcMismatch, SizeMismatch, NotGzip, Truncated, HeaderCRCMismatch, StreamFailure>;

    static Error crcMismatch(std::uint32_t expected, std::uint32_t actual);
    static Error sizeMismatch(std::uint32_t expected, std::int64_t actual);
    static Error notGzip();
    static Error truncated();
    static Error headerCRCMismatch();
    static Error streamFailure();

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

/// The gzip member of `data`, with the fixed header and no time.
///
/// @throws Error `streamFailure` where memory ends.
[[nodiscard]] Bytes compress(ByteView data);

/// What a member holds. Only the first member is read; the trailer is the file's last 8 bytes.
///
/// @throws Error. `streamFailure` also where the output is more than memory can hold.
[[nodiscard]] Bytes decompress(ByteView data);

/// The same with an output of at most `largestOutput` bytes; `streamFailure` where it is more.
[[nodiscard]] Bytes decompress(ByteView data, std::uint64_t largestOutput);

/// CRC-32 (RFC 1952, section 8).
[[nodiscard]] std::uint32_t crc32(ByteView data) noexcept;

}  // namespace Gzip
