// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Implementation.h"

#include <cstddef>
#include <cstdint>

/// The compression function of BLAKE2b (RFC 7693, section 3.2), in each implementation.
///
/// Their sources are compiled for processors that may not be this one. So they, and what they include, use no inline
/// function of the library: the linker could keep their copy of it for the whole program.
namespace Blake2b {

inline constexpr std::size_t blockSize = 128;

inline constexpr std::uint64_t iv[8] = {
    0x6A09E667F3BCC908, 0xBB67AE8584CAA73B, 0x3C6EF372FE94F82B, 0xA54FF53A5F1D36F1,
    0x510E527FADE682D1, 0x9B05688C2B3E6C1F, 0x1F83D9ABFB41BD6B, 0x5BE0CD19137E2179,
};

/// The order of the message words in each round; the last two rounds repeat the first two.
inline constexpr std::uint8_t sigma[12][16] = {
    {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}, {14, 10, 4, 8, 9, 15, 13, 6, 1, 12, 0, 2, 11, 7, 5, 3},
    {11, 8, 12, 0, 5, 2, 15, 13, 10, 14, 3, 6, 7, 1, 9, 4}, {7, 9, 3, 1, 13, 12, 11, 14, 2, 6, 5, 10, 4, 0, 15, 8},
    {9, 0, 5, 7, 2, 4, 10, 15, 14, 1, 11, 12, 6, 8, 3, 13}, {2, 12, 6, 10, 0, 11, 8, 3, 4, 13, 7, 5, 15, 14, 1, 9},
    {12, 5, 1, 15, 14, 13, 4, 10, 0, 7, 6, 3, 9, 2, 8, 11}, {13, 11, 7, 14, 12, 1, 3, 9, 5, 0, 15, 4, 8, 6, 2, 10},
    {6, 15, 14, 9, 11, 3, 0, 8, 12, 2, 13, 7, 1, 4, 10, 5}, {10, 2, 8, 4, 7, 6, 1, 5, 15, 11, 9, 14, 3, 12, 13, 0},
    {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}, {14, 10, 4, 8, 9, 15, 13, 6, 1, 12, 0, 2, 11, 7, 5, 3},
};

/// The chaining value and the count of bytes compressed, which each block raises before it is compressed.
struct Chain {
    std::uint64_t h[8];
    std::uint64_t tLow;
    std::uint64_t tHigh;
};

/// Blocks to compress one after the other.
struct Blocks {
    const std::uint8_t* bytes;
    std::size_t count;
    std::uint64_t bytesInEach;  // what each adds to the count: blockSize, or less in the last one
    std::uint64_t finalMask;    // all ones for the last block, zero for others
};

using CompressBlocks = void (*)(Chain&, const Blocks&) noexcept;

void compressPortable(Chain& chain, const Blocks& blocks) noexcept;
#ifdef __x86_64__
void compressAvx2(Chain& chain, const Blocks& blocks) noexcept;
#endif

/// The function of a supported implementation.
[[nodiscard]] inline CompressBlocks compressFor([[maybe_unused]] Implementation implementation) noexcept {
#ifdef __x86_64__
    // Four mixes fill the vectors of AVX2, and its chain of operations is as short as that of AVX-512.
    if (implementation >= Implementation::avx2)
        return compressAvx2;
#endif
    return compressPortable;
}

}  // namespace Blake2b
