// SPDX-License-Identifier: MIT
#include "core/primitives/ChaCha20Stream.h"

#include "core/primitives/Precondition.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t keySize = 32;
constexpr std::size_t nonceSize = 12;
constexpr std::size_t shortNonceSize = 8;

// The words of "expand 32-byte k" (RFC 8439, section 2.3).
constexpr std::array<std::uint32_t, 4> constants{0x61707865, 0x3320646e, 0x79622d32, 0x6b206574};

StreamBlocks::Cipher cipherFor(ByteView nonce) {
    return nonce.size() == shortNonceSize ? StreamBlocks::Cipher::chaCha20Wide : StreamBlocks::Cipher::chaCha20;
}

StreamBlocks::State stateOf(const StreamKey& start, std::uint32_t counter) {
    const auto& [key, nonce] = start;
    // Keys are digests, and the payload's nonce is measured by the code that hands it in.
    precondition(key.size() == keySize && (nonce.size() == nonceSize || nonce.size() == shortNonceSize));
    StreamBlocks::State state{};
    std::ranges::copy(constants, state.begin());
    std::memcpy(&state[4], key.data(), key.size());
    state[12] = counter;
    std::memcpy(&state[nonce.size() == shortNonceSize ? 14 : 13], nonce.data(), nonce.size());
    return state;
}

}  // namespace

ChaCha20Stream::ChaCha20Stream(const StreamKey& start, std::uint32_t counter)
    : m_stream(cipherFor(start.nonce), stateOf(start, counter)) {}

void ChaCha20Stream::processInPlace(std::span<std::uint8_t> data) {
    m_stream.process(data);
}
