// SPDX-License-Identifier: MIT
#include "core/container/KdbxKeys.h"

#include "core/primitives/Argon2.h"
#include "core/primitives/Sha2.h"
#include "tests/support/Failures.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

#include <numeric>

namespace {

using namespace std::string_literals;

Bytes counting(std::size_t size, std::uint8_t first = 0) {
    Bytes bytes(size);
    std::iota(bytes.begin(), bytes.end(), first);
    return bytes;
}

const Bytes composite = counting(32);
const Bytes salt(32, 0x33);

KdbxHeader kdbx4With(const UUID& id) {
    KdbxHeader header;
    header.masterSeed = Bytes(32, 1);
    header.kdfParameters.emplace();
    header.kdfParameters->set("$UUID", VariantValue{copyOf(id.kdbxBytes())});
    header.kdfParameters->set("S", VariantValue{salt});
    return header;
}

/// Argon2 at its cheapest: 8 KiB, one pass, one lane.
KdbxHeader cheapArgon2(const UUID& id) {
    auto header = kdbx4With(id);
    header.kdfParameters->set("M", VariantValue{std::uint64_t{8192}});
    header.kdfParameters->set("I", VariantValue{std::uint64_t{1}});
    header.kdfParameters->set("P", VariantValue{std::uint32_t{1}});
    return header;
}

KdbxHeader kdbx3With(std::optional<Bytes> seed, std::optional<std::uint64_t> rounds) {
    KdbxHeader header;
    header.major = 3;
    header.masterSeed = Bytes(32, 1);
    header.transformSeed = std::move(seed);
    header.transformRounds = rounds;
    return header;
}

std::string transforming(const KdbxHeader& header) {
    return outcomeOf([&] { return KdbxKeys::transform(composite, header); });
}

std::string transformingWith(const KdbxHeader& header, std::string_view key, VariantValue value) {
    auto changed = header;
    changed.kdfParameters->set(key, std::move(value));
    return transforming(changed);
}

TEST(CompositeKeyTest, anEmptyPasswordIsACredentialOfItsOwn) {
    EXPECT_EQ(toHex(KdbxKeys::compositeKey({"", std::nullopt})),
              "5df6e0e2761359d30a8275058e299fcc0381534545f55cf43e41983f5d4c9456");
}

TEST(CompositeKeyTest, joinsThePasswordsHashAndTheKeyFilesKey) {
    const Bytes keyFile(32, 7);
    EXPECT_EQ(toHex(KdbxKeys::compositeKey({"çok gizli ş", keyFile})),
              "67a56470fb5d03bd00b11fa0012009e9ede31190a5d92d5070035c6901c7ff9c");
    EXPECT_EQ(toHex(KdbxKeys::compositeKey({std::nullopt, keyFile})),
              "4bb06f8e4e3a7715d201d573d0aa423762e55dabd61a2c02278fa56cc6d294e0");
}

TEST(CompositeKeyTest, refusesNoCredentialAtAll) {
    EXPECT_EQ(outcomeOf([] { return KdbxKeys::compositeKey({}); }), invalidCredentials);
}

TEST(CompositeKeyTest, letsAKeyFilesFailureThrough) {
    const KdbxKey key{"p", copyOf(bytesOf("<KeyFile/>"))};
    EXPECT_EQ(outcomeOf([&] { return KdbxKeys::compositeKey(key); }),
              corruptedData("anahtar dosyasında <Key><Data> yok"));
}

TEST(CompositeKeyTest, anEmptyKeyFileIsOneToo) {
    EXPECT_EQ(KdbxKeys::compositeKey({std::nullopt, Bytes()}), Sha2::sha256(Sha2::sha256(ByteView())));
}

TEST(AesKdfTest, enciphersBothHalvesRoundByRound) {
    const auto seed = counting(32, 0x80);
    EXPECT_EQ(toHex(KdbxKeys::aesKdf(composite, {.seed = seed, .rounds = 0})),
              "630dcd2966c4336691125448bbb25b4ff412a49c732db2c8abc1b8581bd710dd");
    EXPECT_EQ(toHex(KdbxKeys::aesKdf(composite, {.seed = seed, .rounds = 1})),
              "028ce88c1e4ef9add78c82792847aa3c107083eb979e3d7c3ad7c62e79976f89");
    EXPECT_EQ(toHex(KdbxKeys::aesKdf(composite, {.seed = seed, .rounds = 3})),
              "c09f22c21dfb23a44d1eda224d03803309c94da3defd05d681b48b9174e1b544");
}

TEST(AesKdfTest, wantsAnInputAndThenASeedOf32Bytes) {
    EXPECT_EQ(outcomeOf([] { return KdbxKeys::aesKdf(Bytes(31), {.seed = Bytes(31), .rounds = 1}); }),
              cryptoFailure("AES-KDF girdisi 32 bayt olmalı"));
    EXPECT_EQ(outcomeOf([] { return KdbxKeys::aesKdf(Bytes(32), {.seed = Bytes(33), .rounds = 1}); }),
              cryptoFailure("AES-KDF tohumu 32 bayt olmalı"));
    EXPECT_EQ(outcomeOf([] { return KdbxKeys::aesKdf(Bytes(32), {.seed = Bytes(), .rounds = 0}); }),
              cryptoFailure("AES-KDF tohumu 32 bayt olmalı"));
}

TEST(TransformTest, runsTheAESDerivationOfAKdbx3Header) {
    EXPECT_EQ(KdbxKeys::transform(composite, kdbx3With(salt, 5)),
              KdbxKeys::aesKdf(composite, {.seed = salt, .rounds = 5}));
}

TEST(TransformTest, refusesAKdbx3HeaderWithoutItsParameters) {
    EXPECT_EQ(transforming(kdbx3With(std::nullopt, 5)), corruptedData("KDBX 3 dönüştürme parametreleri eksik"));
    EXPECT_EQ(transforming(kdbx3With(salt, std::nullopt)), corruptedData("KDBX 3 dönüştürme parametreleri eksik"));
    EXPECT_EQ(transforming(kdbx3With(Bytes(31), 5)), cryptoFailure("AES-KDF tohumu 32 bayt olmalı"));
}

TEST(TransformTest, wantsAUsableIdentifier) {
    const auto expected = unsupportedKdf("KdfParameters içinde $UUID yok");
    EXPECT_EQ(transforming(KdbxHeader()), expected);
    EXPECT_EQ(transformingWith(kdbx4With(UUID()), "$UUID", VariantValue{Bytes(17)}), expected);
    EXPECT_EQ(transformingWith(kdbx4With(UUID()), "$UUID", VariantValue{true}), expected);
    EXPECT_EQ(transforming(kdbx4With(KdbxUUIDs::twofish())), unsupportedKdf("AD68F29F-576F-4BB9-A36A-D47AF965346C"));
}

TEST(TransformTest, runsTheAESDerivationOfKdbx4WithItsFallbacks) {
    auto header = kdbx4With(KdbxUUIDs::kdfAes());
    EXPECT_EQ(KdbxKeys::transform(composite, header), KdbxKeys::aesKdf(composite, {.seed = salt, .rounds = 6000}));
    header.kdfParameters->set("R", VariantValue{std::int32_t{4}});
    EXPECT_EQ(KdbxKeys::transform(composite, header), KdbxKeys::aesKdf(composite, {.seed = salt, .rounds = 4}));
    header.kdfParameters->set("S", VariantValue{"salt"s});
    EXPECT_EQ(transforming(header), cryptoFailure("AES-KDF tohumu 32 bayt olmalı"));
}

TEST(TransformTest, handsEveryParameterToArgon2) {
    auto header = kdbx4With(KdbxUUIDs::kdfArgon2id());
    header.kdfParameters->set("M", VariantValue{std::uint64_t{20 * 1024 + 1023}});
    header.kdfParameters->set("I", VariantValue{std::int64_t{2}});
    header.kdfParameters->set("P", VariantValue{std::uint64_t{2}});
    header.kdfParameters->set("V", VariantValue{std::uint32_t{0x10}});
    header.kdfParameters->set("K", VariantValue{Bytes(5, 5)});
    header.kdfParameters->set("A", VariantValue{Bytes(6, 6)});
    const Bytes secret(5, 5);
    const Bytes associatedData(6, 6);

    EXPECT_EQ(KdbxKeys::transform(composite, header),
              Argon2::hash({.password = composite, .salt = salt, .secret = secret, .associatedData = associatedData},
                           {.memoryKiB = 20, .iterations = 2, .parallelism = 2}, 32, Argon2::Variant::id, 0x10));
}

TEST(TransformTest, distinguishesArgon2dFromArgon2id) {
    const Argon2::Cost cost{.memoryKiB = 8, .iterations = 1, .parallelism = 1};
    EXPECT_EQ(KdbxKeys::transform(composite, cheapArgon2(KdbxUUIDs::kdfArgon2d())),
              Argon2::hash({.password = composite, .salt = salt}, cost, 32, Argon2::Variant::d, 0x13));
    EXPECT_EQ(KdbxKeys::transform(composite, cheapArgon2(KdbxUUIDs::kdfArgon2id())),
              Argon2::hash({.password = composite, .salt = salt}, cost, 32, Argon2::Variant::id, 0x13));
}

TEST(TransformTest, fallsBackToTwoLanesTwoPassesAnd64MiB) {
    auto header = kdbx4With(KdbxUUIDs::kdfArgon2d());
    header.kdfParameters->set("P", VariantValue{"2"s});
    header.kdfParameters->set("I", VariantValue{true});
    header.kdfParameters->set("M", VariantValue{Bytes(8)});

    EXPECT_EQ(KdbxKeys::transform(composite, header),
              Argon2::hash({.password = composite, .salt = salt},
                           {.memoryKiB = 65536, .iterations = 2, .parallelism = 2}, 32, Argon2::Variant::d));
}

TEST(TransformTest, refusesArgon2ParametersBelowTheirLeast) {
    const auto header = cheapArgon2(KdbxUUIDs::kdfArgon2id());
    const auto expected = unsupportedKdf("geçersiz Argon2 parametreleri");
    EXPECT_EQ(transformingWith(header, "M", VariantValue{std::uint64_t{1023}}), expected);
    EXPECT_EQ(transformingWith(header, "M", VariantValue{std::uint64_t{0}}), expected);
    EXPECT_EQ(transformingWith(header, "I", VariantValue{std::uint64_t{0}}), expected);
    EXPECT_EQ(transformingWith(header, "P", VariantValue{std::uint32_t{0}}), expected);
}

TEST(TransformTest, refusesArgon2ParametersBeyondTheirRange) {
    const auto header = cheapArgon2(KdbxUUIDs::kdfArgon2id());
    const auto expected = unsupportedKdf("Argon2 parametreleri aralık dışı");
    EXPECT_EQ(transformingWith(header, "M", VariantValue{std::uint64_t{1} << 42}), expected);
    EXPECT_EQ(transformingWith(header, "M", VariantValue{~std::uint64_t{0}}), expected);
    EXPECT_EQ(transformingWith(header, "I", VariantValue{std::uint64_t{1} << 32}), expected);
}

TEST(TransformTest, whatIsTooSmallIsReportedBeforeWhatIsTooLarge) {
    auto header = cheapArgon2(KdbxUUIDs::kdfArgon2id());
    header.kdfParameters->set("M", VariantValue{~std::uint64_t{0}});
    EXPECT_EQ(transformingWith(header, "I", VariantValue{std::uint64_t{0}}),
              unsupportedKdf("geçersiz Argon2 parametreleri"));
}

TEST(TransformTest, leavesTheRestToArgon2sOwnLimits) {
    const auto header = cheapArgon2(KdbxUUIDs::kdfArgon2id());
    const auto startsWith = [](const std::string& outcome, const char* name) {
        EXPECT_TRUE(outcome.starts_with("Argon2.Error."s + name + ":")) << outcome;
    };
    startsWith(transformingWith(header, "M", VariantValue{std::uint64_t{1024}}), "invalidMemory");
    startsWith(transformingWith(header, "M", VariantValue{std::uint64_t{1500}}), "invalidMemory");
    startsWith(transformingWith(header, "S", VariantValue{Bytes(7)}), "invalidSaltLength");
    startsWith(transformingWith(header, "S", VariantValue{"12345678"s}), "invalidSaltLength");
    startsWith(transformingWith(header, "V", VariantValue{std::uint32_t{0x12}}), "unsupportedVersion");
    startsWith(transformingWith(header, "P", VariantValue{std::uint32_t{0xFFFFFFFF}}), "invalidParallelism");
    startsWith(transformingWith(header, "M", VariantValue{(std::uint64_t{1} << 42) - 1}), "allocationFailed");
}

TEST(DeriveTest, hashesSeedAndDerivedKeyIntoTheKeysOfKdbx4) {
    auto header = kdbx4With(KdbxUUIDs::kdfAes());
    header.kdfParameters->set("R", VariantValue{std::uint64_t{0}});

    const auto keys = KdbxKeys::derive(composite, header);

    EXPECT_EQ(toHex(keys.transformed), "630dcd2966c4336691125448bbb25b4ff412a49c732db2c8abc1b8581bd710dd");
    EXPECT_EQ(toHex(keys.master), "9d99f3f5da04ca3b0ed983eb2b0e99464566f78a8774fd45dc9f173c080c3080");
    EXPECT_EQ(toHex(keys.hmac.value()),
              "f65c16c4c4f476a06e62ee273beca5d04d82dee628e6fcec3f65719831276dab"
              "92cd28b8b969922689b158d6e160e242691b441106f15372cacaf4a20aabdcad");
}

TEST(DeriveTest, kdbx3HasNoHMACKey) {
    const auto keys = KdbxKeys::derive(composite, kdbx3With(salt, 0));
    EXPECT_EQ(toHex(keys.master), "9d99f3f5da04ca3b0ed983eb2b0e99464566f78a8774fd45dc9f173c080c3080");
    EXPECT_FALSE(keys.hmac);
}

TEST(HexDecodeTest, takesPairsOfDigitsInEitherCaseAndNothingElse) {
    EXPECT_EQ(KdbxKeys::hexDecode("00fFa1B2"), fromHex("00ffa1b2"));
    EXPECT_EQ(KdbxKeys::hexDecode(""), Bytes());
    for (const auto* text : {"0", "0g", "g0", " 00", "0x00", "0:", "/0", "@0", "G0", "`0", "ş", "00\n"})
        EXPECT_EQ(KdbxKeys::hexDecode(text), std::nullopt) << text;
}

}  // namespace
