// SPDX-License-Identifier: MIT
#include "core/container/KdbxCrypto.h"

#include "core/container/KdbxGate.h"
#include "core/primitives/AESCipher.h"
#include "core/primitives/ChaCha20Stream.h"
#include "core/primitives/Salsa20Stream.h"
#include "core/primitives/Sha2.h"
#include "tests/support/Failures.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

namespace {

using KdbxCrypto::InnerStreamID;

const Bytes key(32, 0x11);
const Bytes hmacKey(64, 0x5A);

std::string deciphering(KdbxCipher cipher, std::size_t ivSize) {
    return outcomeOf([&] {
        return KdbxCrypto::decryptPayload(Bytes(32, 1), {.cipher = cipher, .key = key, .iv = Bytes(ivSize, 2)});
    });
}

std::string enciphering(KdbxCipher cipher, std::size_t ivSize) {
    return outcomeOf([&] {
        return KdbxCrypto::encryptPayload(Bytes(32, 1), {.cipher = cipher, .key = key, .iv = Bytes(ivSize, 2)});
    });
}

TEST(KdbxCryptoTest, wantsAnAESIVOf16Bytes) {
    for (const std::size_t size : {0, 12, 15, 17}) {
        EXPECT_EQ(deciphering(KdbxCipher::aes256, size), corruptedData("AES IV 16 bayt olmalı")) << size;
        EXPECT_EQ(enciphering(KdbxCipher::aes256, size), corruptedData("AES IV 16 bayt olmalı")) << size;
    }
}

TEST(KdbxCryptoTest, wantsAChaCha20NonceOf12BytesAlsoWhereTheKeyIsUnusable) {
    for (const std::size_t size : {0, 8, 11, 16}) {
        EXPECT_EQ(deciphering(KdbxCipher::chacha20, size), corruptedData("ChaCha20 nonce 12 bayt olmalı")) << size;
        EXPECT_EQ(enciphering(KdbxCipher::chacha20, size), corruptedData("ChaCha20 nonce 12 bayt olmalı")) << size;
    }
    EXPECT_EQ(outcomeOf([] {
                  return KdbxCrypto::decryptPayload({},
                                                    {.cipher = KdbxCipher::chacha20, .key = Bytes(3), .iv = Bytes(16)});
              }),
              corruptedData("ChaCha20 nonce 12 bayt olmalı"));
}

TEST(KdbxCryptoTest, enciphersByAESInCBCMode) {
    const Bytes iv(16, 2);
    const auto plain = copyOf(bytesOf("yük"));

    const auto ciphertext = KdbxCrypto::encryptPayload(plain, {.cipher = KdbxCipher::aes256, .key = key, .iv = iv});

    EXPECT_EQ(ciphertext, AESCipher::cbcEncrypt(plain, {.key = key, .iv = iv}));
    EXPECT_EQ(KdbxCrypto::decryptPayload(ciphertext, {.cipher = KdbxCipher::aes256, .key = key, .iv = iv}), plain);
}

TEST(KdbxCryptoTest, enciphersByChaCha20FromItsFirstBlock) {
    const Bytes nonce(12, 2);
    const auto plain = copyOf(bytesOf("yük"));
    ChaCha20Stream stream({.key = key, .nonce = nonce}, 0);

    const auto ciphertext =
        KdbxCrypto::encryptPayload(plain, {.cipher = KdbxCipher::chacha20, .key = key, .iv = nonce});

    EXPECT_EQ(ciphertext, stream.process(plain));
    EXPECT_EQ(KdbxCrypto::decryptPayload(ciphertext, {.cipher = KdbxCipher::chacha20, .key = key, .iv = nonce}), plain);
}

TEST(KdbxCryptoTest, letsAFailureOfAESThrough) {
    EXPECT_TRUE(outcomeOf([] {
                    return KdbxCrypto::decryptPayload(Bytes(15),
                                                      {.cipher = KdbxCipher::aes256, .key = key, .iv = Bytes(16)});
                }).starts_with("AESCipher.Error."));
    EXPECT_TRUE(outcomeOf([] {
                    return KdbxCrypto::encryptPayload(
                        Bytes(15), {.cipher = KdbxCipher::aes256, .key = Bytes(31), .iv = Bytes(16)});
                }).starts_with("AESCipher.Error.invalidKeyLength"));
}

TEST(KdbxCryptoTest, theHeadersHMACUsesTheKeyOfTheIndexOfAllOnes) {
    EXPECT_EQ(toHex(KdbxCrypto::blockKey(0xFFFFFFFFFFFFFFFF, {.key = hmacKey})),
              "72eef5c5b6390d4a950615473e3d358a871ac2dba388242e39e731b0b4c6d74e"
              "cf9870702d19b7e5462b6907deaf98357b22abfc49a1d0164183d0276e81598c");
    EXPECT_EQ(toHex(KdbxCrypto::headerHMAC(bytesOf("header"), {.key = hmacKey})),
              "2289b041a4ac171cc4de2edc47992fa1d1923f6a23978b151be4c285e6cf2696");
}

TEST(KdbxCryptoTest, comparesSizesAndEveryByte) {
    const auto equal = [](ByteView a, ByteView b) {
        EXPECT_EQ(KdbxCrypto::constantTimeEquals(a, b), KdbxGate::isAuthentic(a, b));
        return KdbxCrypto::constantTimeEquals(a, b);
    };
    const Bytes bytes(32, 7);

    EXPECT_TRUE(equal({}, {}));
    EXPECT_TRUE(equal(bytes, Bytes(32, 7)));
    EXPECT_FALSE(equal(bytes, Bytes(31, 7)));
    EXPECT_FALSE(equal({}, bytes));
    for (std::size_t i = 0; i < 32 * 8; ++i) {
        auto other = bytes;
        other[i / 8] = static_cast<std::uint8_t>(other[i / 8] ^ 1 << i % 8);
        EXPECT_FALSE(equal(bytes, other)) << i;
        EXPECT_FALSE(equal(other, bytes)) << i;
    }
}

TEST(KdbxCryptoTest, randomBytesAreAsManyAsAskedForAndNeverTheSame) {
    EXPECT_TRUE(KdbxCrypto::randomBytes(0).empty());
    EXPECT_EQ(KdbxCrypto::randomBytes(33).size(), 33u);
    EXPECT_NE(KdbxCrypto::randomBytes(32), KdbxCrypto::randomBytes(32));
}

TEST(KdbxInnerStreamTest, knowsFourStreams) {
    EXPECT_EQ(KdbxCrypto::innerStreamID(0), InnerStreamID::none);
    EXPECT_EQ(KdbxCrypto::innerStreamID(1), InnerStreamID::arcFourVariant);
    EXPECT_EQ(KdbxCrypto::innerStreamID(2), InnerStreamID::salsa20);
    EXPECT_EQ(KdbxCrypto::innerStreamID(3), InnerStreamID::chaCha20);
    EXPECT_EQ(KdbxCrypto::innerStreamID(4), std::nullopt);
    EXPECT_EQ(KdbxCrypto::innerStreamID(0xFFFFFFFF), std::nullopt);
}

TEST(KdbxInnerStreamTest, noneReturnsWhatItIsGivenWhateverTheKey) {
    const auto stream = KdbxCrypto::makeInnerStream(InnerStreamID::none, {});
    EXPECT_EQ(stream->process(key), key);
    EXPECT_EQ(stream->process(key), key);
}

TEST(KdbxInnerStreamTest, refusesARCFour) {
    EXPECT_EQ(outcomeOf([] { return KdbxCrypto::makeInnerStream(InnerStreamID::arcFourVariant, key); }),
              unsupportedCipher("ARCFour inner stream"));
}

TEST(KdbxInnerStreamTest, keysSalsa20ByAHashAndThePublishedNonce) {
    EXPECT_EQ(toHex(KdbxCrypto::salsaNonce), "e830094b97205d2a");
    Salsa20Stream expected({.key = Sha2::sha256(key), .nonce = fromHex("e830094b97205d2a")});
    const auto stream = KdbxCrypto::makeInnerStream(InnerStreamID::salsa20, key);
    EXPECT_EQ(stream->process(Bytes(100, 0)), expected.process(Bytes(100, 0)));
}

TEST(KdbxInnerStreamTest, keysChaCha20ByTheTwoPartsOfAHash) {
    const auto digest = Sha2::sha512(key);
    ChaCha20Stream expected({.key = ByteView(digest).first(32), .nonce = ByteView(digest).subspan(32, 12)}, 0);
    const auto stream = KdbxCrypto::makeInnerStream(InnerStreamID::chaCha20, key);
    EXPECT_EQ(stream->process(Bytes(100, 0)), expected.process(Bytes(100, 0)));
}

TEST(KdbxInnerStreamTest, twoStreamsOfOneKeyAgreeFromTheFirstByteAndAnEmptyKeyIsOne) {
    for (const auto id : {InnerStreamID::salsa20, InnerStreamID::chaCha20}) {
        const auto first = KdbxCrypto::makeInnerStream(id, {});
        const auto second = KdbxCrypto::makeInnerStream(id, {});
        const auto keystream = first->process(Bytes(64, 0));
        EXPECT_EQ(second->process(Bytes(64, 0)), keystream);
        EXPECT_NE(first->process(Bytes(64, 0)), keystream);
    }
}

}  // namespace
