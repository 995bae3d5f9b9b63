// SPDX-License-Identifier: MIT
#include "core/primitives/Argon2Fill.h"

#include <bit>

namespace Argon2 {
namespace {

using Word = std::uint64_t;

/// a + b + 2ab, of a and b's low halves in the product (RFC 9106, section 3.6).
[[gnu::always_inline]] inline Word blaMka(Word a, Word b) noexcept {
    constexpr Word low = 0xFFFFFFFF;
    return a + b + 2 * (a & low) * (b & low);
}

[[gnu::always_inline]] inline void mix(Word& a, Word& b, Word& c, Word& d) noexcept {
    a = blaMka(a, b);
    d = std::rotr(d ^ a, 32);
    c = blaMka(c, d);
    b = std::rotr(b ^ c, 24);
    a = blaMka(a, b);
    d = std::rotr(d ^ a, 16);
    c = blaMka(c, d);
    b = std::rotr(b ^ c, 63);
}

/// The permutation P over 16 words: pairs of neighbours, `stride` words apart.
template <std::uint32_t stride>
[[gnu::always_inline]] inline void permute(Word* words) noexcept {
    const auto v = [words](std::uint32_t i) -> Word& { return words[i / 2 * stride + i % 2]; };
    mix(v(0), v(4), v(8), v(12));
    mix(v(1), v(5), v(9), v(13));
    mix(v(2), v(6), v(10), v(14));
    mix(v(3), v(7), v(11), v(15));
    mix(v(0), v(5), v(10), v(15));
    mix(v(1), v(6), v(11), v(12));
    mix(v(2), v(7), v(8), v(13));
    mix(v(3), v(4), v(9), v(14));
}

struct Portable {
    template <Old old, class Announce>
    static void compress(const Word* previous, const Word* reference, Word* next, const Announce& announce) noexcept {
        alignas(64) Word z[wordsPerBlock];
        alignas(64) Word r[wordsPerBlock];
        for (std::uint32_t i = 0; i < wordsPerBlock; ++i)
            z[i] = r[i] = previous[i] ^ reference[i];
        for (std::uint32_t row = 0; row < 8; ++row)
            permute<2>(z + 16 * row);
        permute<16>(z);
        announce(r[0] ^ z[0] ^ (old == Old::mixedIn ? next[0] : 0));
        for (std::uint32_t column = 1; column < 8; ++column)
            permute<16>(z + 2 * column);
        for (std::uint32_t i = 0; i < wordsPerBlock; ++i)
            next[i] = r[i] ^ z[i] ^ (old == Old::mixedIn ? next[i] : 0);
    }
};

}  // namespace

void fillSegmentsPortable(const SegmentContext& context, LaneRange lanes) noexcept {
    fillSegments<Portable>(context, lanes);
}

}  // namespace Argon2
