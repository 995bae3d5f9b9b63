// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Argon2.h"
#include "core/primitives/Bytes.h"

#include <cstdint>

/// What a stranger's file must pass before the parsers see it: the comparison of hashes, and the cost of the key.
/// It is a source of its own, because the fuzzers, which must get past it, link another instead.
namespace KdbxGate {

/// Whether bytes that were computed are those that the file claims, in a time that does not depend on where they
/// differ.
[[nodiscard]] bool isAuthentic(ByteView computed, ByteView claimed) noexcept;

/// The cost at which Argon2 runs for a file that asks for `asked`.
[[nodiscard]] Argon2::Cost argon2Cost(const Argon2::Cost& asked) noexcept;

/// The rounds that the AES key derivation runs for a file that asks for `asked`.
[[nodiscard]] std::uint64_t aesRounds(std::uint64_t asked) noexcept;

}  // namespace KdbxGate
