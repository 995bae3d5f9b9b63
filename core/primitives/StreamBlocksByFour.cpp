// SPDX-License-Identifier: MIT
#include "core/primitives/StreamVectors.h"

namespace StreamBlocks {

std::size_t processByFour(Cipher cipher, const std::uint32_t* state, std::uint8_t* data, std::size_t blocks) noexcept {
    return processInVectors<4>(cipher, state, data, blocks);
}

}  // namespace StreamBlocks
