// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"
#include "core/primitives/StreamBlocks.h"

#include <span>

/// What starts a keystream.
struct StreamKey {
    ByteView key;
    ByteView nonce;
};

/// A cipher's keystream with its position, which goes on from call to call, also in the middle of a block.
/// What it held is wiped when it goes.
class BlockStream {
public:
    /// `state` is taken over: the key in it is wiped where it came from.
    BlockStream(StreamBlocks::Cipher cipher, StreamBlocks::State&& state) noexcept;
    ~BlockStream();
    BlockStream(const BlockStream&) = delete;
    BlockStream& operator=(const BlockStream&) = delete;

    /// XORs `data` in place with the next bytes of the keystream.
    void process(std::span<std::uint8_t> data) noexcept;

private:
    std::span<std::uint8_t> processFromBlock(std::span<std::uint8_t> data) noexcept;
    void generateBlock() noexcept;

    StreamBlocks::Cipher m_cipher;
    Implementation m_implementation;
    StreamBlocks::State m_state;
    std::array<std::uint8_t, StreamBlocks::blockSize> m_keystream{};
    std::size_t m_keystreamOffset = StreamBlocks::blockSize;  // next unused byte of m_keystream, 0 to 64
};
