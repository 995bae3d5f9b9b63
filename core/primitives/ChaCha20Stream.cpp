// SPDX-License-Identifier: MIT
#include "core/primitives/ChaCha20Stream.h"

#include "core/primitives/LittleEndian.h"
#include "core/primitives/Precondition.h"

#include <algorithm>

namespace {

// The words of "expand 32-byte k" (RFC 8439, section 2.3).
constexpr std::array<std::uint32_t, 4> constants{0x61707865, 0x3320646e, 0x79622d32, 0x6b206574};

void quarterRound(std::uint32_t& a, std::uint32_t& b, std::uint32_t& c, std::uint32_t& d) {
    a += b, d = std::rotl(d ^ a, 16);
    c += d, b = std::rotl(b ^ c, 12);
    a += b, d = std::rotl(d ^ a, 8);
    c += d, b = std::rotl(b ^ c, 7);
}

}  // namespace

ChaCha20Stream::ChaCha20Stream(ByteView key, ByteView nonce, std::uint32_t counter) : m_wideCounter(nonce.size() == 8) {
    // Keys are digests, and the payload's nonce is measured by the code that hands it in.
    precondition(key.size() == 32 && (nonce.size() == 12 || nonce.size() == 8));
    std::ranges::copy(constants, m_state.begin());
    std::memcpy(&m_state[4], key.data(), key.size());
    m_state[12] = counter;
    std::memcpy(&m_state[m_wideCounter ? 14 : 13], nonce.data(), nonce.size());
}

ChaCha20Stream::~ChaCha20Stream() {
    secureWipe(m_state.data(), sizeof m_state);
    secureWipe(m_keystream.data(), sizeof m_keystream);
}

void ChaCha20Stream::processInPlace(std::span<std::uint8_t> data) {
    for (auto& byte : data) {
        if (m_keystreamOffset == m_keystream.size())
            generateBlock();
        byte ^= m_keystream[m_keystreamOffset++];
    }
}

void ChaCha20Stream::generateBlock() {
    auto x = m_state;
    for (int doubleRound = 0; doubleRound < 10; ++doubleRound) {
        quarterRound(x[0], x[4], x[8], x[12]);
        quarterRound(x[1], x[5], x[9], x[13]);
        quarterRound(x[2], x[6], x[10], x[14]);
        quarterRound(x[3], x[7], x[11], x[15]);
        quarterRound(x[0], x[5], x[10], x[15]);
        quarterRound(x[1], x[6], x[11], x[12]);
        quarterRound(x[2], x[7], x[8], x[13]);
        quarterRound(x[3], x[4], x[9], x[14]);
    }
    for (std::size_t i = 0; i < x.size(); ++i)
        storeLE(m_keystream.data() + 4 * i, x[i] + m_state[i]);
    if (++m_state[12] == 0 && m_wideCounter)
        ++m_state[13];
    m_keystreamOffset = 0;
}
