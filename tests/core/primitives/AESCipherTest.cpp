// SPDX-License-Identifier: MIT
#include "core/primitives/AESCipher.h"

#include "core/primitives/AESRounds.h"
#include "core/primitives/Random.h"
#include "tests/support/Hex.h"
#include "tests/support/Thrown.h"

#include <gtest/gtest.h>
#include <openssl/evp.h>

#include <functional>
#include <thread>

namespace {

using Error = AESCipher::Error;

const Bytes zeroKey(32, 0);
const Bytes zeroIV(16, 0);

Bytes joined(Bytes left, ByteView right) {
    append(left, right);
    return left;
}

// FIPS 197, appendix C.3.
TEST(AESCipherTest, enciphersAndDeciphersThePublishedBlock) {
    const auto key = fromHex("000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f");
    const auto plain = fromHex("00112233445566778899aabbccddeeff");

    const auto enciphered = AESCipher::ecbEncryptNoPadding(plain, {.key = key});

    EXPECT_EQ(toHex(enciphered), "8ea2b7ca516745bfeafc49904b496089");
    EXPECT_EQ(AESCipher::ecbDecryptNoPadding(enciphered, {.key = key}), plain);
}

// NIST SP 800-38A, appendix F: the key and the four blocks that its AES-256 examples share.
const Bytes sampleKey = fromHex("603deb1015ca71be2b73aef0857d77811f352c073b6108d72d9810a30914dff4");
const Bytes samplePlain = fromHex(
    "6bc1bee22e409f96e93d7e117393172a ae2d8a571e03ac9c9eb76fac45af8e51"
    "30c81c46a35ce411e5fbc1191a0a52ef f69f2445df4f9b17ad2b417be66c3710");

// Sections F.1.5 and F.1.6.
TEST(AESCipherTest, givesThePublishedBlocksInECBInBothDirections) {
    const auto enciphered = fromHex(
        "f3eed1bdb5d2a03c064b5a7e3db181f8 591ccb10d410ed26dc5ba74a31362870"
        "b6ed21b99ca6f4f9f153e7b1beafed1d 23304b7a39f9f3ff067d8d8f9e24ecc7");

    EXPECT_EQ(toHex(AESCipher::ecbEncryptNoPadding(samplePlain, {.key = sampleKey})), toHex(enciphered));
    EXPECT_EQ(toHex(AESCipher::ecbDecryptNoPadding(enciphered, {.key = sampleKey})), toHex(samplePlain));
}

// Sections F.2.5 and F.2.6. The examples have no padding, so a block of it follows theirs.
TEST(AESCipherTest, givesThePublishedBlocksInCBCInBothDirections) {
    const auto iv = fromHex("000102030405060708090a0b0c0d0e0f");
    const auto published = fromHex(
        "f58c4c04d6e5f1ba779eabfb5f7bfbd6 9cfc4e967edb808d679f777bc6702c7d"
        "39f23369a9d9bacfa530e26304231461 b2eb05e2c39be9fcda6c19078c6a9d1b");

    const auto enciphered = AESCipher::cbcEncrypt(samplePlain, {.key = sampleKey, .iv = iv});

    ASSERT_EQ(enciphered.size(), 80U);
    EXPECT_EQ(toHex(ByteView(enciphered).first(64)), toHex(published));
    EXPECT_EQ(toHex(AESCipher::cbcDecrypt(enciphered, {.key = sampleKey, .iv = iv})), toHex(samplePlain));
}

TEST(AESCipherTest, addsOneToSixteenBytesOfPaddingAndTakesThemAwayAgain) {
    for (std::size_t size = 0; size <= 48; ++size) {
        const auto plain = randomBytes(size);
        const auto enciphered = AESCipher::cbcEncrypt(plain, {.key = zeroKey, .iv = zeroIV});
        EXPECT_EQ(enciphered.size(), (size / 16 + 1) * 16) << size;
        EXPECT_EQ(AESCipher::cbcDecrypt(enciphered, {.key = zeroKey, .iv = zeroIV}), plain) << size;
    }
}

TEST(AESCipherTest, ecbGivesAsManyBytesAsItTook) {
    for (const std::size_t size : {0, 16, 32, 160, 4096}) {
        EXPECT_EQ(AESCipher::ecbEncryptNoPadding(randomBytes(size), {.key = zeroKey}).size(), size);
        EXPECT_EQ(AESCipher::ecbDecryptNoPadding(randomBytes(size), {.key = zeroKey}).size(), size);
    }
}

TEST(AESCipherTest, cbcReportsTheKeysLengthBeforeTheIVs) {
    const auto bad = AESCipher::Error::invalidKeyLength(31);
    EXPECT_EQ(thrown<Error>([] { (void)AESCipher::cbcEncrypt({}, {.key = Bytes(31, 0), .iv = Bytes(15, 0)}); }), bad);
    EXPECT_EQ(
        thrown<Error>([] { (void)AESCipher::cbcDecrypt(Bytes(17, 0), {.key = Bytes(31, 0), .iv = Bytes(15, 0)}); }),
        bad);
    EXPECT_EQ(thrown<Error>([] { (void)AESCipher::cbcEncrypt({}, {.key = Bytes(33, 0), .iv = zeroIV}); }),
              AESCipher::Error::invalidKeyLength(33));
    EXPECT_EQ(thrown<Error>([] { (void)AESCipher::cbcEncrypt({}, {.key = {}, .iv = zeroIV}); }),
              AESCipher::Error::invalidKeyLength(0));
}

TEST(AESCipherTest, cbcReportsTheIVsLengthBeforeTheDatas) {
    EXPECT_EQ(thrown<Error>([] { (void)AESCipher::cbcEncrypt({}, {.key = zeroKey, .iv = Bytes(15, 0)}); }),
              AESCipher::Error::invalidIVLength(15));
    EXPECT_EQ(thrown<Error>([] { (void)AESCipher::cbcDecrypt(Bytes(17, 0), {.key = zeroKey, .iv = Bytes(17, 0)}); }),
              AESCipher::Error::invalidIVLength(17));
    EXPECT_EQ(thrown<Error>([] { (void)AESCipher::cbcDecrypt({}, {.key = zeroKey, .iv = {}}); }),
              AESCipher::Error::invalidIVLength(0));
}

TEST(AESCipherTest, ecbReportsTheDatasLengthBeforeTheKeys) {
    const auto bad = AESCipher::Error::invalidBlockAlignment(17);
    EXPECT_EQ(thrown<Error>([] { (void)AESCipher::ecbEncryptNoPadding(Bytes(17, 0), {.key = Bytes(16, 0)}); }), bad);
    EXPECT_EQ(thrown<Error>([] { (void)AESCipher::ecbDecryptNoPadding(Bytes(17, 0), {.key = Bytes(16, 0)}); }), bad);
    EXPECT_EQ(thrown<Error>([] { (void)AESCipher::ecbEncryptNoPadding(Bytes(16, 0), {.key = Bytes(16, 0)}); }),
              AESCipher::Error::invalidKeyLength(16));
    EXPECT_EQ(thrown<Error>([] { (void)AESCipher::ecbDecryptNoPadding({}, {.key = Bytes(31, 0)}); }),
              AESCipher::Error::invalidKeyLength(31));
}

TEST(AESCipherTest, refusesToDecipherWhatIsNotWholeBlocks) {
    for (const std::size_t size : {1, 15, 17, 31})
        EXPECT_EQ(thrown<Error>([&] { (void)AESCipher::cbcDecrypt(Bytes(size, 0), {.key = zeroKey, .iv = zeroIV}); }),
                  AESCipher::Error::cryptoFailure(-4303))
            << size;
}

TEST(AESCipherTest, refusesEveryKindOfWrongPadding) {
    const auto paddedWith = [](ByteView lastBlock) {
        return AESCipher::ecbEncryptNoPadding(lastBlock, {.key = zeroKey});  // CBC of one block, the IV being zero
    };
    auto unequal = Bytes(16, 3);
    unequal[14] = 2;
    for (const auto& lastBlock : {Bytes(16, 0), Bytes(16, 17), Bytes(16, 255), unequal})
        EXPECT_EQ(
            thrown<Error>([&] { (void)AESCipher::cbcDecrypt(paddedWith(lastBlock), {.key = zeroKey, .iv = zeroIV}); }),
            AESCipher::Error::cryptoFailure(-4304))
            << toHex(lastBlock);
}

TEST(AESCipherTest, nothingAtAllHasNoPaddingToTakeAway) {
    EXPECT_EQ(thrown<Error>([] { (void)AESCipher::cbcDecrypt({}, {.key = zeroKey, .iv = zeroIV}); }),
              AESCipher::Error::cryptoFailure(-4304));
}

TEST(AESCipherTest, aFailureLeavesTheNextCallAsItWouldHaveBeen) {
    const auto enciphered = AESCipher::cbcEncrypt(samplePlain, {.key = sampleKey, .iv = zeroIV});

    EXPECT_TRUE(thrown<Error>([] { (void)AESCipher::cbcDecrypt(Bytes(16, 0), {.key = zeroKey, .iv = zeroIV}); }));

    EXPECT_EQ(AESCipher::cbcDecrypt(enciphered, {.key = sampleKey, .iv = zeroIV}), samplePlain);
    EXPECT_EQ(toHex(AESCipher::ecbEncryptNoPadding(Bytes(16, 0), {.key = zeroKey})),
              "dc95c078a2408989ad48a21492842087");
}

TEST(AESCipherTest, eachFailureHasItsNumberInItsMessage) {
    EXPECT_EQ(AESCipher::Error::invalidKeyLength(31).errorDescription(), "AES: anahtar 32 byte olmalı (31).");
    EXPECT_EQ(AESCipher::Error::invalidIVLength(15).errorDescription(), "AES: IV 16 byte olmalı (15).");
    EXPECT_EQ(AESCipher::Error::invalidBlockAlignment(17).errorDescription(), "AES: veri 16'nın katı olmalı (17).");
    EXPECT_EQ(AESCipher::Error::cryptoFailure(-4304).errorDescription(), "AES: CommonCrypto hatası -4304.");
    EXPECT_STREQ(AESCipher::Error::cryptoFailure(-4308).what(), "AES: CommonCrypto hatası -4308.");
}

TEST(AESCipherTest, failuresCompareByCaseAndNumber) {
    EXPECT_EQ(AESCipher::Error::invalidKeyLength(1), AESCipher::Error::invalidKeyLength(1));
    EXPECT_NE(AESCipher::Error::invalidKeyLength(1), AESCipher::Error::invalidKeyLength(2));
    EXPECT_NE(AESCipher::Error::invalidKeyLength(1), AESCipher::Error::invalidIVLength(1));
}

// Where the library has no AES at all, a new thread's context finds none.
TEST(AESCipherDeathTest, aLibraryWithoutTheAlgorithmIsAFailureWithItsOwnStatus) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto statuses = [] {
        EVP_set_default_properties(nullptr, "provider=none");
        std::string told;
        const auto tell = [&](const std::function<void()>& operation) {
            const auto failure = thrown<Error>(operation);
            told += failure ? failure->errorDescription() : "none";
        };
        std::thread([&] {
            tell([] { (void)AESCipher::cbcEncrypt({}, {.key = zeroKey, .iv = zeroIV}); });
            tell([] { (void)AESCipher::cbcDecrypt({}, {.key = zeroKey, .iv = zeroIV}); });
            tell([] { (void)AESCipher::ecbEncryptNoPadding({}, {.key = zeroKey}); });
            tell([] { (void)AESCipher::ecbDecryptNoPadding({}, {.key = zeroKey}); });
            tell([] { (void)AESRounds::run(Implementation::portable, zeroKey, {.key = zeroKey}, 1); });
        }).join();
        std::fputs(told.c_str(), stderr);
        std::exit(0);
    };
    EXPECT_EXIT(statuses(), testing::ExitedWithCode(0), "^(AES: CommonCrypto hatası -4308\\.){5}$");
}

