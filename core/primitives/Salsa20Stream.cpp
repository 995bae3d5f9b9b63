// SPDX-License-Identifier: MIT
#include "core/primitives/Salsa20Stream.h"

#include "core/primitives/Precondition.h"

#include <cstring>

namespace {

constexpr std::size_t keySize = 32;
constexpr std::size_t shortKeySize = 16;
constexpr std::size_t nonceSize = 8;

// The words of "expand 32-byte k" and "expand 16-byte k" (Bernstein, "Salsa20 specification", section 9).
constexpr std::array<std::uint32_t, 4> constants{0x61707865, 0x3320646e, 0x79622d32, 0x6b206574};
constexpr std::array<std::uint32_t, 4> shortKeyConstants{0x61707865, 0x3120646e, 0x79622d36, 0x6b206574};

StreamBlocks::State stateOf(const StreamKey& start) {
    const auto& [key, nonce] = start;
    // The inner stream's key is a digest and its nonce a constant.
    precondition((key.size() == keySize || key.size() == shortKeySize) && nonce.size() == nonceSize);
    const auto& words = key.size() == keySize ? constants : shortKeyConstants;
    StreamBlocks::State state{};
    for (std::size_t i = 0; i < words.size(); ++i)
        state[5 * i] = words[i];
    std::memcpy(&state[1], key.data(), 16);
    std::memcpy(&state[6], nonce.data(), nonce.size());
    std::memcpy(&state[11], key.last(16).data(), 16);
    return state;
}

}  // namespace

Salsa20Stream::Salsa20Stream(const StreamKey& start) : m_stream(StreamBlocks::Cipher::salsa20, stateOf(start)) {}

void Salsa20Stream::processInPlace(std::span<std::uint8_t> data) {
    m_stream.process(data);
}
