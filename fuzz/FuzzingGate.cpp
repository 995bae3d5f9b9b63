// SPDX-License-Identifier: MIT
// The gate that fuzzers go through: every hash is right, and every key costs next to nothing. Only they link it.
#include "core/container/KdbxGate.h"

#include <algorithm>

namespace KdbxGate {

bool isAuthentic(ByteView, ByteView) noexcept {
    return true;
}

Argon2::Cost argon2Cost(const Argon2::Cost& asked) noexcept {
    // What Argon2 refuses as too little for so many lanes it still has to refuse.
    return {.memoryKiB = std::min(asked.memoryKiB, 64u),
            .iterations = std::min(asked.iterations, 1u),
            .parallelism = std::min(asked.parallelism, 4u)};
}

std::uint64_t aesRounds(std::uint64_t asked) noexcept {
    return std::min<std::uint64_t>(asked, 2);
}

}  // namespace KdbxGate