Bytes enciphersAloneAndAgain(const Bytes& block, const Bytes& key, std::uint64_t rounds) {
    auto left = copyOf(ByteView(block).first(16));
    auto right = copyOf(ByteView(block).last(16));
    for (std::uint64_t round = 0; round < rounds; ++round) {
        left = AESCipher::ecbEncryptNoPadding(left, {.key = key});
        right = AESCipher::ecbEncryptNoPadding(right, {.key = key});
    }
    return joined(left, right);
}

class AESRoundsTest : public testing::TestWithParam<Implementation> {
protected:
    void SetUp() override {
        if (!isSupported(GetParam()))
            GTEST_SKIP() << "this processor has no AES instructions";
    }
};

INSTANTIATE_TEST_SUITE_P(implementations, AESRoundsTest,
                         testing::Values(Implementation::portable, Implementation::aesInstructions));

TEST_P(AESRoundsTest, isAsManySingleEnciphermentsOfEachHalf) {
    for (int i = 0; i < 200; ++i) {
        const auto block = randomBytes(32);
        const auto key = randomBytes(32);
        const auto rounds = static_cast<std::uint64_t>(i < 20 ? i : randomBytes(1)[0]);
        EXPECT_EQ(toHex(AESRounds::run(GetParam(), block, {.key = key}, rounds)),
                  toHex(enciphersAloneAndAgain(block, key, rounds)))
            << rounds;
    }
}

