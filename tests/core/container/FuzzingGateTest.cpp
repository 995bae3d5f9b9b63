// SPDX-License-Identifier: MIT
// The fuzzers' gate leads behind every hash, or else fuzzing would look at nothing.
#include "core/container/KdbxFile.h"
#include "core/container/KdbxGate.h"
#include "tests/core/container/VaultBuilder.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(FuzzingGateTest, aVaultOpensWithEveryHashWrong) {
    auto builder = VaultBuilder::kdbx4();
    auto file = builder.build();
    const auto end = builder.header().size();
    for (std::size_t i = end; i < end + 64 + 32; ++i)
        file[i] ^= 1;

    EXPECT_EQ(KdbxFile::load(file, builder.key).root.entries[0].title, "Posta");
}

TEST(FuzzingGateTest, noKeyCostsAnything) {
    auto argon2 = VaultBuilder::kdbx4();
    argon2.setKdf({KdfSettings::Argon2{KdfSettings::Variant::argon2id, std::uint64_t{1} << 31,
                                       std::numeric_limits<std::uint32_t>::max(), 1000}});
    EXPECT_EQ(KdbxFile::load(argon2.build(), argon2.key).root.name, "Kasa");

    auto aes = VaultBuilder::kdbx4();
    aes.setKdf({KdfSettings::AesKdf{std::numeric_limits<std::uint64_t>::max()}});
    EXPECT_EQ(KdbxFile::load(aes.build(), aes.key).root.name, "Kasa");
}

}  // namespace
