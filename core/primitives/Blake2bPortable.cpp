// SPDX-License-Identifier: MIT
#include "core/primitives/Blake2bCompress.h"

#include <bit>
#include <cstring>

namespace Blake2b {
namespace {

using Word = std::uint64_t;

[[gnu::always_inline]] inline void mix(Word& a, Word& b, Word& c, Word& d, Word x, Word y) noexcept {
    a = a + x + b;
    d = std::rotr(d ^ a, 32);
    c += d;
    b = std::rotr(b ^ c, 24);
    a = a + y + b;
    d = std::rotr(d ^ a, 16);
    c += d;
    b = std::rotr(b ^ c, 63);
}

template <int round>
[[gnu::always_inline]] inline void mixAll(Word (&v)[16], const Word (&m)[16]) noexcept {
    constexpr auto& s = sigma[round];
    mix(v[0], v[4], v[8], v[12], m[s[0]], m[s[1]]);
    mix(v[1], v[5], v[9], v[13], m[s[2]], m[s[3]]);
    mix(v[2], v[6], v[10], v[14], m[s[4]], m[s[5]]);
    mix(v[3], v[7], v[11], v[15], m[s[6]], m[s[7]]);
    mix(v[0], v[5], v[10], v[15], m[s[8]], m[s[9]]);
    mix(v[1], v[6], v[11], v[12], m[s[10]], m[s[11]]);
    mix(v[2], v[7], v[8], v[13], m[s[12]], m[s[13]]);
    mix(v[3], v[4], v[9], v[14], m[s[14]], m[s[15]]);
}

void compressBlock(Chain& chain, const std::uint8_t* block, Word finalMask) noexcept {
    Word m[16];
    std::memcpy(m, block, sizeof m);
    const auto& h = chain.h;
    Word v[16] = {h[0],
                  h[1],
                  h[2],
                  h[3],
                  h[4],
                  h[5],
                  h[6],
                  h[7],
                  iv[0],
                  iv[1],
                  iv[2],
                  iv[3],
                  iv[4] ^ chain.tLow,
                  iv[5] ^ chain.tHigh,
                  iv[6] ^ finalMask,
                  iv[7]};
    mixAll<0>(v, m);
    mixAll<1>(v, m);
    mixAll<2>(v, m);
    mixAll<3>(v, m);
    mixAll<4>(v, m);
    mixAll<5>(v, m);
    mixAll<6>(v, m);
    mixAll<7>(v, m);
    mixAll<8>(v, m);
    mixAll<9>(v, m);
    mixAll<10>(v, m);
    mixAll<11>(v, m);
    for (int i = 0; i < 8; ++i)
        chain.h[i] ^= v[i] ^ v[i + 8];
}

}  // namespace

void compressPortable(Chain& chain, const Blocks& blocks) noexcept {
    for (std::size_t i = 0; i < blocks.count; ++i) {
        chain.tLow += blocks.bytesInEach;
        chain.tHigh += chain.tLow < blocks.bytesInEach ? 1 : 0;
        compressBlock(chain, blocks.bytes + i * blockSize, blocks.finalMask);
    }
}

}  // namespace Blake2b