TEST_P(AESRoundsTest, noRoundsGiveTheBlockBack) {
    const auto block = randomBytes(32);

    EXPECT_EQ(AESRounds::run(GetParam(), block, {.key = zeroKey}, 0), block);
}

TEST_P(AESRoundsTest, theHalvesDoNotMeet) {
    auto block = Bytes(32, 0);
    const auto before = AESRounds::run(GetParam(), block, {.key = zeroKey}, 3);
    block[31] = 1;

    const auto after = AESRounds::run(GetParam(), block, {.key = zeroKey}, 3);

    EXPECT_EQ(toHex(ByteView(after).first(16)), toHex(ByteView(before).first(16)));
    EXPECT_NE(toHex(ByteView(after).last(16)), toHex(ByteView(before).last(16)));
}

TEST_P(AESRoundsTest, leavesItsArgumentsAlone) {
    const auto block = randomBytes(32);
    const auto key = randomBytes(32);
    const auto blockBefore = block;
    const auto keyBefore = key;

    (void)AESRounds::run(GetParam(), block, {.key = key}, 10);

    EXPECT_EQ(block, blockBefore);
    EXPECT_EQ(key, keyBefore);
}

TEST(AESRoundsImplementationTest, theBestImplementationIsSupportedAndThePortableOneAlwaysIs) {
    EXPECT_TRUE(isSupported(Implementation::portable));
    EXPECT_TRUE(isSupported(AESRounds::bestImplementation()));
}

