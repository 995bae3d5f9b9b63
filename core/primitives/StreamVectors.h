// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/StreamBlocksByWidth.h"
#include "core/primitives/StreamRounds.h"

#include <utility>

// Groups of blocks in vectors, with the rule of StreamRounds.h: internal linkage, and nothing inline from elsewhere.
// A vector holds the same word of as many blocks as it has lanes.
namespace StreamBlocks {
namespace {

template <int lanes>
struct Vectors {
    typedef std::uint32_t Vector __attribute__((vector_size(4 * lanes)));
};
template <int lanes>
using Vector = typename Vectors<lanes>::Vector;

// Which lane is at an index of the result, counting on from the first vector's lanes into the second's.
template <int lanes, int from>
struct Words {  // in every quarter of four lanes: a, b, a, b
    static constexpr int at(int index) { return index % 2 * lanes + index / 4 * 4 + index % 4 / 2 + from; }
};
template <int lanes, int from>
struct Pairs {  // in every quarter of four lanes: a, a, b, b
    static constexpr int at(int index) { return index % 4 / 2 * lanes + index / 4 * 4 + index % 2 + from; }
};
template <int lanes, int from>
struct Halves {  // half of a, half of b
    static constexpr int at(int index) { return index / (lanes / 2) * lanes + index % (lanes / 2) + from; }
};
template <int lanes, int from>
struct Quarters {  // every other quarter of a, then of b
    static constexpr int at(int index) {
        return index / (lanes / 2) * lanes + index % (lanes / 2) / 4 * 8 + index % 4 + from;
    }
};

template <class Indices, int lanes, int... index>
[[gnu::always_inline]] inline Vector<lanes> picked(const Vector<lanes>& a, const Vector<lanes>& b,
                                                   std::integer_sequence<int, index...>) {
    return __builtin_shufflevector(a, b, Indices::at(index)...);
}

template <template <int, int> class Indices, int lanes, int from>
[[gnu::always_inline]] inline Vector<lanes> pick(const Vector<lanes>& a, const Vector<lanes>& b) {
    return picked<Indices<lanes, from>, lanes>(a, b, std::make_integer_sequence<int, lanes>());
}

template <int lanes>
[[gnu::always_inline]] inline void xorInto(std::uint8_t* data, const Vector<lanes>& keystream) {
    Vector<lanes> text;
    __builtin_memcpy(&text, data, sizeof text);
    text ^= keystream;
    __builtin_memcpy(data, &text, sizeof text);
}

/// Four words in a row of every block: from one vector a word to one vector a residue, whose quarter q holds the four
/// words of block 4q + residue.
template <int lanes>
[[gnu::always_inline]] inline void transposeQuarters(Vector<lanes>* x) {
    const auto low01 = pick<Words, lanes, 0>(x[0], x[1]);
    const auto high01 = pick<Words, lanes, 2>(x[0], x[1]);
    const auto low23 = pick<Words, lanes, 0>(x[2], x[3]);
    const auto high23 = pick<Words, lanes, 2>(x[2], x[3]);
    x[0] = pick<Pairs, lanes, 0>(low01, low23);
    x[1] = pick<Pairs, lanes, 2>(low01, low23);
    x[2] = pick<Pairs, lanes, 0>(high01, high23);
    x[3] = pick<Pairs, lanes, 2>(high01, high23);
}

/// XORs the blocks 4q + `residue` at `data` with the quarters that `transposeQuarters` made of their words.
template <int lanes>
[[gnu::always_inline]] inline void xorBlocks(std::uint8_t* data, const Vector<lanes>* x, int residue) {
    auto* const block = data + residue * static_cast<int>(blockSize);
    constexpr auto four = 4 * blockSize;
    if constexpr (lanes == 4) {
#pragma GCC unroll 16
        for (int i = 0; i < 4; ++i)
            xorInto<lanes>(block + 16 * i, x[4 * i]);
    } else if constexpr (lanes == 8) {
        xorInto<lanes>(block, pick<Halves, lanes, 0>(x[0], x[4]));
        xorInto<lanes>(block + 32, pick<Halves, lanes, 0>(x[8], x[12]));
        xorInto<lanes>(block + four, pick<Halves, lanes, 4>(x[0], x[4]));
        xorInto<lanes>(block + four + 32, pick<Halves, lanes, 4>(x[8], x[12]));
    } else {
        const auto low0 = pick<Halves, lanes, 0>(x[0], x[4]);
        const auto low1 = pick<Halves, lanes, 0>(x[8], x[12]);
        const auto high0 = pick<Halves, lanes, 8>(x[0], x[4]);
        const auto high1 = pick<Halves, lanes, 8>(x[8], x[12]);
        xorInto<lanes>(block, pick<Quarters, lanes, 0>(low0, low1));
        xorInto<lanes>(block + four, pick<Quarters, lanes, 4>(low0, low1));
        xorInto<lanes>(block + 2 * four, pick<Quarters, lanes, 0>(high0, high1));
        xorInto<lanes>(block + 3 * four, pick<Quarters, lanes, 4>(high0, high1));
    }
}

/// The state of as many blocks as there are lanes, with the counters of `first` and on.
template <Cipher cipher, int lanes>
[[gnu::always_inline]] inline void spread(Vector<lanes>* x, const std::uint32_t* state, std::uint64_t first) {
#pragma GCC unroll 16
    for (int i = 0; i < 16; ++i)
        x[i] = Vector<lanes>{} + state[i];
    Vector<lanes> low;
    Vector<lanes> high;
    for (int lane = 0; lane < lanes; ++lane) {
        const auto counter = first + static_cast<unsigned>(lane);
        low[lane] = static_cast<std::uint32_t>(counter);
        high[lane] = static_cast<std::uint32_t>(counter >> 32);
    }
    x[counterWord(cipher)] = low;
    if constexpr (hasWideCounter(cipher))
        x[counterWord(cipher) + 1] = high;
}

template <Cipher cipher, int lanes>
std::size_t processGroups(const std::uint32_t* state, std::uint8_t* data, std::size_t blocks) {
    auto counter = state[counterWord(cipher)] | std::uint64_t{state[counterWord(cipher) + 1]} << 32;
    std::size_t done = 0;
    for (; blocks - done >= lanes; done += lanes, counter += lanes, data += lanes * blockSize) {
        Vector<lanes> start[16];
        Vector<lanes> x[16];
        spread<cipher, lanes>(start, state, counter);
#pragma GCC unroll 16
        for (int i = 0; i < 16; ++i)
            x[i] = start[i];
        rounds<cipher>(x);
#pragma GCC unroll 16
        for (int i = 0; i < 16; ++i)
            x[i] += start[i];
#pragma GCC unroll 16
        for (int i = 0; i < 16; i += 4)
            transposeQuarters<lanes>(x + i);
#pragma GCC unroll 16
        for (int residue = 0; residue < 4; ++residue)
            xorBlocks<lanes>(data, x + residue, residue);
    }
    return done;
}

template <int lanes>
std::size_t processInVectors(Cipher cipher, const std::uint32_t* state, std::uint8_t* data, std::size_t blocks) {
    switch (cipher) {
        case Cipher::chaCha20:
            return processGroups<Cipher::chaCha20, lanes>(state, data, blocks);
        case Cipher::chaCha20Wide:
            return processGroups<Cipher::chaCha20Wide, lanes>(state, data, blocks);
        case Cipher::salsa20:
            break;
    }
    return processGroups<Cipher::salsa20, lanes>(state, data, blocks);
}

}  // namespace
}  // namespace StreamBlocks
