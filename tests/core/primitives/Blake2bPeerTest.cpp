// SPDX-License-Identifier: MIT
#include "core/primitives/Blake2b.h"
#include "tests/core/primitives/Material.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>
#include <sodium.h>

namespace {

Bytes peerDigest(ByteView message, std::size_t outputLength, ByteView key) {
    Bytes digest(outputLength);
    EXPECT_EQ(crypto_generichash_blake2b(digest.data(), digest.size(), message.data(), message.size(), key.data(),
                                         key.size()),
              0);
    return digest;
}

Bytes digestOn(Implementation implementation, ByteView message, std::size_t outputLength, ByteView key,
               Material& material) {
    Blake2b::State state(static_cast<std::int64_t>(outputLength), key, implementation);
    while (!message.empty()) {
        const auto length = material.number(0, static_cast<std::uint32_t>(std::min<std::size_t>(message.size(), 700)));
        state.update(message.first(length));
        message = message.subspan(length);
    }
    return state.finalize();
}

class Blake2bPeerTest : public testing::TestWithParam<Implementation> {};

TEST_P(Blake2bPeerTest, givesThePeersDigestOfEveryLengthAroundTheFirstBlocks) {
    Material material(1);
    for (std::size_t length = 0; length <= 520; ++length) {
        const auto message = material.bytes(length);
        EXPECT_EQ(toHex(digestOn(GetParam(), message, 64, {}, material)), toHex(peerDigest(message, 64, {}))) << length;
    }
}

TEST_P(Blake2bPeerTest, givesThePeersDigestForRandomKeysAndDigestLengthsAndSplits) {
    Material material(2);
    for (int i = 0; i < 400; ++i) {
        const auto message = material.bytes(material.number(0, 3000));
        const auto key = material.bytes(material.number(0, 64));
        const auto outputLength = material.number(1, 64);
        EXPECT_EQ(toHex(digestOn(GetParam(), message, outputLength, key, material)),
                  toHex(peerDigest(message, outputLength, key)));
    }
}

INSTANTIATE_TEST_SUITE_P(Implementations, Blake2bPeerTest, testing::ValuesIn(supportedVectors()),
                         [](const auto& instance) { return nameOf(instance.param); });

}  // namespace
