// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/StreamBlocks.h"

namespace StreamBlocks {

/// XORs as many blocks at `data` as fill its groups, at most `blocks`, and returns how many. The state stays as it is.
using BlocksFunction = std::size_t(Cipher cipher, const std::uint32_t* state, std::uint8_t* data,
                                   std::size_t blocks) noexcept;

BlocksFunction processByFour;    // in any processor's vectors of 128 bits
BlocksFunction processByAvx2;    // eight blocks a group
BlocksFunction processByAvx512;  // sixteen

}  // namespace StreamBlocks
