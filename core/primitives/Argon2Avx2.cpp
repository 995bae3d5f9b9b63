// SPDX-License-Identifier: MIT
#include "core/primitives/Argon2Fill.h"

#ifdef __x86_64__

#include <immintrin.h>

namespace Argon2 {
namespace {

using Word = std::uint64_t;

/// Four words: a, b, c or d of one permutation.
using Vector = __m256i;

/// The 16 words of one permutation P (RFC 9106, section 3.6).
struct Working {
    Vector a, b, c, d;
};

/// a + b + 2ab, of a and b's low halves in the product.
[[gnu::always_inline]] inline Vector blaMka(Vector a, Vector b) noexcept {
    const auto product = _mm256_mul_epu32(a, b);
    return _mm256_add_epi64(_mm256_add_epi64(a, b), _mm256_add_epi64(product, product));
}

[[gnu::always_inline]] inline Vector rotateRight32(Vector words) noexcept {
    return _mm256_shuffle_epi32(words, _MM_SHUFFLE(2, 3, 0, 1));
}

[[gnu::always_inline]] inline Vector rotateRight24(Vector words) noexcept {
    return _mm256_shuffle_epi8(words, _mm256_setr_epi8(3, 4, 5, 6, 7, 0, 1, 2, 11, 12, 13, 14, 15, 8, 9, 10, 3, 4, 5, 6,
                                                       7, 0, 1, 2, 11, 12, 13, 14, 15, 8, 9, 10));
}

[[gnu::always_inline]] inline Vector rotateRight16(Vector words) noexcept {
    return _mm256_shuffle_epi8(words, _mm256_setr_epi8(2, 3, 4, 5, 6, 7, 0, 1, 10, 11, 12, 13, 14, 15, 8, 9, 2, 3, 4, 5,
                                                       6, 7, 0, 1, 10, 11, 12, 13, 14, 15, 8, 9));
}

[[gnu::always_inline]] inline Vector rotateRight63(Vector words) noexcept {
    return _mm256_or_si256(_mm256_srli_epi64(words, 63), _mm256_add_epi64(words, words));
}

/// The mixes of two permutations side by side: one alone would wait for its own products.
[[gnu::always_inline]] inline void mix(Working& v, Working& w) noexcept {
    v.a = blaMka(v.a, v.b);
    w.a = blaMka(w.a, w.b);
    v.d = rotateRight32(_mm256_xor_si256(v.d, v.a));
    w.d = rotateRight32(_mm256_xor_si256(w.d, w.a));
    v.c = blaMka(v.c, v.d);
    w.c = blaMka(w.c, w.d);
    v.b = rotateRight24(_mm256_xor_si256(v.b, v.c));
    w.b = rotateRight24(_mm256_xor_si256(w.b, w.c));
    v.a = blaMka(v.a, v.b);
    w.a = blaMka(w.a, w.b);
    v.d = rotateRight16(_mm256_xor_si256(v.d, v.a));
    w.d = rotateRight16(_mm256_xor_si256(w.d, w.a));
    v.c = blaMka(v.c, v.d);
    w.c = blaMka(w.c, w.d);
    v.b = rotateRight63(_mm256_xor_si256(v.b, v.c));
    w.b = rotateRight63(_mm256_xor_si256(w.b, w.c));
}

/// Each b is the last word that a mix gives and the first that the next takes. So a, c and d turn around it.
[[gnu::always_inline]] inline void diagonalize(Working& v) noexcept {
    v.a = _mm256_permute4x64_epi64(v.a, _MM_SHUFFLE(2, 1, 0, 3));
    v.d = _mm256_permute4x64_epi64(v.d, _MM_SHUFFLE(1, 0, 3, 2));
    v.c = _mm256_permute4x64_epi64(v.c, _MM_SHUFFLE(0, 3, 2, 1));
}

[[gnu::always_inline]] inline void undiagonalize(Working& v) noexcept {
    v.a = _mm256_permute4x64_epi64(v.a, _MM_SHUFFLE(0, 3, 2, 1));
    v.d = _mm256_permute4x64_epi64(v.d, _MM_SHUFFLE(1, 0, 3, 2));
    v.c = _mm256_permute4x64_epi64(v.c, _MM_SHUFFLE(2, 1, 0, 3));
}

[[gnu::always_inline]] inline void permute(Working& v, Working& w) noexcept {
    mix(v, w);
    diagonalize(v);
    diagonalize(w);
    mix(v, w);
    undiagonalize(v);
    undiagonalize(w);
}

[[gnu::always_inline]] inline Vector load(const Word* words) noexcept {
    return _mm256_load_si256(reinterpret_cast<const Vector*>(words));
}

[[gnu::always_inline]] inline void store(Word* words, Vector value) noexcept {
    _mm256_store_si256(reinterpret_cast<Vector*>(words), value);
}

[[gnu::always_inline]] inline Working loadRow(const Word* previous, const Word* reference) noexcept {
    return {_mm256_xor_si256(load(previous), load(reference)),
            _mm256_xor_si256(load(previous + 4), load(reference + 4)),
            _mm256_xor_si256(load(previous + 8), load(reference + 8)),
            _mm256_xor_si256(load(previous + 12), load(reference + 12))};
}

[[gnu::always_inline]] inline void storeRow(Word* z, const Working& v) noexcept {
    store(z, v.a);
    store(z + 4, v.b);
    store(z + 8, v.c);
    store(z + 12, v.d);
}

/// R = previous XOR reference, and P of two rows of it.
[[gnu::always_inline]] inline void permuteRows(const Word* previous, const Word* reference, Word* z) noexcept {
    auto v = loadRow(previous, reference);
    auto w = loadRow(previous + 16, reference + 16);
    permute(v, w);
    storeRow(z, v);
    storeRow(z + 16, w);
}

/// The first or the second two words of a quarter of two neighbouring columns.
struct ColumnHalves {
    Vector first;
    Vector second;
};

/// Two columns' words in two rows become four words of each column, and back: the same exchange does both.
[[gnu::always_inline]] inline ColumnHalves exchange(Vector upper, Vector lower) noexcept {
    return {_mm256_permute2x128_si256(upper, lower, 0x20), _mm256_permute2x128_si256(upper, lower, 0x31)};
}

template <Old old>
[[gnu::always_inline]] inline void storeWords(Vector z, const Word* previous, const Word* reference,
                                              Word* next) noexcept {
    auto words = _mm256_xor_si256(z, _mm256_xor_si256(load(previous), load(reference)));
    if constexpr (old == Old::mixedIn)
        words = _mm256_xor_si256(words, load(next));
    store(next, words);
}

struct Columns {
    Working v;
    Working w;
};

/// P of two neighbouring columns, from the word `z` of the first row on.
[[gnu::always_inline]] inline Columns permuteColumns(const Word* z) noexcept {
    const auto rows01 = exchange(load(z), load(z + 16));
    const auto rows23 = exchange(load(z + 32), load(z + 48));
    const auto rows45 = exchange(load(z + 64), load(z + 80));
    const auto rows67 = exchange(load(z + 96), load(z + 112));
    Columns columns{{rows01.first, rows23.first, rows45.first, rows67.first},
                    {rows01.second, rows23.second, rows45.second, rows67.second}};
    permute(columns.v, columns.w);
    return columns;
}

template <Old old>
[[gnu::always_inline]] inline void storeTwoRows(Vector v, Vector w, const Word* previous, const Word* reference,
                                                Word* next) noexcept {
    const auto rows = exchange(v, w);
    storeWords<old>(rows.first, previous, reference, next);
    storeWords<old>(rows.second, previous + 16, reference + 16, next + 16);
}

template <Old old>
[[gnu::always_inline]] inline void storeColumns(const Columns& columns, const Word* previous, const Word* reference,
                                                Word* next) noexcept {
    const auto& [v, w] = columns;
    storeTwoRows<old>(v.a, w.a, previous, reference, next);
    storeTwoRows<old>(v.b, w.b, previous + 32, reference + 32, next + 32);
    storeTwoRows<old>(v.c, w.c, previous + 64, reference + 64, next + 64);
    storeTwoRows<old>(v.d, w.d, previous + 96, reference + 96, next + 96);
}

struct Avx2 {
    template <Old old, class Announce>
    [[gnu::always_inline]] static void compress(const Word* previous, const Word* reference, Word* next,
                                                const Announce& announce) noexcept {
        alignas(64) Word z[wordsPerBlock];
        permuteRows(previous, reference, z);
        permuteRows(previous + 32, reference + 32, z + 32);
        permuteRows(previous + 64, reference + 64, z + 64);
        permuteRows(previous + 96, reference + 96, z + 96);

        storeColumns<old>(permuteColumns(z), previous, reference, next);
        announce(next[0]);
        storeColumns<old>(permuteColumns(z + 4), previous + 4, reference + 4, next + 4);
        storeColumns<old>(permuteColumns(z + 8), previous + 8, reference + 8, next + 8);
        storeColumns<old>(permuteColumns(z + 12), previous + 12, reference + 12, next + 12);
    }
};

}  // namespace

void fillSegmentsAvx2(const SegmentContext& context, LaneRange lanes) noexcept {
    fillSegments<Avx2>(context, lanes);
}

}  // namespace Argon2

#endif
