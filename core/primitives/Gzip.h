// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"
#include "core/primitives/Failure.h"

#include <cstdint>
#include <string>
#include <variant>

/// The gzip member format (RFC 1952) around raw DEFLATE (RFC 1951).
namespace Gzip {

struct ErrorCases {
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

    [[nodiscard]] static std::string describe(const Case& failure);
};

/// Why a member could not be read or made.
class Error final : public FailureFamily<ErrorCases> {
public:
    using FailureFamily::FailureFamily;

    static constexpr FailureMaker<Error, CrcMismatch, CrcMismatch> crcMismatch{};
    static constexpr FailureMaker<Error, SizeMismatch, SizeMismatch> sizeMismatch{};
    static constexpr FailureMaker<Error, NotGzip> notGzip{};
    static constexpr FailureMaker<Error, Truncated> truncated{};
    static constexpr FailureMaker<Error, HeaderCRCMismatch> headerCRCMismatch{};
    static constexpr FailureMaker<Error, StreamFailure> streamFailure{};
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