TEST(AESCipherTest, theDerivationsLoopTakesTheBestImplementation) {
    const auto block = randomBytes(32);
    const auto key = randomBytes(32);

    EXPECT_EQ(AESCipher::ecbEncryptRepeatedly(block, {.key = key}, 1000), enciphersAloneAndAgain(block, key, 1000));
}

TEST(AESCipherDeathTest, theDerivationsLoopStopsTheProcessAtAnotherSize) {
    EXPECT_DEATH((void)AESCipher::ecbEncryptRepeatedly(Bytes(31, 0), {.key = zeroKey}, 1), "precondition failed");
    EXPECT_DEATH((void)AESCipher::ecbEncryptRepeatedly(zeroKey, {.key = Bytes(16, 0)}, 1), "precondition failed");
}

/// The library's answer by another door: one context for each call, and padding written by hand.
Bytes peerCbcEncrypt(Bytes data, const Bytes& key, const Bytes& iv) {
    const auto padding = static_cast<std::uint8_t>(16 - data.size() % 16);
    data.insert(data.end(), padding, padding);
    Bytes out(data.size());
    auto previous = iv;
    for (std::size_t offset = 0; offset < data.size(); offset += 16) {
        for (std::size_t i = 0; i < 16; ++i)
            previous[i] ^= data[offset + i];
        auto* context = EVP_CIPHER_CTX_new();
        int count = 0;
        EVP_EncryptInit_ex(context, EVP_aes_256_ecb(), nullptr, key.data(), nullptr);
        EVP_EncryptUpdate(context, out.data() + offset, &count, previous.data(), 16);
        EVP_CIPHER_CTX_free(context);
        previous.assign(out.begin() + static_cast<std::ptrdiff_t>(offset),
                        out.begin() + static_cast<std::ptrdiff_t>(offset) + 16);
    }
    return out;
}

TEST(AESCipherTest, agreesWithBlocksChainedByHandOverRandomInput) {
    for (int i = 0; i < 300; ++i) {
        const auto data = randomBytes(static_cast<std::size_t>(i));
        const auto key = randomBytes(32);
        const auto iv = randomBytes(16);
        const auto enciphered = AESCipher::cbcEncrypt(data, {.key = key, .iv = iv});
        EXPECT_EQ(toHex(enciphered), toHex(peerCbcEncrypt(data, key, iv))) << i;
        EXPECT_EQ(AESCipher::cbcDecrypt(enciphered, {.key = key, .iv = iv}), data) << i;
    }
}

// The library takes data in pieces of 16 MiB here; a cut must not show.
TEST(AESCipherTest, largeDataIsEncipheredAsOne) {
    const auto size = (std::size_t{1} << 24) + 12345;
    const auto plain = randomBytes(size);
    const auto key = randomBytes(32);
    const auto iv = randomBytes(16);
    Bytes peer(size + 16);
    int count = 0;
    int rest = 0;
    auto* context = EVP_CIPHER_CTX_new();
    EVP_EncryptInit_ex(context, EVP_aes_256_cbc(), nullptr, key.data(), iv.data());
    EVP_EncryptUpdate(context, peer.data(), &count, plain.data(), static_cast<int>(size));
    EVP_EncryptFinal_ex(context, peer.data() + count, &rest);
    EVP_CIPHER_CTX_free(context);
    peer.resize(static_cast<std::size_t>(count + rest));

    const auto enciphered = AESCipher::cbcEncrypt(plain, {.key = key, .iv = iv});

    EXPECT_TRUE(enciphered == peer);
    EXPECT_TRUE(AESCipher::cbcDecrypt(enciphered, {.key = key, .iv = iv}) == plain);
}

}  // namespace
