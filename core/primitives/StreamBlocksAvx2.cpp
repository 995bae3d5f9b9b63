// SPDX-License-Identifier: MIT
#include "core/primitives/StreamVectors.h"

namespace StreamBlocks {

#if defined(__AVX2__)

std::size_t processByAvx2(Cipher cipher, const std::uint32_t* state, std::uint8_t* data, std::size_t blocks) noexcept {
    return processInVectors<8>(cipher, state, data, blocks);
}

#else

std::size_t processByAvx2(Cipher, const std::uint32_t*, std::uint8_t*, std::size_t) noexcept {
    return 0;
}

#endif

}  // namespace StreamBlocks
