// SPDX-License-Identifier: MIT
#include "core/primitives/ChaCha20Stream.h"
#include "core/primitives/Salsa20Stream.h"
#include "tests/core/primitives/Material.h"
#include "tests/core/primitives/Vectors.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <new>

namespace {

std::uint32_t counterOf(const Vector& vector) {
    return static_cast<std::uint32_t>(std::stoul(vector.text("counter"), nullptr, 16));
}

TEST(ChaCha20StreamTest, givesThePublishedKeystream) {
    for (const auto& vector : vectorsIn("chacha20.txt")) {
        ChaCha20Stream stream({.key = vector.bytes("key"), .nonce = vector.bytes("nonce")}, counterOf(vector));

        EXPECT_EQ(toHex(stream.process(Bytes(64, 0))), vector.text("keystream")) << vector.name();
    }
}

// RFC 8439, section 2.4.2.
TEST(ChaCha20StreamTest, enciphersThePublishedText) {
    const auto key = fromHex("000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f");
    ChaCha20Stream stream({.key = key, .nonce = fromHex("000000000000004a00000000")}, 1);

    const auto enciphered = stream.process(
        bytesOf("Ladies and Gentlemen of the class of '99: If I could offer you only one tip for the future, "
                "sunscreen would be it."));

    EXPECT_EQ(toHex(enciphered),
              "6e2e359a2568f98041ba0728dd0d6981e97e7aec1d4360c20a27afccfd9fae0b"
              "f91b65c5524733ab8f593dabcd62b3571639d624e65152ab8f530c359f0861d8"
              "07ca0dbf500d6a6156a38e088a22b65e52bc514d16ccf806818ce91ab7793736"
              "5af90bbf74a35be6b40b8eedf2785e42874d");
}

TEST(Salsa20StreamTest, givesThePublishedKeystream) {
    for (const auto& vector : vectorsIn("salsa20.txt")) {
        Salsa20Stream stream({.key = vector.bytes("key"), .nonce = vector.bytes("nonce")});
        const auto keystream = stream.process(Bytes(512, 0));
        const auto at = [&](std::size_t offset) { return toHex(ByteView(keystream).subspan(offset, 64)); };

        EXPECT_EQ(at(0), vector.text("keystream")) << vector.name();
        for (const std::size_t offset : {192, 256, 448}) {
            const auto field = "keystream" + std::to_string(offset);
            if (vector.has(field)) {
                EXPECT_EQ(at(offset), vector.text(field)) << vector.name();
            }
        }
    }
}

TEST(Salsa20StreamTest, knowsTheNonceThatVaultsUse) {
    EXPECT_EQ(toHex(Salsa20Stream::kdbxNonce), "e830094b97205d2a");
}

TEST(ChaCha20StreamTest, theShortCounterWrapsAndLeavesTheNonce) {
    const auto key = Material(1).bytes(32);
    const auto nonce = Material(2).bytes(12);
    ChaCha20Stream atTheEnd({.key = key, .nonce = nonce}, 0xFFFFFFFF);
    ChaCha20Stream last({.key = key, .nonce = nonce}, 0xFFFFFFFF);
    ChaCha20Stream first({.key = key, .nonce = nonce}, 0);

    const auto keystream = atTheEnd.process(Bytes(64 + 2000, 0));

    EXPECT_EQ(toHex(ByteView(keystream).first(64)), toHex(last.process(Bytes(64, 0))));
    EXPECT_EQ(toHex(ByteView(keystream).subspan(64)), toHex(first.process(Bytes(2000, 0))));
}

// The wide counter 2^32 with the nonce n is the short counter 0 with the nonce of 12 bytes 01000000 and n.
TEST(ChaCha20StreamTest, theWideCounterCarriesIntoItsHighWord) {
    const auto key = Material(1).bytes(32);
    const auto nonce = Material(2).bytes(8);
    auto longNonce = fromHex("01000000");
    append(longNonce, nonce);
    ChaCha20Stream atTheEnd({.key = key, .nonce = nonce}, 0xFFFFFFFF);
    ChaCha20Stream behind({.key = key, .nonce = longNonce}, 0);

    const auto keystream = atTheEnd.process(Bytes(64 + 2000, 0));

    EXPECT_EQ(toHex(ByteView(keystream).subspan(64)), toHex(behind.process(Bytes(2000, 0))));
}

struct StreamKind {
    std::string name;
    std::function<std::unique_ptr<InnerStreamCipher>()> make;
};

std::vector<StreamKind> streamKinds() {
    Material material(3);
    const auto key = material.bytes(32);
    const auto shortKey = material.bytes(16);
    const auto nonce = material.bytes(12);
    const auto shortNonce = material.bytes(8);
    return {
        {"chaCha20", [=] { return std::make_unique<ChaCha20Stream>(StreamKey{.key = key, .nonce = nonce}, 7); }},
        {"chaCha20Wide",
         [=] { return std::make_unique<ChaCha20Stream>(StreamKey{.key = key, .nonce = shortNonce}, 7); }},
        {"salsa20", [=] { return std::make_unique<Salsa20Stream>(StreamKey{.key = key, .nonce = shortNonce}); }},
        {"salsa20ShortKey",
         [=] { return std::make_unique<Salsa20Stream>(StreamKey{.key = shortKey, .nonce = shortNonce}); }},
        {"null", [] { return std::make_unique<NullStreamCipher>(); }},
    };
}

class InnerStreamCipherTest : public testing::TestWithParam<StreamKind> {
protected:
    [[nodiscard]] std::unique_ptr<InnerStreamCipher> stream() const { return GetParam().make(); }
    [[nodiscard]] Bytes keystream(std::size_t size) const { return stream()->process(Bytes(size, 0)); }
};

INSTANTIATE_TEST_SUITE_P(streams, InnerStreamCipherTest, testing::ValuesIn(streamKinds()),
                         [](const auto& instance) { return instance.param.name; });

TEST_P(InnerStreamCipherTest, whatIsProcessedTwiceIsAsItWas) {
    const auto text = Material(4).bytes(5000);

    EXPECT_EQ(stream()->process(stream()->process(text)), text);
}

TEST_P(InnerStreamCipherTest, processingInPlaceIsTheSame) {
    const auto text = Material(5).bytes(777);
    auto inPlace = text;

    stream()->processInPlace(inPlace);

    EXPECT_EQ(inPlace, stream()->process(text));
}

TEST_P(InnerStreamCipherTest, anEmptyInputMovesNothing) {
    const auto expected = keystream(200);
    const auto tested = stream();

    Bytes got;
    for (const std::size_t size : {0, 10, 0, 54, 0, 64, 0, 72, 0}) {
        const auto piece = tested->process(Bytes(size, 0));
        EXPECT_EQ(piece.size(), size);
        append(got, piece);
    }

    EXPECT_EQ(toHex(got), toHex(expected));
}

TEST_P(InnerStreamCipherTest, sixtyThreeBytesAndTwoAreSixtyFive) {
    const auto tested = stream();

    auto got = tested->process(Bytes(63, 0));
    append(got, tested->process(Bytes(2, 0)));

    EXPECT_EQ(toHex(got), toHex(keystream(65)));
}

TEST_P(InnerStreamCipherTest, howTheDataIsCutDoesNotShow) {
    Material material(6);
    const auto text = material.bytes(40000);
    const auto expected = stream()->process(text);
    for (const std::uint32_t longest : {3, 64, 65, 200, 1024, 5000}) {
        const auto tested = stream();
        Bytes got;
        for (auto rest = ByteView(text); !rest.empty();) {
            const auto size = std::min<std::size_t>(material.number(0, longest), rest.size());
            append(got, tested->process(rest.first(size)));
            rest = rest.subspan(size);
        }
        EXPECT_TRUE(got == expected) << longest;
    }
}

TEST(NullStreamCipherTest, changesNothing) {
    const auto text = Material(7).bytes(100);

    EXPECT_EQ(NullStreamCipher().process(text), text);
}

TEST(ChaCha20StreamDeathTest, stopsTheProcessAtAnotherKeyOrNonce) {
    const auto key = Bytes(32, 0);
    EXPECT_DEATH(ChaCha20Stream({.key = Bytes(16, 0), .nonce = Bytes(12, 0)}, 0), "precondition failed");
    EXPECT_DEATH(ChaCha20Stream({.key = Bytes(33, 0), .nonce = Bytes(12, 0)}, 0), "precondition failed");
    for (const std::size_t size : {0, 7, 9, 11, 13, 24})
        EXPECT_DEATH(ChaCha20Stream({.key = key, .nonce = Bytes(size, 0)}, 0), "precondition failed") << size;
}

TEST(Salsa20StreamDeathTest, stopsTheProcessAtAnotherKeyOrNonce) {
    const auto nonce = Bytes(8, 0);
    for (const std::size_t size : {0, 15, 17, 31, 33})
        EXPECT_DEATH(Salsa20Stream({.key = Bytes(size, 0), .nonce = nonce}), "precondition failed") << size;
    for (const std::size_t size : {0, 7, 9, 12, 24})
        EXPECT_DEATH(Salsa20Stream({.key = Bytes(32, 0), .nonce = Bytes(size, 0)}), "precondition failed") << size;
}

/// Makes a stream in memory that stays, uses half a block of it, destroys it, and tells what it left there.
template <class Stream, class... Arguments>
Bytes remainsOf(const Arguments&... arguments) {
    alignas(Stream) static std::uint8_t memory[sizeof(Stream)];
    auto* const stream = new (memory) Stream(arguments...);
    Bytes text(32, 0);
    stream->processInPlace(text);
    std::destroy_at(stream);
    return copyOf(memory);
}

bool contains(const Bytes& memory, ByteView bytes) {
    return !std::ranges::search(memory, bytes).empty();
}

TEST(ChaCha20StreamTest, leavesNeitherKeyNorKeystreamBehind) {
    const auto key = Material(8).bytes(32);
    const auto nonce = Material(9).bytes(12);
    const auto keystream = ChaCha20Stream({.key = key, .nonce = nonce}, 0).process(Bytes(64, 0));

    const auto remains = remainsOf<ChaCha20Stream>(StreamKey{.key = key, .nonce = nonce}, 0U);

    for (std::size_t i = 0; i < 32; i += 4)
        EXPECT_FALSE(contains(remains, ByteView(key).subspan(i, 4)));
    for (std::size_t i = 0; i < 64; i += 4)
        EXPECT_FALSE(contains(remains, ByteView(keystream).subspan(i, 4)));
}

TEST(Salsa20StreamTest, leavesNeitherKeyNorKeystreamBehind) {
    const auto key = Material(8).bytes(32);
    const auto nonce = Material(9).bytes(8);
    const auto keystream = Salsa20Stream({.key = key, .nonce = nonce}).process(Bytes(64, 0));

    const auto remains = remainsOf<Salsa20Stream>(StreamKey{.key = key, .nonce = nonce});

    for (std::size_t i = 0; i < 32; i += 4)
        EXPECT_FALSE(contains(remains, ByteView(key).subspan(i, 4)));
    for (std::size_t i = 0; i < 64; i += 4)
        EXPECT_FALSE(contains(remains, ByteView(keystream).subspan(i, 4)));
}

}  // namespace
