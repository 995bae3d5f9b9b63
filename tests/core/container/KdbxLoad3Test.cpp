// SPDX-License-Identifier: MIT
#include "core/container/KdbxCrypto.h"
#include "core/container/KdbxFile.h"
#include "core/container/KdbxFileSteps.h"
#include "core/primitives/Base64.h"
#include "core/primitives/Sha2.h"
#include "tests/core/container/VaultBuilder.h"
#include "tests/support/Failures.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

namespace {

using FieldID = KdbxHeader::FieldID;

std::string loading(ByteView file, const KdbxKey& key = {"parola", std::nullopt}) {
    return outcomeOf([&] { return KdbxFile::load(file, key); });
}

std::string loading(const VaultBuilder& builder) {
    return loading(builder.build());
}

KdbxDatabase loaded(const VaultBuilder& builder) {
    return KdbxFile::load(builder.build(), builder.key);
}

VaultBuilder withHeaderHash(VaultBuilder builder, ByteView hash) {
    builder.document = "<KeePassFile><Meta><HeaderHash>" + Base64::encode(hash) +
                       "</HeaderHash></Meta><Root><Group/></Root></KeePassFile>";
    return builder;
}

VaultBuilder underChaCha20() {
    auto builder = VaultBuilder::kdbx3();
    return builder.setCipher(KdbxCipher::chacha20);
}

TEST(KdbxLoad3Test, readsDocumentSettingsAndVersion) {
    for (const std::uint16_t minor : {0, 1}) {
        auto builder = VaultBuilder::kdbx3();
        builder.version.minor = minor;
        const auto database = loaded(builder.set(FieldID::transformRounds, fromHex("0500000000000000")));

        EXPECT_EQ(database.meta.generator, "Test");
        EXPECT_EQ(database.root.entries[0].password.value(), "gizli");
        EXPECT_EQ(database.cipher, KdbxCipher::aes256);
        EXPECT_EQ(database.kdf, KdfSettings{KdfSettings::AesKdf{5}});
        EXPECT_TRUE(database.compressed);
        EXPECT_EQ(database.formatVersion, (KdbxFormatVersion{3, minor}));
    }
}

TEST(KdbxLoad3Test, readsChaCha20AndPlainPayloads) {
    auto builder = underChaCha20();
    const auto database = loaded(builder.setCompressed(false));
    EXPECT_EQ(database.root.name, "Kasa");
    EXPECT_EQ(database.cipher, KdbxCipher::chacha20);
    EXPECT_FALSE(database.compressed);
}

TEST(KdbxLoad3Test, credentialsAreJudgedBeforeTheKeyDerivation) {
    auto builder = VaultBuilder::kdbx3();
    builder.set(FieldID::transformSeed, Bytes(31));
    EXPECT_EQ(loading(builder.build(), KdbxKey()), invalidCredentials);
    EXPECT_EQ(loading(builder), cryptoFailure("AES-KDF tohumu 32 bayt olmalı"));
}

TEST(KdbxLoad3Test, anUnknownCipherIsReportedBehindTheKeyDerivationAndBeforeTheDeciphering) {
    auto builder = VaultBuilder::kdbx3();
    builder.set(FieldID::cipherID, KdbxUUIDs::twofish().kdbxBytes());
    EXPECT_EQ(loading(builder), unsupportedCipher("Twofish"));
    EXPECT_EQ(loading(builder.build(), {"yanlış", std::nullopt}), unsupportedCipher("Twofish"));
    builder.set(FieldID::transformSeed, Bytes(31));
    EXPECT_EQ(loading(builder), cryptoFailure("AES-KDF tohumu 32 bayt olmalı"));
}

TEST(KdbxLoad3Test, aWrongPasswordIsReportedUnderBothCiphers) {
    for (int i = 0; i < 300; ++i) {
        // Among 300 wrong passwords padding comes right by chance for about one, and the start bytes tell it.
        const KdbxKey wrong{"yanlış " + std::to_string(i), std::nullopt};
        ASSERT_EQ(loading(VaultBuilder::kdbx3().build(), wrong), invalidCredentials) << i;
    }
    EXPECT_EQ(loading(underChaCha20().build(), {"yanlış", std::nullopt}), invalidCredentials);
}

TEST(KdbxLoad3Test, everyFailureOfTheDecipheringIsReportedAsWrongCredentials) {
    auto builder = VaultBuilder::kdbx3();
    builder.set(FieldID::encryptionIV, Bytes(15));
    EXPECT_EQ(loading(builder), invalidCredentials);
    builder.remove(FieldID::encryptionIV);
    EXPECT_EQ(loading(builder), invalidCredentials);

    auto nonce = underChaCha20();
    nonce.set(FieldID::encryptionIV, Bytes(16));
    EXPECT_EQ(loading(nonce), invalidCredentials);

    for (const std::size_t size : {0, 15, 16, 17, 64}) {
        auto damaged = VaultBuilder::kdbx3();
        damaged.ciphertext = Bytes(size, 1);
        EXPECT_EQ(loading(damaged), invalidCredentials) << size;
    }
}

TEST(KdbxLoad3Test, startBytesThatDifferOrAreMissingAreWrongCredentials) {
    auto builder = underChaCha20();
    builder.plaintext = Bytes(31, 0);
    EXPECT_EQ(loading(builder), invalidCredentials);
    builder.plaintext = Bytes();
    EXPECT_EQ(loading(builder), invalidCredentials);
    builder.plaintext = Bytes(500, 0);
    EXPECT_EQ(loading(builder), invalidCredentials);

    auto tooLong = VaultBuilder::kdbx3();
    tooLong.plaintext = Bytes(100, 7);
    tooLong.set(FieldID::streamStartBytes, Bytes(101, 7));
    EXPECT_EQ(loading(tooLong), invalidCredentials);
}

TEST(KdbxLoad3Test, startBytesMayHaveAnySizeAndEmptyOnesAlwaysPass) {
    for (const std::size_t size : {0, 1, 500}) {
        auto builder = VaultBuilder::kdbx3();
        EXPECT_EQ(loading(builder.set(FieldID::streamStartBytes, Bytes(size, 9))), "nothing") << size;
    }
}

TEST(KdbxLoad3Test, aFlippedByteEarlyInTheCiphertextIsAWrongPasswordAndLaterItNamesItsBlock) {
    const auto builder = underChaCha20();
    const auto file = builder.build();
    const auto end = builder.header().size();
    const auto flippedAt = [&](std::size_t offset) {
        auto changed = file;
        changed[end + offset] ^= 1;
        return loading(changed);
    };

    for (std::size_t i = 0; i < 32; ++i)
        EXPECT_EQ(flippedAt(i), invalidCredentials) << i;
    EXPECT_EQ(flippedAt(32), corruptedData("blok sırası bozuk (1 != 0)"));
    EXPECT_EQ(flippedAt(36), blockHmacMismatch(0));
    EXPECT_EQ(flippedAt(72), blockHmacMismatch(0));
    EXPECT_EQ(flippedAt(file.size() - end - 40), corruptedData("blok sırası bozuk (0 != 1)"));
    EXPECT_EQ(flippedAt(file.size() - end - 36), corruptedData("sonlandırıcı bloğun hash'i sıfır değil"));
}

TEST(KdbxLoad3Test, damageBehindTheStartBytesIsNoWrongPassword) {
    auto builder = VaultBuilder::kdbx3();
    builder.blocks = Bytes();
    EXPECT_EQ(loading(builder), shortData(4, 0));
    builder.blocks.reset();
    builder.compressed = copyOf(bytesOf("this is no gzip member at all"));
    EXPECT_TRUE(loading(builder).starts_with("Gzip.Error.notGzip:")) << loading(builder);
    builder.compressed.reset();
    builder.document = "<KeePassFile/>";
    EXPECT_EQ(loading(builder), xmlParseFailure("<Root> yok"));
}

TEST(KdbxLoad3Test, bytesBehindTheTerminatorBlockAreIgnored) {
    auto builder = VaultBuilder::kdbx3();
    builder.setCompressed(false);
    builder.blocks = KdbxCrypto::writeHashedBlocks(bytesOf(builder.document), 50);
    append(*builder.blocks, bytesOf("fazla"));
    EXPECT_EQ(loading(builder), "nothing");
}

TEST(KdbxLoad3Test, unmasksProtectedValuesAndTakesAnUnknownOrAbsentStreamForSalsa20) {
    auto builder = VaultBuilder::kdbx3();
    const auto key = KdbxHeader::parse(builder.header()).innerRandomStreamKey.value();
    const auto stream = KdbxCrypto::makeInnerStream(KdbxCrypto::InnerStreamID::salsa20, key);
    builder.document = documentWith("<Entry><String><Key>Password</Key><Value Protected=\"True\">" +
                                    Base64::encode(stream->process(bytesOf("gizli"))) + "</Value></String></Entry>");
    const auto password = [&] { return loaded(builder).root.entries[0].password.value(); };

    EXPECT_EQ(password(), "gizli");
    builder.set(FieldID::innerRandomStreamID, fromHex("07000000"));
    EXPECT_EQ(password(), "gizli");
    builder.remove(FieldID::innerRandomStreamID);
    EXPECT_EQ(password(), "gizli");
}

TEST(KdbxLoad3Test, knowsTheOtherStreams) {
    auto builder = VaultBuilder::kdbx3();
    builder.document =
        documentWith("<Entry><String><Key>Password</Key><Value Protected=\"True\">Z2l6bGk=</Value></String></Entry>");
    builder.set(FieldID::innerRandomStreamID, fromHex("01000000"));
    EXPECT_EQ(loading(builder), unsupportedCipher("ARCFour inner stream"));
    builder.set(FieldID::innerRandomStreamID, fromHex("00000000"));
    EXPECT_EQ(loaded(builder).root.entries[0].password.value(), "gizli");
    builder.set(FieldID::innerRandomStreamID, fromHex("03000000"));
    EXPECT_NE(loaded(builder).root.entries[0].password.value(), "gizli");
}

TEST(KdbxLoad3Test, theStreamIsJudgedBeforeTheDocument) {
    auto builder = VaultBuilder::kdbx3();
    builder.document = "bozuk";
    EXPECT_EQ(loading(builder), xmlParseFailure("belge çözümlenemedi"));
    EXPECT_EQ(loading(builder.set(FieldID::innerRandomStreamID, fromHex("01000000"))),
              unsupportedCipher("ARCFour inner stream"));
}

TEST(KdbxLoad3Test, checksTheDocumentsHeaderHashOnceItHasBeenRead) {
    const auto builder = VaultBuilder::kdbx3();
    EXPECT_EQ(loading(withHeaderHash(builder, Sha2::sha256(builder.header()))), "nothing");
    EXPECT_EQ(loading(withHeaderHash(builder, Bytes(32, 1))), headerHashMismatch);
    EXPECT_EQ(loading(withHeaderHash(builder, Bytes(31, 1))), headerHashMismatch);

    auto broken = withHeaderHash(builder, Bytes(32, 1));
    broken.document = broken.document.substr(0, broken.document.size() - 1);
    EXPECT_EQ(loading(broken), xmlParseFailure("belge çözümlenemedi"));
}

TEST(KdbxLoad3Test, anEmptyHeaderHashIsPresentAndDiffers) {
    EXPECT_EQ(loading(withHeaderHash(VaultBuilder::kdbx3(), {})), headerHashMismatch);
}

TEST(KdbxLoad3Test, aHeaderHashThatIsNoBase64CountsAsAbsent) {
    auto builder = VaultBuilder::kdbx3();
    builder.document = "<KeePassFile><Meta><HeaderHash>?</HeaderHash></Meta><Root><Group/></Root></KeePassFile>";
    EXPECT_EQ(loading(builder), "nothing");
}

TEST(KdbxLoad3Test, aChangedCommentPassesWhereNothingHashesTheHeader) {
    auto original = VaultBuilder::kdbx3();
    original.add(1, bytesOf("not"));
    auto file = original.build();
    const auto comment = original.header().size() - 10;

    file[comment] ^= 1;
    EXPECT_EQ(loading(file), "nothing");

    auto hashed = withHeaderHash(original, Sha2::sha256(original.header())).build();
    EXPECT_EQ(loading(hashed), "nothing");
    hashed[comment] ^= 1;
    EXPECT_EQ(loading(hashed), headerHashMismatch);
}

TEST(KdbxLoad3Test, aChangedSeedIsAWrongPassword) {
    const auto builder = VaultBuilder::kdbx3();
    const auto seed = KdbxHeader::parse(builder.header()).masterSeed;
    auto file = builder.build();
    const auto place = std::ranges::search(file, seed).begin();
    *place ^= 1;
    EXPECT_EQ(loading(file), invalidCredentials);
}

TEST(KdbxLoad3Test, missesStartBytesAlsoWhereTheHeaderParserDidNot) {
    const auto builder = VaultBuilder::kdbx3();
    const auto file = builder.build();
    auto header = KdbxHeader::parse(file);
    header.streamStartBytes.reset();
    EXPECT_EQ(outcomeOf([&] { return KdbxFile::loadKdbx3(file, header, KdbxKey()); }),
              corruptedData("KDBX 3 başlığında StreamStartBytes yok"));
}

TEST(KdbxLoad3Test, aHeaderWithoutAnInnerKeyHasAnEmptyOne) {
    const auto builder = VaultBuilder::kdbx3();
    const auto file = builder.build();
    auto header = KdbxHeader::parse(file);
    header.innerRandomStreamKey.reset();
    EXPECT_EQ(outcomeOf([&] { return KdbxFile::loadKdbx3(file, header, builder.key); }), "nothing");
}

}  // namespace
