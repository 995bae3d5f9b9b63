// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace AESRounds {

/// Enciphers each half of the 32 bytes at `block` `rounds` times over itself. Only where the processor has the
/// instructions.
void encipherWithAESInstructions(std::uint8_t* block, const std::uint8_t* key, std::uint64_t rounds) noexcept;

}  // namespace AESRounds
