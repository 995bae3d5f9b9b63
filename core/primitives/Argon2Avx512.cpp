// SPDX-License-Identifier: MIT
#include "core/primitives/Argon2Fill.h"

#ifdef __x86_64__

#include <immintrin.h>

namespace Argon2 {
namespace {

using Word = std::uint64_t;

/// Eight words: a, b, c or d of two permutations.
using Vector = __m512i;

/// The 16 words of two permutations P (RFC 9106, section 3.6).
struct Working {
    Vector a, b, c, d;
};

/// a + b + 2ab, of a and b's low halves in the product.
[[gnu::always_inline]] inline Vector blaMka(Vector a, Vector b) noexcept {
    const auto product = _mm512_mul_epu32(a, b);
    return _mm512_add_epi64(_mm512_add_epi64(a, b), _mm512_add_epi64(product, product));
}

/// Half a mix of each of several permutations: one alone would wait for its own products.
template <int dRotation, int bRotation, class... Several>
[[gnu::always_inline]] inline void halfMix(Several&... v) noexcept {
    ((v.a = blaMka(v.a, v.b)), ...);
    ((v.d = _mm512_ror_epi64(_mm512_xor_si512(v.d, v.a), dRotation)), ...);
    ((v.c = blaMka(v.c, v.d)), ...);
    ((v.b = _mm512_ror_epi64(_mm512_xor_si512(v.b, v.c), bRotation)), ...);
}

template <class... Several>
[[gnu::always_inline]] inline void mix(Several&... v) noexcept {
    halfMix<32, 24>(v...);
    halfMix<16, 63>(v...);
}

/// P of pairs of rows, one row in each half of the vectors.
/// Each b is the last word that a mix gives and the first that the next takes. So a, c and d turn around it.
template <class... Several>
[[gnu::always_inline]] inline void permuteRows(Several&... v) noexcept {
    mix(v...);
    ((v.a = _mm512_permutex_epi64(v.a, _MM_SHUFFLE(2, 1, 0, 3))), ...);
    ((v.d = _mm512_permutex_epi64(v.d, _MM_SHUFFLE(1, 0, 3, 2))), ...);
    ((v.c = _mm512_permutex_epi64(v.c, _MM_SHUFFLE(0, 3, 2, 1))), ...);
    mix(v...);
    ((v.a = _mm512_permutex_epi64(v.a, _MM_SHUFFLE(0, 3, 2, 1))), ...);
    ((v.d = _mm512_permutex_epi64(v.d, _MM_SHUFFLE(1, 0, 3, 2))), ...);
    ((v.c = _mm512_permutex_epi64(v.c, _MM_SHUFFLE(2, 1, 0, 3))), ...);
}

/// P of pairs of columns, whose words lie as the rows' vectors leave them: in each vector the first two words of one
/// column, the first two of the other, the last two of the one and of the other.
template <class... Several>
[[gnu::always_inline]] inline void permuteColumns(Several&... v) noexcept {
    const auto forwards = _mm512_setr_epi64(1, 4, 3, 6, 5, 0, 7, 2);
    const auto backwards = _mm512_setr_epi64(5, 0, 7, 2, 1, 4, 3, 6);
    mix(v...);
    ((v.a = _mm512_permutexvar_epi64(backwards, v.a)), ...);
    ((v.d = _mm512_shuffle_i64x2(v.d, v.d, _MM_SHUFFLE(1, 0, 3, 2))), ...);
    ((v.c = _mm512_permutexvar_epi64(forwards, v.c)), ...);
    mix(v...);
    ((v.a = _mm512_permutexvar_epi64(forwards, v.a)), ...);
    ((v.d = _mm512_shuffle_i64x2(v.d, v.d, _MM_SHUFFLE(1, 0, 3, 2))), ...);
    ((v.c = _mm512_permutexvar_epi64(backwards, v.c)), ...);
}

[[gnu::always_inline]] inline Vector load(const Word* words) noexcept {
    return _mm512_load_si512(words);
}

/// R = previous XOR reference, as far as two rows go.
[[gnu::always_inline]] inline Working loadRows(const Word* previous, const Word* reference) noexcept {
    const auto first0 = _mm512_xor_si512(load(previous), load(reference));
    const auto first8 = _mm512_xor_si512(load(previous + 8), load(reference + 8));
    const auto second0 = _mm512_xor_si512(load(previous + 16), load(reference + 16));
    const auto second8 = _mm512_xor_si512(load(previous + 24), load(reference + 24));
    return {_mm512_shuffle_i64x2(first0, second0, 0x44), _mm512_shuffle_i64x2(first0, second0, 0xEE),
            _mm512_shuffle_i64x2(first8, second8, 0x44), _mm512_shuffle_i64x2(first8, second8, 0xEE)};
}

template <Old old>
[[gnu::always_inline]] inline void storeWords(Vector z, const Word* previous, const Word* reference,
                                              Word* next) noexcept {
    constexpr int xorOfAll = 0x96;
    auto words = _mm512_ternarylogic_epi64(z, load(previous), load(reference), xorOfAll);
    if constexpr (old == Old::mixedIn)
        words = _mm512_xor_si512(words, load(next));
    _mm512_store_si512(next, words);
}

template <Old old>
[[gnu::always_inline]] inline void storeRows(const Working& z, const Word* previous, const Word* reference,
                                             Word* next) noexcept {
    storeWords<old>(_mm512_shuffle_i64x2(z.a, z.b, 0x44), previous, reference, next);
    storeWords<old>(_mm512_shuffle_i64x2(z.c, z.d, 0x44), previous + 8, reference + 8, next + 8);
    storeWords<old>(_mm512_shuffle_i64x2(z.a, z.b, 0xEE), previous + 16, reference + 16, next + 16);
    storeWords<old>(_mm512_shuffle_i64x2(z.c, z.d, 0xEE), previous + 24, reference + 24, next + 24);
}

struct Avx512 {
    template <Old old, class Announce>
    [[gnu::always_inline]] static void compress(const Word* previous, const Word* reference, Word* next,
                                                const Announce& announce) noexcept {
        auto rows01 = loadRows(previous, reference);
        auto rows23 = loadRows(previous + 32, reference + 32);
        auto rows45 = loadRows(previous + 64, reference + 64);
        auto rows67 = loadRows(previous + 96, reference + 96);
        const auto oldFirstWord = previous[0] ^ reference[0] ^ (old == Old::mixedIn ? next[0] : 0);
        permuteRows(rows01, rows23, rows45, rows67);

        Working columns01{rows01.a, rows23.a, rows45.a, rows67.a};
        Working columns23{rows01.b, rows23.b, rows45.b, rows67.b};
        Working columns45{rows01.c, rows23.c, rows45.c, rows67.c};
        Working columns67{rows01.d, rows23.d, rows45.d, rows67.d};
        permuteColumns(columns01);
        announce(oldFirstWord ^ static_cast<Word>(_mm_cvtsi128_si64(_mm512_castsi512_si128(columns01.a))));
        permuteColumns(columns23, columns45, columns67);

        storeRows<old>({columns01.a, columns23.a, columns45.a, columns67.a}, previous, reference, next);
        storeRows<old>({columns01.b, columns23.b, columns45.b, columns67.b}, previous + 32, reference + 32, next + 32);
        storeRows<old>({columns01.c, columns23.c, columns45.c, columns67.c}, previous + 64, reference + 64, next + 64);
        storeRows<old>({columns01.d, columns23.d, columns45.d, columns67.d}, previous + 96, reference + 96, next + 96);
    }
};

}  // namespace

void fillSegmentsAvx512(const SegmentContext& context, LaneRange lanes) noexcept {
    fillSegments<Avx512>(context, lanes);
}

}  // namespace Argon2

#endif
