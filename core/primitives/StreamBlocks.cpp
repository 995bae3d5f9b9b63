// SPDX-License-Identifier: MIT
#include "core/primitives/StreamBlocks.h"

#include "core/primitives/Bytes.h"
#include "core/primitives/StreamBlocksByWidth.h"
#include "core/primitives/StreamRounds.h"

#include <cstring>

namespace StreamBlocks {
namespace {

/// Raises the counter; its width and position are the cipher's.
void raiseCounter(Cipher cipher, State& state, std::size_t blocks) noexcept {
    auto* const low = &state[counterWord(cipher)];
    const auto sum = *low + std::uint64_t{blocks};
    *low = static_cast<std::uint32_t>(sum);
    if (hasWideCounter(cipher))
        low[1] += static_cast<std::uint32_t>(sum >> 32);
}

void processOneBlock(Cipher cipher, const State& state, std::uint8_t* data) noexcept {
    State block = state;
    if (cipher == Cipher::salsa20)
        rounds<Cipher::salsa20>(block.data());
    else
        rounds<Cipher::chaCha20>(block.data());
    for (std::size_t i = 0; i < block.size(); ++i) {
        std::uint32_t word;
        std::memcpy(&word, data + 4 * i, sizeof word);
        word ^= block[i] + state[i];
        std::memcpy(data + 4 * i, &word, sizeof word);
    }
    secureWipe(block.data(), sizeof block);
}

/// The work as it goes from one function to the next: what is left when each has done as many blocks as it can.
struct Work {
    Cipher cipher;
    State& state;
    std::uint8_t* data;
    std::size_t blocks;

    void goOnBy(BlocksFunction* function) noexcept {
        const auto done = function(cipher, state.data(), data, blocks);
        raiseCounter(cipher, state, done);
        data += done * blockSize;
        blocks -= done;
    }
};

}  // namespace

void process(Implementation implementation, Cipher cipher, State& state, std::uint8_t* data,
             std::size_t blocks) noexcept {
    Work work{cipher, state, data, blocks};
    // The wide functions take groups of blocks, and leave a rest to the narrower ones.
    if (implementation >= Implementation::avx512)
        work.goOnBy(processByAvx512);
    if (implementation >= Implementation::avx2)
        work.goOnBy(processByAvx2);
    work.goOnBy(processByFour);
    if (work.blocks < blocks)
        wipeUnusedStack();
    for (; work.blocks > 0; --work.blocks, work.data += blockSize) {
        processOneBlock(cipher, state, work.data);
        raiseCounter(cipher, state, 1);
    }
}

}  // namespace StreamBlocks
