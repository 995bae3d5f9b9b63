// SPDX-License-Identifier: MIT
#include "core/primitives/Argon2.h"
#include "core/primitives/Argon2Segment.h"
#include "tests/core/primitives/Material.h"
#include "tests/support/Hex.h"

#include <argon2.h>
#include <gtest/gtest.h>

namespace {

struct Case {
    Bytes password;
    Bytes salt;
    Bytes secret;
    Bytes associatedData;
    Argon2::Cost cost;
    std::uint32_t outputLength;
    Argon2::Variant variant;
    std::uint32_t version;
};

/// Sizes that no power of two divides evenly; a memory of up to `mostBlocksPerLane` blocks a lane.
Case randomCase(Material& material, std::uint32_t mostBlocksPerLane) {
    const auto lanes = material.number(1, 8);
    return {.password = material.bytes(material.number(0, 70)),
            .salt = material.bytes(material.number(8, 70)),
            .secret = material.bytes(material.number(0, 1) * material.number(0, 40)),
            .associatedData = material.bytes(material.number(0, 1) * material.number(0, 40)),
            .cost = {.memoryKiB = material.number(8 * lanes, mostBlocksPerLane * lanes),
                     .iterations = material.number(1, 4),
                     .parallelism = lanes},
            .outputLength = material.number(4, 150),
            .variant = static_cast<Argon2::Variant>(material.number(0, 2)),
            .version = material.number(0, 1) == 0 ? 0x10U : 0x13U};
}

std::string describe(const Case& c) {
    return "variant " + std::to_string(static_cast<int>(c.variant)) + ", version " + std::to_string(c.version) +
           ", m " + std::to_string(c.cost.memoryKiB) + ", t " + std::to_string(c.cost.iterations) + ", p " +
           std::to_string(c.cost.parallelism);
}

std::string ours(Implementation implementation, const Case& c) {
    return toHex(
        Argon2::hashOn(implementation,
                       {.password = c.password, .salt = c.salt, .secret = c.secret, .associatedData = c.associatedData},
                       c.cost, c.outputLength, c.variant, c.version));
}

std::string peers(Case c) {
    Bytes output(c.outputLength);
    argon2_context context{};
    context.out = output.data();
    context.outlen = c.outputLength;
    context.pwd = c.password.data();
    context.pwdlen = static_cast<std::uint32_t>(c.password.size());
    context.salt = c.salt.data();
    context.saltlen = static_cast<std::uint32_t>(c.salt.size());
    context.secret = c.secret.data();
    context.secretlen = static_cast<std::uint32_t>(c.secret.size());
    context.ad = c.associatedData.data();
    context.adlen = static_cast<std::uint32_t>(c.associatedData.size());
    context.t_cost = c.cost.iterations;
    context.m_cost = c.cost.memoryKiB;
    context.lanes = c.cost.parallelism;
    context.threads = 1;
    context.version = c.version;
    context.flags = ARGON2_DEFAULT_FLAGS;
    const auto result = argon2_ctx(&context, static_cast<argon2_type>(c.variant));
    EXPECT_EQ(result, ARGON2_OK) << argon2_error_message(result);
    return toHex(output);
}

class Argon2PeerTest : public testing::TestWithParam<Implementation> {};

TEST_P(Argon2PeerTest, givesThePeersHashForRandomParameters) {
    Material material(20);
    for (int i = 0; i < 300; ++i) {
        const auto c = randomCase(material, 40);
        ASSERT_EQ(ours(GetParam(), c), peers(c)) << describe(c);
    }
}

// Segments of more than 128 blocks need further address blocks.
TEST_P(Argon2PeerTest, givesThePeersHashForLongSegments) {
    Material material(21);
    for (int i = 0; i < 24; ++i) {
        auto c = randomCase(material, 1500);
        c.cost.iterations = 2;
        ASSERT_EQ(ours(GetParam(), c), peers(c)) << describe(c);
    }
}

TEST_P(Argon2PeerTest, givesThePeersHashForEveryVariantAndVersionAndUpTo8Lanes) {
    Material material(22);
    auto c = randomCase(material, 16);
    for (const auto variant : {Argon2::Variant::d, Argon2::Variant::i, Argon2::Variant::id})
        for (const std::uint32_t version : {0x10, 0x13})
            for (std::uint32_t lanes = 1; lanes <= 8; ++lanes) {
                c.variant = variant;
                c.version = version;
                c.cost = {.memoryKiB = 67 * lanes + 3, .iterations = 3, .parallelism = lanes};
                ASSERT_EQ(ours(GetParam(), c), peers(c)) << describe(c);
            }
}

INSTANTIATE_TEST_SUITE_P(Implementations, Argon2PeerTest, testing::ValuesIn(supportedVectors()),
                         [](const auto& instance) { return nameOf(instance.param); });

}  // namespace
