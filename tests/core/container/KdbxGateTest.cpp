// SPDX-License-Identifier: MIT
// The gate that the program is built with lets nothing pass that the fuzzers' gate does.
#include "core/container/KdbxGate.h"

#include "core/container/KdbxFile.h"
#include "tests/core/container/VaultBuilder.h"
#include "tests/support/Failures.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(KdbxGateTest, aWrongHMACIsRefusedAndWrongBytesAreNotAuthentic) {
    auto builder = VaultBuilder::kdbx4();
    auto file = builder.build();
    file[builder.header().size() + 32] ^= 1;

    EXPECT_EQ(outcomeOf([&] { return KdbxFile::load(file, builder.key); }), invalidCredentials);
    EXPECT_FALSE(KdbxGate::isAuthentic(Bytes(32, 1), Bytes(32, 2)));
    EXPECT_FALSE(KdbxGate::isAuthentic(Bytes(32, 1), Bytes(31, 1)));
    EXPECT_TRUE(KdbxGate::isAuthentic(Bytes(32, 1), Bytes(32, 1)));
}

TEST(KdbxGateTest, aKeyCostsWhatTheFileAsksFor) {
    constexpr auto most = std::numeric_limits<std::uint32_t>::max();
    const auto cost = KdbxGate::argon2Cost({.memoryKiB = most, .iterations = most - 1, .parallelism = most - 2});

    EXPECT_EQ(cost.memoryKiB, most);
    EXPECT_EQ(cost.iterations, most - 1);
    EXPECT_EQ(cost.parallelism, most - 2);
    EXPECT_EQ(KdbxGate::aesRounds(std::numeric_limits<std::uint64_t>::max()),
              std::numeric_limits<std::uint64_t>::max());
}

}  // namespace
