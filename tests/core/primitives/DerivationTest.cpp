// SPDX-License-Identifier: MIT
#include "core/primitives/Derivation.h"

#include "core/primitives/AESRounds.h"
#include "core/primitives/Argon2.h"
#include "core/primitives/Argon2Segment.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

constexpr std::uint64_t endless = std::uint64_t{1} << 56;

Bytes hash(const Argon2::Cost& cost, Argon2::Variant variant, Derivation* derivation) {
    return Argon2::hash({.password = bytesOf("parola"), .salt = bytesOf("tuz ve biber")}, cost, 32, variant,
                        Argon2::currentVersion, derivation);
}

/// Waits until some of the work has been done, and gives the rest up.
void giveUpOnceItRuns(Derivation& derivation) {
    while (derivation.fraction() == 0)
        std::this_thread::yield();
    derivation.giveUp();
}

TEST(DerivationTest, hasDoneNothingAtFirst) {
    EXPECT_EQ(Derivation().fraction(), 0);
}

TEST(DerivationTest, neverHasDoneMoreThanAll) {
    Derivation derivation;
    derivation.begin(10);
    derivation.advance(4);
    EXPECT_EQ(derivation.fraction(), 0.4);
    derivation.advance(40);
    EXPECT_EQ(derivation.fraction(), 1);
}

TEST(DerivationTest, speaksTurkish) {
    EXPECT_STREQ(DerivationGivenUp().what(), "Anahtar türetme durduruldu.");
}

TEST(DerivationTest, aWatchedHashIsTheSameAndAllOfItIsCounted) {
    for (const auto variant : {Argon2::Variant::d, Argon2::Variant::i, Argon2::Variant::id})
        for (const std::uint32_t lanes : {1, 2, 5, 70}) {
            const Argon2::Cost cost{.memoryKiB = 9 * 4096 + 123 * lanes, .iterations = 2, .parallelism = lanes};
            Derivation derivation;
            EXPECT_EQ(hash(cost, variant, &derivation), hash(cost, variant, nullptr)) << lanes;
            EXPECT_EQ(derivation.fraction(), 1) << lanes;
        }
}

// A part begins at a block of addresses, whose counter goes on from the part before.
TEST(DerivationTest, aSegmentThatIsFilledInPartsIsTheSameOnEachImplementation) {
    const Argon2::Cost cost{.memoryKiB = 5 * 4 * 4096 + 4 * 77, .iterations = 1, .parallelism = 1};
    for (const auto implementation : {Implementation::portable, Implementation::avx2, Implementation::avx512}) {
        if (!isSupported(implementation))
            continue;
        for (const auto variant : {Argon2::Variant::d, Argon2::Variant::i, Argon2::Variant::id}) {
            const Argon2::Input input{.password = bytesOf("parola"), .salt = bytesOf("tuz ve biber")};
            Derivation derivation;
            EXPECT_EQ(Argon2::hashOn(implementation, input, cost, 32, variant, 0x13, &derivation),
                      Argon2::hashOn(implementation, input, cost, 32, variant, 0x13));
        }
    }
}

TEST(DerivationTest, aHashOfEndlessPassesIsGivenUp) {
    for (const std::uint32_t lanes : {1, 2, 5}) {
        Derivation derivation;
        const std::jthread user([&] { giveUpOnceItRuns(derivation); });
        EXPECT_THROW((void)hash({.memoryKiB = 1 << 16, .iterations = 0xFFFFFFFF, .parallelism = lanes},
                                Argon2::Variant::id, &derivation),
                     DerivationGivenUp);
        EXPECT_LT(derivation.fraction(), 0.01);
    }
}

TEST(DerivationTest, aHashThatWasGivenUpBeforeItBeganFillsNothing) {
    Derivation derivation;
    derivation.giveUp();
    EXPECT_THROW((void)hash({.memoryKiB = 1 << 16, .iterations = 3, .parallelism = 4}, Argon2::Variant::d, &derivation),
                 DerivationGivenUp);
    EXPECT_EQ(derivation.fraction(), 0);
}

TEST(DerivationTest, watchedRoundsAreTheSameAndAllOfThemAreCounted) {
    const Bytes block(32, 7);
    const Bytes key(32, 9);
    for (const auto implementation : {Implementation::portable, Implementation::aesInstructions}) {
        if (!isSupported(implementation))
            continue;
        for (const std::uint64_t rounds : {1, 65'535, 65'536, 65'537, 200'000}) {
            Derivation derivation;
            EXPECT_EQ(AESRounds::run(implementation, block, {.key = key}, rounds, &derivation),
                      AESRounds::run(implementation, block, {.key = key}, rounds));
            EXPECT_EQ(derivation.fraction(), 1);
        }
        EXPECT_EQ(AESRounds::run(implementation, AESRounds::run(implementation, block, {.key = key}, 60'000),
                                 {.key = key}, 140'000),
                  AESRounds::run(implementation, block, {.key = key}, 200'000));
    }
}

TEST(DerivationTest, endlessRoundsAreGivenUp) {
    const Bytes block(32, 7);
    for (const auto implementation : {Implementation::portable, Implementation::aesInstructions}) {
        if (!isSupported(implementation))
            continue;
        Derivation derivation;
        const std::jthread user([&] { giveUpOnceItRuns(derivation); });
        EXPECT_THROW((void)AESRounds::run(implementation, block, {.key = block}, endless, &derivation),
                     DerivationGivenUp);
    }
}

}  // namespace
