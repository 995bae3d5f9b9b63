// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"
#include "core/primitives/Derivation.h"
#include "core/primitives/Failure.h"

#include <cstdint>
#include <string>
#include <variant>

/// The Argon2 password hash (RFC 9106), all three variants, versions 0x10 and 0x13.
namespace Argon2 {

enum class Variant : std::uint32_t { d = 0, i = 1, id = 2 };

struct ErrorCases {
    struct InvalidParallelism {
        std::uint32_t value;
        bool operator==(const InvalidParallelism&) const = default;
    };
    struct InvalidMemory {
        std::uint32_t value;  // KiB
        bool operator==(const InvalidMemory&) const = default;
    };
    struct InvalidIterations {
        std::uint32_t value;
        bool operator==(const InvalidIterations&) const = default;
    };
    struct InvalidOutputLength {
        std::int64_t value;
        bool operator==(const InvalidOutputLength&) const = default;
    };
    struct InvalidSaltLength {
        std::int64_t value;
        bool operator==(const InvalidSaltLength&) const = default;
    };
    struct UnsupportedVersion {
        std::uint32_t value;
        bool operator==(const UnsupportedVersion&) const = default;
    };
    struct AllocationFailed {
        bool operator==(const AllocationFailed&) const = default;
    };
    using Case = std::variant<InvalidParallelism, InvalidMemory, InvalidIterations, InvalidOutputLength,
                              InvalidSaltLength, UnsupportedVersion, AllocationFailed>;

    [[nodiscard]] static std::string describe(const Case& failure);
};

/// Which arguments could not be served.
class Error final : public FailureFamily<ErrorCases> {
public:
    using FailureFamily::FailureFamily;

    static constexpr FailureMaker<Error, InvalidParallelism, std::uint32_t> invalidParallelism{};
    static constexpr FailureMaker<Error, InvalidMemory, std::uint32_t> invalidMemory{};
    static constexpr FailureMaker<Error, InvalidIterations, std::uint32_t> invalidIterations{};
    static constexpr FailureMaker<Error, InvalidOutputLength, std::int64_t> invalidOutputLength{};
    static constexpr FailureMaker<Error, InvalidSaltLength, std::int64_t> invalidSaltLength{};
    static constexpr FailureMaker<Error, UnsupportedVersion, std::uint32_t> unsupportedVersion{};
    static constexpr FailureMaker<Error, AllocationFailed> allocationFailed{};
};

/// What is hashed.
struct Input {
    ByteView password;
    ByteView salt;
    ByteView secret = {};
    ByteView associatedData = {};
};

/// What it costs.
struct Cost {
    std::uint32_t memoryKiB;
    std::uint32_t iterations;
    std::uint32_t parallelism;  // lanes
};

inline constexpr std::uint32_t currentVersion = 0x13;

/// The hash, of `outputLength` bytes. The arguments are checked in the order version, parallelism, iterations,
/// output length, salt, memory, before anything is allocated. Lanes run on worker threads; the result does not
/// depend on how they are scheduled. One who is given may watch the hash and give it up.
///
/// @throws Error, `allocationFailed` when the memory is not to be had; DerivationGivenUp. All memory is wiped by then.
[[nodiscard]] Bytes hash(const Input& input, const Cost& cost, std::int64_t outputLength, Variant variant,
                         std::uint32_t version = currentVersion, Derivation* derivation = nullptr);

}  // namespace Argon2
