// SPDX-License-Identifier: MIT
#include "core/primitives/StreamBlocks.h"

#include "core/primitives/BlockStream.h"
#include "core/primitives/ChaCha20Stream.h"
#include "core/primitives/Salsa20Stream.h"
#include "tests/core/primitives/Material.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>
#include <openssl/evp.h>
#include <sodium.h>

#include <cstring>
#include <memory>

namespace {

using StreamBlocks::Cipher;

constexpr std::uint32_t largest = 0xFFFFFFFF;

StreamBlocks::State randomState(Material& material) {
    StreamBlocks::State state;
    const auto bytes = material.bytes(sizeof state);
    std::memcpy(state.data(), bytes.data(), sizeof state);
    return state;
}

/// What a run over `blocks` blocks gives and leaves, block by block in the portable implementation.
Bytes processedOneByOne(Cipher cipher, StreamBlocks::State& state, Bytes data) {
    for (std::size_t offset = 0; offset < data.size(); offset += StreamBlocks::blockSize)
        StreamBlocks::process(Implementation::portable, cipher, state, data.data() + offset, 1);
    return data;
}

void expectSameAsOneByOne(Implementation implementation, Cipher cipher, const StreamBlocks::State& state,
                          const Bytes& data) {
    auto wideState = state;
    auto wide = data;
    auto narrowState = state;

    StreamBlocks::process(implementation, cipher, wideState, wide.data(), wide.size() / StreamBlocks::blockSize);

    EXPECT_TRUE(wide == processedOneByOne(cipher, narrowState, data));
    EXPECT_EQ(wideState, narrowState);
}

class StreamBlocksTest : public testing::TestWithParam<std::tuple<Implementation, Cipher>> {
protected:
    [[nodiscard]] static Implementation implementation() { return std::get<Implementation>(GetParam()); }
    [[nodiscard]] static Cipher cipher() { return std::get<Cipher>(GetParam()); }
    [[nodiscard]] static std::size_t counterWord() { return cipher() == Cipher::salsa20 ? 8 : 12; }
};

INSTANTIATE_TEST_SUITE_P(implementations, StreamBlocksTest,
                         testing::Combine(testing::ValuesIn(supportedVectors()),
                                          testing::Values(Cipher::chaCha20, Cipher::chaCha20Wide, Cipher::salsa20)),
                         [](const auto& instance) {
                             const auto cipher = std::get<Cipher>(instance.param);
                             return nameOf(std::get<Implementation>(instance.param)) + "_" +
                                    (cipher == Cipher::salsa20        ? "salsa20"
                                     : cipher == Cipher::chaCha20Wide ? "chaCha20Wide"
                                                                      : "chaCha20");
                         });

TEST_P(StreamBlocksTest, runsOfEveryLengthAreTheSameAsBlockByBlock) {
    Material material(1);
    for (std::size_t blocks = 0; blocks <= 70; ++blocks) {
        SCOPED_TRACE(blocks);
        expectSameAsOneByOne(implementation(), cipher(), randomState(material), material.bytes(64 * blocks));
    }
}

TEST_P(StreamBlocksTest, runsAcrossTheCountersWrapAreTheSameAsBlockByBlock) {
    Material material(2);
    for (std::uint32_t before = 0; before <= 40; ++before)
        for (const std::uint32_t high : {0U, 41U, largest}) {
            SCOPED_TRACE(before);
            auto state = randomState(material);
            state[counterWord()] = largest - before;
            state[counterWord() + 1] = high;
            expectSameAsOneByOne(implementation(), cipher(), state, material.bytes(64 * 41));
        }
}

TEST_P(StreamBlocksTest, aWrapCarriesWhereTheCounterIsWideAndOnlyThere) {
    Material material(3);
    for (const std::uint32_t high : {0U, 41U, largest}) {
        auto state = randomState(material);
        state[counterWord()] = largest - 20;
        state[counterWord() + 1] = high;
        auto expected = state;
        expected[counterWord()] = 19;
        expected[counterWord() + 1] = cipher() == Cipher::chaCha20 ? high : high + 1;
        auto data = material.bytes(64 * 40);

        StreamBlocks::process(implementation(), cipher(), state, data.data(), 40);

        EXPECT_EQ(state, expected);
    }
}

TEST_P(StreamBlocksTest, writesNothingBehindTheBlocks) {
    Material material(4);
    for (const std::size_t blocks : {1, 4, 8, 16, 31}) {
        auto state = randomState(material);
        auto data = material.bytes(64 * blocks + 64);
        const auto before = data;

        StreamBlocks::process(implementation(), cipher(), state, data.data(), blocks);

        EXPECT_EQ(toHex(ByteView(data).last(64)), toHex(ByteView(before).last(64)));
    }
}

TEST_P(StreamBlocksTest, takesDataAtAnyAddress) {
    Material material(5);
    for (std::size_t shift = 1; shift < 64; shift += 7) {
        const auto state = randomState(material);
        auto data = material.bytes(64 * 33 + shift);
        auto alignedState = state;
        auto shiftedState = state;
        const auto aligned = processedOneByOne(cipher(), alignedState, copyOf(ByteView(data).subspan(shift)));

        StreamBlocks::process(implementation(), cipher(), shiftedState, data.data() + shift, 33);

        EXPECT_TRUE(copyOf(ByteView(data).subspan(shift)) == aligned);
    }
}

TEST(BlockStreamTest, takesTheKeyOutOfTheStateThatItIsGiven) {
    Material material(6);
    auto state = randomState(material);

    const BlockStream stream(Cipher::chaCha20, std::move(state));

    EXPECT_EQ(state, StreamBlocks::State{});
}

// The peers. Lengths around the groups' sizes and far beyond them, so that every implementation takes part.

std::vector<std::size_t> lengths() {
    return {1,    63,   64,   65,   255,  256,  257,  511,   512,   513,
            1023, 1024, 1025, 1536, 2047, 2048, 4096, 10000, 65536, 200000};
}

TEST(ChaCha20StreamPeerTest, theShortCounterAgreesWithOpenSSL) {
    Material material(7);
    for (const auto length : lengths()) {
        const auto key = material.bytes(32);
        const auto nonce = material.bytes(12);
        const auto counter = material.number(0, largest - 4000);
        const auto text = material.bytes(length);
        Bytes iv(4);
        std::memcpy(iv.data(), &counter, sizeof counter);
        append(iv, nonce);
        Bytes expected(length);
        int count = 0;
        const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(EVP_CIPHER_CTX_new(),
                                                                                      &EVP_CIPHER_CTX_free);
        EVP_EncryptInit_ex(context.get(), EVP_chacha20(), nullptr, key.data(), iv.data());
        EVP_EncryptUpdate(context.get(), expected.data(), &count, text.data(), static_cast<int>(length));

        EXPECT_TRUE(ChaCha20Stream({.key = key, .nonce = nonce}, counter).process(text) == expected) << length;
    }
}

TEST(ChaCha20StreamPeerTest, theShortCounterAgreesWithLibsodium) {
    Material material(8);
    for (const auto length : lengths()) {
        const auto key = material.bytes(32);
        const auto nonce = material.bytes(12);
        const auto counter = material.number(0, largest - 4000);
        const auto text = material.bytes(length);
        Bytes expected(length);
        crypto_stream_chacha20_ietf_xor_ic(expected.data(), text.data(), length, nonce.data(), counter, key.data());

        EXPECT_TRUE(ChaCha20Stream({.key = key, .nonce = nonce}, counter).process(text) == expected) << length;
    }
}

TEST(ChaCha20StreamPeerTest, theWideCounterAgreesWithLibsodiumAlsoAcrossTheWrap) {
    Material material(9);
    for (const auto length : lengths())
        for (const auto counter : {0U, 1U, largest - 20, largest}) {
            const auto key = material.bytes(32);
            const auto nonce = material.bytes(8);
            const auto text = material.bytes(length);
            Bytes expected(length);
            crypto_stream_chacha20_xor_ic(expected.data(), text.data(), length, nonce.data(), counter, key.data());

            EXPECT_TRUE(ChaCha20Stream({.key = key, .nonce = nonce}, counter).process(text) == expected)
                << length << " " << counter;
        }
}

TEST(Salsa20StreamPeerTest, theLongKeyAgreesWithLibsodium) {
    Material material(10);
    for (const auto length : lengths()) {
        const auto key = material.bytes(32);
        const auto nonce = material.bytes(8);
        const auto text = material.bytes(length);
        Bytes expected(length);
        crypto_stream_salsa20_xor(expected.data(), text.data(), length, nonce.data(), key.data());

        EXPECT_TRUE(Salsa20Stream({.key = key, .nonce = nonce}).process(text) == expected) << length;
    }
}

// The peer's core takes any constant and a key of 32 bytes: the short key is its own second half.
TEST(Salsa20StreamPeerTest, theShortKeyAgreesWithLibsodiumsCore) {
    Material material(11);
    for (int i = 0; i < 50; ++i) {
        const auto key = material.bytes(16);
        const auto nonce = material.bytes(8);
        auto input = nonce;
        input.resize(16, 0);
        auto twice = key;
        append(twice, key);
        Bytes expected(64);
        crypto_core_salsa20(expected.data(), input.data(), twice.data(), bytesOf("expand 16-byte k").data());

        EXPECT_EQ(toHex(Salsa20Stream({.key = key, .nonce = nonce}).process(Bytes(64, 0))), toHex(expected));
    }
}

TEST(Salsa20StreamPeerTest, runsAcrossTheCountersWrapAgreeWithLibsodium) {
    Material material(12);
    for (const std::uint64_t counter : {std::uint64_t{largest} - 20, (std::uint64_t{7} << 32) - 3, ~std::uint64_t{0}}) {
        StreamBlocks::State state{};
        const auto key = material.bytes(32);
        const auto nonce = material.bytes(8);
        const auto constant = bytesOf("expand 32-byte k");
        for (std::size_t i = 0; i < 4; ++i)
            std::memcpy(&state[5 * i], &constant[4 * i], 4);
        std::memcpy(&state[1], key.data(), 16);
        std::memcpy(&state[6], nonce.data(), 8);
        std::memcpy(&state[8], &counter, 8);
        std::memcpy(&state[11], key.data() + 16, 16);
        auto text = material.bytes(64 * 50);
        Bytes expected(text.size());
        crypto_stream_salsa20_xor_ic(expected.data(), text.data(), text.size(), nonce.data(), counter, key.data());

        StreamBlocks::process(widestVectors(), Cipher::salsa20, state, text.data(), 50);

        EXPECT_TRUE(text == expected) << counter;
    }
}

}  // namespace
