// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

/// Fills `bytes` from the operating system's random source, getrandom(2).
/// Falls back byte by byte to the language runtime's system source; a caller does not see which served.
void fillRandom(std::span<std::uint8_t> bytes);

/// `count` fresh random bytes.
[[nodiscard]] Bytes randomBytes(std::size_t count);
