// SPDX-License-Identifier: MIT
#include "core/primitives/Blake2bCompress.h"

#ifdef __x86_64__

#include <immintrin.h>

namespace Blake2b {
namespace {

/// Four of the sixteen working words: a, b, c or d of four mixes.
using Row = __m256i;

/// A message word where the message has it.
struct [[gnu::packed, gnu::may_alias]] MessageWord {
    long long value;
};

struct Working {
    Row a, b, c, d;
};

template <int bits>
[[gnu::always_inline]] inline Row rotateBytesRight(Row words) noexcept {
    static_assert(bits == 24 || bits == 16);
    const auto order = bits == 24 ? _mm256_setr_epi8(3, 4, 5, 6, 7, 0, 1, 2, 11, 12, 13, 14, 15, 8, 9, 10, 3, 4, 5, 6,
                                                     7, 0, 1, 2, 11, 12, 13, 14, 15, 8, 9, 10)
                                  : _mm256_setr_epi8(2, 3, 4, 5, 6, 7, 0, 1, 10, 11, 12, 13, 14, 15, 8, 9, 2, 3, 4, 5,
                                                     6, 7, 0, 1, 10, 11, 12, 13, 14, 15, 8, 9);
    return _mm256_shuffle_epi8(words, order);
}

[[gnu::always_inline]] inline Row rotateRight32(Row words) noexcept {
    return _mm256_shuffle_epi32(words, _MM_SHUFFLE(2, 3, 0, 1));
}

[[gnu::always_inline]] inline Row rotateRight63(Row words) noexcept {
    return _mm256_or_si256(_mm256_srli_epi64(words, 63), _mm256_add_epi64(words, words));
}

[[gnu::always_inline]] inline void mix(Working& v, Row x, Row y) noexcept {
    v.a = _mm256_add_epi64(_mm256_add_epi64(v.a, x), v.b);
    v.d = rotateRight32(_mm256_xor_si256(v.d, v.a));
    v.c = _mm256_add_epi64(v.c, v.d);
    v.b = rotateBytesRight<24>(_mm256_xor_si256(v.b, v.c));
    v.a = _mm256_add_epi64(_mm256_add_epi64(v.a, y), v.b);
    v.d = rotateBytesRight<16>(_mm256_xor_si256(v.d, v.a));
    v.c = _mm256_add_epi64(v.c, v.d);
    v.b = rotateRight63(_mm256_xor_si256(v.b, v.c));
}

/// The message words of four mixes, straight from the block: broadcasts and blends leave the shuffling unit, which the
/// rotations need, alone.
template <int w0, int w1, int w2, int w3>
[[gnu::always_inline]] inline Row gather(const std::uint8_t* block) noexcept {
    // Left to itself the compiler keeps all sixteen broadcasts, far more than there are registers for.
    asm volatile("" : "+r"(block));
    const auto words = reinterpret_cast<const MessageWord*>(block);
    const auto low = _mm256_blend_epi32(_mm256_set1_epi64x(words[w0].value), _mm256_set1_epi64x(words[w1].value), 0x0C);
    const auto high =
        _mm256_blend_epi32(_mm256_set1_epi64x(words[w2].value), _mm256_set1_epi64x(words[w3].value), 0xC0);
    return _mm256_blend_epi32(low, high, 0xF0);
}

template <int round>
[[gnu::always_inline]] inline void mixAll(Working& v, const std::uint8_t* block) noexcept {
    constexpr auto& s = sigma[round];
    mix(v, gather<s[0], s[2], s[4], s[6]>(block), gather<s[1], s[3], s[5], s[7]>(block));
    // Each b is the last word that a mix gives and the first that the next takes. So a, c and d turn around it, and
    // lane j holds the mix that begins in column j - 1.
    v.a = _mm256_permute4x64_epi64(v.a, _MM_SHUFFLE(2, 1, 0, 3));
    v.d = _mm256_permute4x64_epi64(v.d, _MM_SHUFFLE(1, 0, 3, 2));
    v.c = _mm256_permute4x64_epi64(v.c, _MM_SHUFFLE(0, 3, 2, 1));
    mix(v, gather<s[14], s[8], s[10], s[12]>(block), gather<s[15], s[9], s[11], s[13]>(block));
    v.a = _mm256_permute4x64_epi64(v.a, _MM_SHUFFLE(0, 3, 2, 1));
    v.d = _mm256_permute4x64_epi64(v.d, _MM_SHUFFLE(1, 0, 3, 2));
    v.c = _mm256_permute4x64_epi64(v.c, _MM_SHUFFLE(2, 1, 0, 3));
}

/// One block. `last` holds the count and the final mask.
[[gnu::always_inline]] inline void compressBlock(Row& h0, Row& h4, const std::uint8_t* block, Row last) noexcept {
    Working v{h0, h4, _mm256_loadu_si256(reinterpret_cast<const Row*>(iv)),
              _mm256_xor_si256(_mm256_loadu_si256(reinterpret_cast<const Row*>(iv + 4)), last)};
    mixAll<0>(v, block);
    mixAll<1>(v, block);
    mixAll<2>(v, block);
    mixAll<3>(v, block);
    mixAll<4>(v, block);
    mixAll<5>(v, block);
    mixAll<6>(v, block);
    mixAll<7>(v, block);
    mixAll<8>(v, block);
    mixAll<9>(v, block);
    mixAll<10>(v, block);
    mixAll<11>(v, block);
    h0 = _mm256_xor_si256(h0, _mm256_xor_si256(v.a, v.c));
    h4 = _mm256_xor_si256(h4, _mm256_xor_si256(v.b, v.d));
}

}  // namespace

void compressAvx2(Chain& chain, const Blocks& blocks) noexcept {
    auto h0 = _mm256_loadu_si256(reinterpret_cast<const Row*>(chain.h));
    auto h4 = _mm256_loadu_si256(reinterpret_cast<const Row*>(chain.h + 4));
    for (std::size_t i = 0; i < blocks.count; ++i) {
        chain.tLow += blocks.bytesInEach;
        chain.tHigh += chain.tLow < blocks.bytesInEach ? 1 : 0;
        const auto last = _mm256_set_epi64x(0, static_cast<long long>(blocks.finalMask),
                                            static_cast<long long>(chain.tHigh), static_cast<long long>(chain.tLow));
        compressBlock(h0, h4, blocks.bytes + i * blockSize, last);
    }
    _mm256_storeu_si256(reinterpret_cast<Row*>(chain.h), h0);
    _mm256_storeu_si256(reinterpret_cast<Row*>(chain.h + 4), h4);
}

}  // namespace Blake2b

#endif
