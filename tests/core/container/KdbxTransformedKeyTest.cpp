// SPDX-License-Identifier: MIT
#include "core/container/KdbxFile.h"
#include "core/container/KdbxTransformedKey.h"
#include "core/model/KdbxError.h"
#include "tests/core/container/VaultBuilder.h"
#include "tests/support/Failures.h"
#include "tests/support/VaultJSON.h"

#include <gtest/gtest.h>

namespace {

const KdbxKey key{"parola", std::nullopt};

/// A vault as a session has it: opened, with the key that opening it derived.
struct Opened {
    std::optional<KdbxTransformedKey> transformed;
    KdbxDatabase database;

    explicit Opened(ByteView file)
        : database(KdbxFile::load(file, key, KdbxTransformedKey::remembering(KdbxKeys::transform, transformed))) {}
};

Bytes neverDerives(ByteView, const KdbxHeader&) {
    ADD_FAILURE() << "the key was known";
    return Bytes(32, 0);
}

class KdbxTransformedKeyTest : public ::testing::TestWithParam<int> {
protected:
    [[nodiscard]] static VaultBuilder builder() {
        return GetParam() == 4 ? VaultBuilder::kdbx4() : VaultBuilder::kdbx3();
    }
};

TEST_P(KdbxTransformedKeyTest, whatIsSavedUnderItOpensWithTheCredentials) {
    const Opened opened(builder().build());

    const auto file = KdbxFile::saveUnder(opened.database, *opened.transformed);

    const auto asSaved = KdbxFile::load(KdbxFile::save(opened.database, key), key);
    EXPECT_EQ(VaultJSON::of(KdbxFile::load(file, key)), VaultJSON::of(asSaved));
}

TEST_P(KdbxTransformedKeyTest, opensWhatWasSavedUnderItWithoutDeriving) {
    const Opened opened(builder().build());
    const auto file = KdbxFile::saveUnder(opened.database, *opened.transformed);

    const auto again = KdbxFile::load(file, key, opened.transformed->orElse(neverDerives));

    EXPECT_EQ(again.root.entries.size(), opened.database.root.entries.size());
}

TEST_P(KdbxTransformedKeyTest, aWrongPasswordDoesNotOpenIt) {
    const Opened opened(builder().build());
    const auto file = KdbxFile::saveUnder(opened.database, *opened.transformed);

    EXPECT_THROW((void)KdbxFile::load(file, KdbxKey("yanlış", std::nullopt)), KdbxError);
}

TEST_P(KdbxTransformedKeyTest, everyFileHasSeedsOfItsOwn) {
    const Opened opened(builder().build());

    const auto first = KdbxHeader::parse(KdbxFile::saveUnder(opened.database, *opened.transformed));
    const auto second = KdbxHeader::parse(KdbxFile::saveUnder(opened.database, *opened.transformed));

    EXPECT_EQ(first.kdfParameters, second.kdfParameters);
    EXPECT_NE(first.masterSeed, second.masterSeed);
    EXPECT_NE(first.encryptionIV, second.encryptionIV);
}

TEST_P(KdbxTransformedKeyTest, aFileWithOtherParametersIsDerivedAnew) {
    const Opened opened(builder().build());
    const auto elsewhere = KdbxFile::save(opened.database, key);  // with a salt of its own
    int derived = 0;

    const auto again =
        KdbxFile::load(elsewhere, key, opened.transformed->orElse([&](ByteView compositeKey, const KdbxHeader& header) {
            ++derived;
            return KdbxKeys::transform(compositeKey, header);
        }));

    EXPECT_EQ(derived, 1);
    EXPECT_EQ(again.root.entries.size(), opened.database.root.entries.size());
}

INSTANTIATE_TEST_SUITE_P(Formats, KdbxTransformedKeyTest, ::testing::Values(3, 4));

TEST(KdbxTransformedKeyParametersTest, aKdbx3HeaderWithoutSeedOrRoundsHasNone) {
    const auto parametersWithout = [](KdbxHeader::FieldID field) {
        auto builder = VaultBuilder::kdbx3();
        builder.remove(field);
        return KdbxHeader::parse(builder.header()).derivationParameters();
    };

    EXPECT_THROW((void)parametersWithout(KdbxHeader::FieldID::transformSeed), KdbxError);
    EXPECT_THROW((void)parametersWithout(KdbxHeader::FieldID::transformRounds), KdbxError);
}

TEST(KdbxTransformedKeyParametersTest, nothingIsRememberedOfADerivationThatFailed) {
    std::optional<KdbxTransformedKey> outcome;
    const auto transformation = KdbxTransformedKey::remembering(
        [](ByteView, const KdbxHeader&) -> Bytes { throw KdbxError::unsupportedKdf("dene"); }, outcome);

    EXPECT_THROW((void)KdbxFile::load(VaultBuilder::kdbx4().build(), key, transformation), KdbxError);

    EXPECT_FALSE(outcome);
}

}  // namespace
