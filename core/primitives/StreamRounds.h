// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/StreamBlocks.h"

#include <utility>

// Sources that are built with different processor flags include this. So all of it has internal linkage and takes
// nothing inline from elsewhere: of functions with one name the linker keeps one, and it might be the one that an
// older processor cannot run.
namespace StreamBlocks {
namespace {

constexpr std::size_t counterWord(Cipher cipher) {
    return cipher == Cipher::salsa20 ? 8 : 12;
}

constexpr bool hasWideCounter(Cipher cipher) {
    return cipher != Cipher::chaCha20;
}

/// Vectors of 256 bits have no rotation of their own, but one instruction permutes whole bytes.
template <int bits, class Word, int... index>
[[gnu::always_inline]] inline Word rotateBytes(const Word& word, std::integer_sequence<int, index...>) {
    typedef std::uint8_t BytesOfWords __attribute__((vector_size(sizeof(Word))));
    const BytesOfWords bytes = reinterpret_cast<BytesOfWords>(word);
    const BytesOfWords rotated = __builtin_shufflevector(bytes, bytes, (index / 4 * 4 + (index + 4 - bits / 8) % 4)...);
    return reinterpret_cast<Word>(rotated);
}

template <int bits, class Word>
[[gnu::always_inline]] inline Word rotateLeft(const Word& word) {
    if constexpr (sizeof word == 32 && bits % 8 == 0)
        return rotateBytes<bits>(word, std::make_integer_sequence<int, 32>());
    else
        return word << bits | word >> (32 - bits);
}

/// RFC 8439, section 2.1. `Word` is a word, or a vector of the same word of several blocks.
template <class Word>
[[gnu::always_inline]] inline void chaChaQuarterRound(Word& a, Word& b, Word& c, Word& d) {
    a += b, d = rotateLeft<16>(d ^ a);
    c += d, b = rotateLeft<12>(b ^ c);
    a += b, d = rotateLeft<8>(d ^ a);
    c += d, b = rotateLeft<7>(b ^ c);
}

template <class Word>
[[gnu::always_inline]] inline void chaChaDoubleRound(Word* x) {
    chaChaQuarterRound(x[0], x[4], x[8], x[12]);
    chaChaQuarterRound(x[1], x[5], x[9], x[13]);
    chaChaQuarterRound(x[2], x[6], x[10], x[14]);
    chaChaQuarterRound(x[3], x[7], x[11], x[15]);
    chaChaQuarterRound(x[0], x[5], x[10], x[15]);
    chaChaQuarterRound(x[1], x[6], x[11], x[12]);
    chaChaQuarterRound(x[2], x[7], x[8], x[13]);
    chaChaQuarterRound(x[3], x[4], x[9], x[14]);
}

/// Bernstein, "Salsa20 specification", section 3.
template <class Word>
[[gnu::always_inline]] inline void salsaQuarterRound(Word& y0, Word& y1, Word& y2, Word& y3) {
    y1 ^= rotateLeft<7>(y0 + y3);
    y2 ^= rotateLeft<9>(y1 + y0);
    y3 ^= rotateLeft<13>(y2 + y1);
    y0 ^= rotateLeft<18>(y3 + y2);
}

template <class Word>
[[gnu::always_inline]] inline void salsaDoubleRound(Word* x) {
    salsaQuarterRound(x[0], x[4], x[8], x[12]);
    salsaQuarterRound(x[5], x[9], x[13], x[1]);
    salsaQuarterRound(x[10], x[14], x[2], x[6]);
    salsaQuarterRound(x[15], x[3], x[7], x[11]);
    salsaQuarterRound(x[0], x[1], x[2], x[3]);
    salsaQuarterRound(x[5], x[6], x[7], x[4]);
    salsaQuarterRound(x[10], x[11], x[8], x[9]);
    salsaQuarterRound(x[15], x[12], x[13], x[14]);
}

/// The twenty rounds of either cipher over the sixteen words at `x`.
template <Cipher cipher, class Word>
[[gnu::always_inline]] inline void rounds(Word* x) {
    for (int i = 0; i < 10; ++i)
        if constexpr (cipher == Cipher::salsa20)
            salsaDoubleRound(x);
        else
            chaChaDoubleRound(x);
}

}  // namespace
}  // namespace StreamBlocks
