// SPDX-License-Identifier: MIT
#include "core/primitives/BlockStream.h"

#include <algorithm>

using StreamBlocks::blockSize;

BlockStream::BlockStream(StreamBlocks::Cipher cipher, StreamBlocks::State&& state) noexcept
    : m_cipher(cipher), m_implementation(widestVectors()), m_state(state) {
    secureWipe(state.data(), sizeof state);
}

BlockStream::~BlockStream() {
    secureWipe(m_state.data(), sizeof m_state);
    secureWipe(m_keystream.data(), sizeof m_keystream);
}

void BlockStream::process(std::span<std::uint8_t> data) noexcept {
    data = processFromBlock(data);
    const auto blocks = data.size() / blockSize;
    StreamBlocks::process(m_implementation, m_cipher, m_state, data.data(), blocks);
    data = data.subspan(blocks * blockSize);
    if (data.empty())
        return;
    generateBlock();
    processFromBlock(data);
}

/// What is left of `data` when the current block is used up.
std::span<std::uint8_t> BlockStream::processFromBlock(std::span<std::uint8_t> data) noexcept {
    const auto count = std::min(data.size(), m_keystream.size() - m_keystreamOffset);
    for (std::size_t i = 0; i < count; ++i)
        data[i] ^= m_keystream[m_keystreamOffset + i];
    m_keystreamOffset += count;
    return data.subspan(count);
}

void BlockStream::generateBlock() noexcept {
    m_keystream.fill(0);
    StreamBlocks::process(m_implementation, m_cipher, m_state, m_keystream.data(), 1);
    m_keystreamOffset = 0;
}
