// SPDX-License-Identifier: MIT
#include "core/primitives/Blake2b.h"

#include "core/primitives/LittleEndian.h"
#include "tests/core/primitives/Material.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

namespace {

/// 0, 1, 2 and so on, as in the published known-answer tests.
Bytes counting(std::size_t count) {
    Bytes bytes(count);
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<std::uint8_t>(i);
    return bytes;
}

/// A chaining value as a state of the digest length `outputLength` begins with.
Blake2b::Chain newChain(std::uint64_t outputLength, std::uint64_t keyLength = 0) {
    Blake2b::Chain chain{};
    std::copy_n(Blake2b::iv, 8, chain.h);
    chain.h[0] ^= 0x1010000 ^ keyLength << 8 ^ outputLength;
    return chain;
}

std::string hexOf(const Blake2b::Chain& chain) {
    Bytes bytes;
    for (const auto word : chain.h)
        appendLE(bytes, word);
    return toHex(bytes);
}

class Blake2bTest : public testing::TestWithParam<Implementation> {
protected:
    static std::string digest(ByteView message, std::int64_t outputLength = 64, ByteView key = {}) {
        Blake2b::State state(outputLength, key, GetParam());
        state.update(message);
        return toHex(state.finalize());
    }
    static void compress(Blake2b::Chain& chain, const Blake2b::Blocks& blocks) {
        Blake2b::compressFor(GetParam())(chain, blocks);
    }
};

constexpr std::uint64_t isLast = ~std::uint64_t{0};

// RFC 7693, appendix A.
TEST_P(Blake2bTest, givesThePublishedDigestOfAbc) {
    EXPECT_EQ(digest(bytesOf("abc")),
              "ba80a53f981c4d0d6a2797b69f12f6e94c212f14685ac4b74b12bb6fdbffa2d1"
              "7d87c5392aab792dc252d5de4533cc9518d38aa8dbf1925ab92386edd4009923");
}

// The published value for the empty string, and the first keyed values of the published known-answer tests.
TEST_P(Blake2bTest, givesThePublishedDigestOfTheEmptyString) {
    EXPECT_EQ(digest({}),
              "786a02f742015903c6c6fd852552d272912f4740e15847618a86e217f71f5419"
              "d25e1031afee585313896444934eb04b903a685b1448b755d56f701afe9be2ce");
}

TEST_P(Blake2bTest, givesThePublishedKeyedDigests) {
    const auto key = counting(64);
    EXPECT_EQ(digest({}, 64, key),
              "10ebb67700b1868efb4417987acf4690ae9d972fb7a590c2f02871799aaa4786"
              "b5e996e8f0f4eb981fc214b005f42d2ff4233499391653df7aefcbc13fc51568");
    EXPECT_EQ(digest(counting(1), 64, key),
              "961f6dd1e4dd30f63901690c512e78e4b45e4742ed197c3c5e45c549fd25f2e4"
              "187b0bc9fe30492b16b0d0bc4ef9b0f34c7003fac09a5ef1532e69430234cebd");
}

// RFC 7693, appendix E: the self-test over all combinations of lengths.
TEST_P(Blake2bTest, passesThePublishedSelfTest) {
    const auto sequence = [](std::size_t length, std::uint32_t seed) {
        Bytes bytes(length);
        std::uint32_t a = 0xDEAD4BAD * seed;
        std::uint32_t b = 1;
        for (auto& byte : bytes) {
            const auto t = a + b;
            a = b;
            b = t;
            byte = static_cast<std::uint8_t>(t >> 24);
        }
        return bytes;
    };
    Blake2b::State all(32, {}, GetParam());
    for (const std::uint32_t outputLength : {20, 32, 48, 64})
        for (const std::uint32_t inputLength : {0, 3, 128, 129, 255, 1024}) {
            const auto input = sequence(inputLength, inputLength);
            const auto key = sequence(outputLength, outputLength);
            all.update(fromHex(digest(input, outputLength)));
            all.update(fromHex(digest(input, outputLength, key)));
        }
    EXPECT_EQ(toHex(all.finalize()), "c23a7800d98123bd10f506c61e29da5603d763b8bbad2e737f5e765a7bccd475");
}

TEST_P(Blake2bTest, compressesOneZeroBlockWithACountOfZeroForAnEmptyMessage) {
    auto chain = newChain(64);
    const Bytes zero(128, 0);
    compress(chain, {zero.data(), 1, 0, isLast});

    EXPECT_EQ(chain.tLow, 0U);
    EXPECT_EQ(digest({}), hexOf(chain));
}

TEST_P(Blake2bTest, compressesAMessageOfOneWholeBlockOnceAsTheLast) {
    auto chain = newChain(64);
    const auto message = counting(128);
    compress(chain, {message.data(), 1, 128, isLast});

    EXPECT_EQ(chain.tLow, 128U);
    EXPECT_EQ(digest(message), hexOf(chain));
}

TEST_P(Blake2bTest, compressesAMessageOfTwoWholeBlocksTwiceTheSecondAsTheLast) {
    auto chain = newChain(64);
    const auto message = counting(256);
    compress(chain, {message.data(), 1, 128, 0});
    compress(chain, {message.data() + 128, 1, 128, isLast});

    EXPECT_EQ(chain.tLow, 256U);
    EXPECT_EQ(digest(message), hexOf(chain));
}

TEST_P(Blake2bTest, carriesTheCountIntoItsHighHalf) {
    const auto blocks = counting(256);
    auto together = newChain(64);
    together.tLow = ~std::uint64_t{0} - 128;
    auto apart = together;
    compress(together, {blocks.data(), 2, 128, 0});
    compress(apart, {blocks.data(), 1, 128, 0});
    EXPECT_EQ(apart.tHigh, 0U);
    compress(apart, {blocks.data() + 128, 1, 128, 0});

    EXPECT_EQ(together.tLow, 127U);
    EXPECT_EQ(together.tHigh, 1U);
    EXPECT_EQ(hexOf(together), hexOf(apart));
    auto wrong = newChain(64);
    wrong.tLow = 127;
    compress(wrong, {blocks.data() + 128, 1, 0, 0});
    EXPECT_NE(hexOf(wrong), hexOf(apart));
}

TEST_P(Blake2bTest, givesTheSameInEveryImplementationWithACountOfMoreThan64Bits) {
    const auto blocks = Material(7).bytes(5 * 128);
    auto chain = newChain(64);
    chain.tLow = ~std::uint64_t{0} - 300;
    chain.tHigh = 5;
    auto portable = chain;
    compress(chain, {blocks.data(), 5, 128, 0});
    Blake2b::compressPortable(portable, {blocks.data(), 5, 128, 0});

    EXPECT_EQ(hexOf(chain), hexOf(portable));
    EXPECT_EQ(chain.tLow, portable.tLow);
    EXPECT_EQ(chain.tHigh, 6U);
}

TEST_P(Blake2bTest, takesAnEmptyKeyForNoKey) {
    EXPECT_EQ(digest(bytesOf("abc"), 64, Bytes{}), digest(bytesOf("abc")));
}

TEST_P(Blake2bTest, compressesTheKeyBlockAsTheLastForAnEmptyMessage) {
    Bytes keyBlock(128, 0);
    keyBlock[0] = 0x5A;
    auto chain = newChain(64, 1);
    compress(chain, {keyBlock.data(), 1, 128, isLast});

    EXPECT_EQ(chain.tLow, 128U);
    EXPECT_EQ(digest({}, 64, Bytes{0x5A}), hexOf(chain));
}

TEST_P(Blake2bTest, changesNothingForAnEmptyUpdate) {
    Blake2b::State state(64, {}, GetParam());
    state.update({});
    state.update(counting(128));
    state.update({});

    EXPECT_EQ(toHex(state.finalize()), digest(counting(128)));
}

TEST_P(Blake2bTest, givesOneDigestHoweverAMessageIsSplit) {
    const auto message = counting(520);
    const auto whole = digest(message);
    for (std::size_t first = 0; first <= message.size(); ++first)
        for (const std::size_t second : {0U, 1U, 127U, 128U, 129U, 256U}) {
            Blake2b::State state(64, {}, GetParam());
            state.update(ByteView(message).first(first));
            const auto rest = ByteView(message).subspan(first);
            const auto middle = std::min(second, rest.size());
            state.update(rest.first(middle));
            state.update(rest.subspan(middle));
            ASSERT_EQ(toHex(state.finalize()), whole) << first << " and " << second;
        }
}

TEST_P(Blake2bTest, isCopiedWithWhatItHasTaken) {
    Blake2b::State state(64, {}, GetParam());
    state.update(counting(200));
    auto copy = state;
    copy.update(bytesOf("more"));

    EXPECT_EQ(toHex(state.finalize()), digest(counting(200)));
}

INSTANTIATE_TEST_SUITE_P(Implementations, Blake2bTest, testing::ValuesIn(supportedVectors()),
                         [](const auto& instance) { return nameOf(instance.param); });

TEST(Blake2bHashTest, givesAsManyBytesAsAreAsked) {
    for (std::int64_t length = 1; length <= 64; ++length)
        EXPECT_EQ(Blake2b::hash(bytesOf("abc"), length).size(), static_cast<std::size_t>(length));
}

TEST(Blake2bHashTest, isTheStatesDigestWithTheKey) {
    Blake2b::State state(40, bytesOf("anahtar"));
    state.update(bytesOf("ileti"));

    EXPECT_EQ(Blake2b::hash(bytesOf("ileti"), 40, bytesOf("anahtar")), state.finalize());
}

Bytes withPrefix(std::uint32_t length, ByteView input) {
    Bytes bytes;
    appendLE(bytes, length);
    append(bytes, input);
    return bytes;
}

Bytes joined(std::initializer_list<ByteView> pieces) {
    Bytes bytes;
    for (const auto piece : pieces)
        append(bytes, piece);
    return bytes;
}

TEST(Blake2bLongHashTest, isOneDigestUpTo64Bytes) {
    const auto input = counting(100);
    for (const std::uint32_t length : {1, 4, 32, 63, 64})
        EXPECT_EQ(Blake2b::longHash(input, length), Blake2b::hash(withPrefix(length, input), length));
}

TEST(Blake2bLongHashTest, is32BytesOfOneDigestAnd33OfASecondAt65) {
    const auto input = counting(100);
    const auto v1 = Blake2b::hash(withPrefix(65, input), 64);

    EXPECT_EQ(Blake2b::longHash(input, 65), joined({ByteView(v1).first(32), Blake2b::hash(v1, 33)}));
}

TEST(Blake2bLongHashTest, chainsHalvesOfDigestsBeyond) {
    const auto input = counting(7);
    auto v1 = Blake2b::hash(withPrefix(96, input), 64);
    EXPECT_EQ(Blake2b::longHash(input, 96), joined({ByteView(v1).first(32), Blake2b::hash(v1, 64)}));

    v1 = Blake2b::hash(withPrefix(97, input), 64);
    const auto v2 = Blake2b::hash(v1, 64);
    EXPECT_EQ(Blake2b::longHash(input, 97),
              joined({ByteView(v1).first(32), ByteView(v2).first(32), Blake2b::hash(v2, 33)}));
}

TEST(Blake2bLongHashTest, givesAsManyBytesAsAreAsked) {
    for (std::int64_t length = 1; length <= 1100; ++length)
        ASSERT_EQ(Blake2b::longHash(bytesOf("x"), length).size(), static_cast<std::size_t>(length));
}

TEST(Blake2bLongHashTest, hasNothingInCommonForTwoLengthsOfOneInput) {
    const auto shorter = Blake2b::longHash(bytesOf("x"), 100);
    const auto longer = Blake2b::longHash(bytesOf("x"), 101);
    EXPECT_NE(toHex(ByteView(shorter).first(4)), toHex(ByteView(longer).first(4)));
}

TEST(Blake2bDeathTest, stopsAtADigestLengthOutside1To64) {
    for (const std::int64_t length : {-1, 0, 65}) {
        EXPECT_DEATH(static_cast<void>(Blake2b::hash({}, length)), "precondition");
        EXPECT_DEATH(Blake2b::State{length}, "precondition");
    }
}

TEST(Blake2bDeathTest, stopsAtAKeyOfMoreThan64Bytes) {
    EXPECT_DEATH(static_cast<void>(Blake2b::hash({}, 64, counting(65))), "precondition");
    EXPECT_DEATH(Blake2b::State(64, counting(65)), "precondition");
}

TEST(Blake2bDeathTest, stopsAtALongHashOfNoOrTooManyBytes) {
    for (const std::int64_t length : {std::int64_t{-1}, std::int64_t{0}, std::int64_t{1} << 32})
        EXPECT_DEATH(static_cast<void>(Blake2b::longHash({}, length)), "precondition");
}

}  // namespace
