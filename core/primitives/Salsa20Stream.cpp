// SPDX-License-Identifier: MIT
#include "core/primitives/Salsa20Stream.h"

#include "core/primitives/LittleEndian.h"
#include "core/primitives/Precondition.h"

namespace {

// The words of "expand 32-byte k" and "expand 16-byte k" (Bernstein, "The Salsa20 family of stream ciphers").
constexpr std::array<std::uint32_t, 4> constants32{0x61707865, 0x3320646e, 0x79622d32, 0x6b206574};
constexpr std::array<std::uint32_t, 4> constants16{0x61707865, 0x3120646e, 0x79622d36, 0x6b206574};

void quarterRound(std::uint32_t& a, std::uint32_t& b, std::uint32_t& c, std::uint32_t& d) {
    b ^= std::rotl(a + d, 7);
    c ^= std::rotl(b + a, 9);
    d ^= std::rotl(c + b, 13);
    a ^= std::rotl(d + c, 18);
}

}  // namespace

Salsa20Stream::Salsa20Stream(ByteView key, ByteView nonce) {
    // The inner stream's key is a digest and its nonce a constant.
    precondition((key.size() == 32 || key.size() == 16) && nonce.size() == 8);
    const auto& constants = key.size() == 32 ? constants32 : constants16;
    for (std::size_t i = 0; i < constants.size(); ++i)
        m_state[5 * i] = constants[i];
    std::memcpy(&m_state[1], key.data(), 16);
    std::memcpy(&m_state[6], nonce.data(), 8);
    std::memcpy(&m_state[11], key.last(16).data(), 16);
}

Salsa20Stream::~Salsa20Stream() {
    secureWipe(m_state.data(), sizeof m_state);
    secureWipe(m_keystream.data(), sizeof m_keystream);
}

void Salsa20Stream::processInPlace(std::span<std::uint8_t> data) {
    for (auto& byte : data) {
        if (m_keystreamOffset == m_keystream.size())
            generateBlock();
        byte ^= m_keystream[m_keystreamOffset++];
    }
}

void Salsa20Stream::generateBlock() {
    auto x = m_state;
    for (int doubleRound = 0; doubleRound < 10; ++doubleRound) {
        quarterRound(x[0], x[4], x[8], x[12]);
        quarterRound(x[5], x[9], x[13], x[1]);
        quarterRound(x[10], x[14], x[2], x[6]);
        quarterRound(x[15], x[3], x[7], x[11]);
        quarterRound(x[0], x[1], x[2], x[3]);
        quarterRound(x[5], x[6], x[7], x[4]);
        quarterRound(x[10], x[11], x[8], x[9]);
        quarterRound(x[15], x[12], x[13], x[14]);
    }
    for (std::size_t i = 0; i < x.size(); ++i)
        storeLE(m_keystream.data() + 4 * i, x[i] + m_state[i]);
    if (++m_state[8] == 0)
        ++m_state[9];
    m_keystreamOffset = 0;
}
