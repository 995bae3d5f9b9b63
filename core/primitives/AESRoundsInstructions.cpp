// SPDX-License-Identifier: MIT
// Built with the processor's AES instructions on. Nothing inline from a shared header may be instantiated here: the
// linker could keep this copy for all of the program.
#include "core/primitives/AESRoundsInstructions.h"

#if defined(__AES__)

#include <string.h>

#include <immintrin.h>

namespace AESRounds {
namespace {

constexpr int roundKeyCount = 15;

/// Each word of a round key XORed with all words before it (FIPS 197, section 5.2).
__m128i chained(__m128i previous, __m128i substituted) {
    previous = _mm_xor_si128(previous, _mm_slli_si128(previous, 4));
    previous = _mm_xor_si128(previous, _mm_slli_si128(previous, 8));
    return _mm_xor_si128(previous, substituted);
}

/// The two round keys at `keys` from the two before them; one step of eight words.
template <int roundConstant>
void expandStep(__m128i* keys) {
    const auto rotated = _mm_shuffle_epi32(_mm_aeskeygenassist_si128(keys[-1], roundConstant), 0xFF);
    keys[0] = chained(keys[-2], rotated);
    const auto substituted = _mm_shuffle_epi32(_mm_aeskeygenassist_si128(keys[0], 0), 0xAA);
    keys[1] = chained(keys[-1], substituted);
}

void expandKey(__m128i* keys, const std::uint8_t* key) {
    keys[0] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(key));
    keys[1] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(key + 16));
    expandStep<0x01>(keys + 2);
    expandStep<0x02>(keys + 4);
    expandStep<0x04>(keys + 6);
    expandStep<0x08>(keys + 8);
    expandStep<0x10>(keys + 10);
    expandStep<0x20>(keys + 12);
    const auto rotated = _mm_shuffle_epi32(_mm_aeskeygenassist_si128(keys[13], 0x40), 0xFF);
    keys[14] = chained(keys[12], rotated);
}

}  // namespace

void encipherWithAESInstructions(std::uint8_t* block, const std::uint8_t* key, std::uint64_t rounds) noexcept {
    __m128i keys[roundKeyCount];
    expandKey(keys, key);
    // A block's last key and the next block's first are added as one, which shortens the chain by an instruction.
    const auto first = keys[0];
    keys[14] = _mm_xor_si128(keys[14], first);

    auto* const halves = reinterpret_cast<__m128i*>(block);
    auto left = _mm_xor_si128(_mm_loadu_si128(halves), first);
    auto right = _mm_xor_si128(_mm_loadu_si128(halves + 1), first);
    for (std::uint64_t round = 0; round < rounds; ++round) {
#pragma GCC unroll 16
        for (int i = 1; i < roundKeyCount - 1; ++i) {
            left = _mm_aesenc_si128(left, keys[i]);
            right = _mm_aesenc_si128(right, keys[i]);
        }
        left = _mm_aesenclast_si128(left, keys[14]);
        right = _mm_aesenclast_si128(right, keys[14]);
    }
    _mm_storeu_si128(halves, _mm_xor_si128(left, first));
    _mm_storeu_si128(halves + 1, _mm_xor_si128(right, first));
    explicit_bzero(keys, sizeof keys);
}

}  // namespace AESRounds

#else

namespace AESRounds {

void encipherWithAESInstructions(std::uint8_t*, const std::uint8_t*, std::uint64_t) noexcept {
    __builtin_unreachable();
}

}  // namespace AESRounds

#endif
