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

/// A file with one byte changed.
Bytes flipped(Bytes file, std::size_t offset) {
    file[offset] ^= 1;
    return file;
}

std::string stringField(const std::string& key, const std::string& value) {
    return "<String><Key>" + key + "</Key>" + value + "</String>";
}

TEST(KdbxLoad4Test, readsDocumentSettingsAndVersion) {
    auto builder = VaultBuilder::kdbx4();
    builder.version.minor = 0;
    const auto database = loaded(builder.setKdf({KdfSettings::Argon2{KdfSettings::Variant::argon2id, 8, 2, 1}}));

    EXPECT_EQ(database.meta.generator, "Test");
    EXPECT_EQ(database.root.name, "Kasa");
    ASSERT_EQ(database.root.entries.size(), 1u);
    EXPECT_EQ(database.root.entries[0].title, "Posta");
    EXPECT_EQ(database.root.entries[0].password.value(), "gizli");
    EXPECT_EQ(database.cipher, KdbxCipher::aes256);
    EXPECT_EQ(database.kdf, (KdfSettings{KdfSettings::Argon2{KdfSettings::Variant::argon2id, 8, 2, 1}}));
    EXPECT_TRUE(database.compressed);
    EXPECT_EQ(database.formatVersion, (KdbxFormatVersion{4, 0}));
}

TEST(KdbxLoad4Test, readsAlso4Point1AndChaCha20WithoutGzip) {
    auto builder = VaultBuilder::kdbx4();
    builder.setCipher(KdbxCipher::chacha20).setCompressed(false);
    const auto database = loaded(builder);

    EXPECT_EQ(database.root.name, "Kasa");
    EXPECT_EQ(database.cipher, KdbxCipher::chacha20);
    EXPECT_FALSE(database.compressed);
    EXPECT_EQ(database.formatVersion, (KdbxFormatVersion{4, 1}));
}

TEST(KdbxLoad4Test, unmasksProtectedValuesByTheInnerHeadersStream) {
    for (const std::uint32_t id : {0, 2, 3}) {
        auto builder = VaultBuilder::kdbx4();
        builder.innerHeader.streamID = id;
        const auto stream = KdbxCrypto::makeInnerStream(KdbxCrypto::InnerStreamID{id}, builder.innerHeader.streamKey);
        const auto masked = [&](std::string_view text) {
            return "<Value Protected=\"True\">" + Base64::encode(stream->process(bytesOf(text))) + "</Value>";
        };
        const auto first = stringField("Password", masked("gizli"));
        const auto second = stringField("PIN", masked("1234"));
        builder.document = documentWith("<Entry>" + first + second + "</Entry>");

        const auto entry = loaded(builder).root.entries[0];

        EXPECT_EQ(entry.password.value(), "gizli") << id;
        EXPECT_EQ(entry.customFields.at("PIN"), "1234") << id;
        EXPECT_TRUE(entry.protectedCustomFields.contains("PIN")) << id;
    }
}

TEST(KdbxLoad4Test, keepsTheInnerHeadersAttachmentsWithTheRootGroup) {
    auto builder = VaultBuilder::kdbx4();
    builder.innerHeader.binaries = {{1, fromHex("0102")}, {0, {}}};
    EXPECT_EQ(KdbxXML::preservedBinaries(loaded(builder).root), builder.innerHeader.binaries);
}

TEST(KdbxLoad4Test, aFileCutInItsHashesRunsShort) {
    const auto builder = VaultBuilder::kdbx4();
    const auto file = builder.build();
    const auto end = builder.header().size();

    EXPECT_EQ(loading(ByteView(file).first(end + 63)), shortData(32, 31));
    EXPECT_EQ(loading(ByteView(file).first(end + 31)), shortData(32, 31));
    EXPECT_EQ(loading(ByteView(file).first(end)), shortData(32, 0));
    EXPECT_EQ(loading(ByteView(file).first(end + 64)), shortData(32, 0));
}

TEST(KdbxLoad4Test, aDamagedHeaderIsReportedBeforeAnythingOfTheKey) {
    auto builder = VaultBuilder::kdbx4();
    builder.setParameter("$UUID", std::nullopt).add(1, bytesOf("not"));
    const auto end = builder.header().size();

    EXPECT_EQ(loading(flipped(builder.build(), end - 10)), headerHashMismatch);
    EXPECT_EQ(loading(flipped(builder.build(), end)), headerHashMismatch);
    EXPECT_EQ(loading(flipped(builder.build(), end), KdbxKey()), headerHashMismatch);
    EXPECT_EQ(loading(builder), unsupportedKdf("KdfParameters içinde $UUID yok"));
}

TEST(KdbxLoad4Test, credentialsAreJudgedBeforeTheKeyDerivation) {
    auto builder = VaultBuilder::kdbx4();
    builder.setParameter("$UUID", std::nullopt);

    EXPECT_EQ(loading(builder.build(), KdbxKey()), invalidCredentials);
    EXPECT_EQ(loading(builder.build(), {std::nullopt, copyOf(bytesOf("<KeyFile/>"))}),
              corruptedData("anahtar dosyasında <Key><Data> yok"));
}

TEST(KdbxLoad4Test, failuresOfTheKeyDerivationPassThrough) {
    auto wrongSalt = VaultBuilder::kdbx4();
    wrongSalt.setParameter("S", VariantValue{Bytes(31)});
    EXPECT_EQ(loading(wrongSalt), cryptoFailure("AES-KDF tohumu 32 bayt olmalı"));

    auto noLanes = VaultBuilder::kdbx4();
    noLanes.setKdf({KdfSettings::Argon2{KdfSettings::Variant::argon2id, 8, 1, 0}});
    EXPECT_EQ(loading(noLanes), unsupportedKdf("geçersiz Argon2 parametreleri"));

    auto oldVersion = VaultBuilder::kdbx4();
    oldVersion.setKdf({KdfSettings::Argon2{KdfSettings::Variant::argon2id, 8, 1, 1}})
        .setParameter("V", VariantValue{std::uint32_t{1}});
    EXPECT_TRUE(loading(oldVersion).starts_with("Argon2.Error.unsupportedVersion:"));

    auto unknown = VaultBuilder::kdbx4();
    unknown.setParameter("$UUID", VariantValue{copyOf(KdbxUUIDs::twofish().kdbxBytes())});
    EXPECT_EQ(loading(unknown), unsupportedKdf("AD68F29F-576F-4BB9-A36A-D47AF965346C"));
}

TEST(KdbxLoad4Test, aWrongPasswordKeyFileOrHeaderHMACIsTheSameFailure) {
    const auto builder = VaultBuilder::kdbx4();
    const auto file = builder.build();
    const auto end = builder.header().size();

    EXPECT_EQ(loading(file, {"Parola", std::nullopt}), invalidCredentials);
    EXPECT_EQ(loading(file, {"", std::nullopt}), invalidCredentials);
    EXPECT_EQ(loading(file, {"parola", Bytes(32, 1)}), invalidCredentials);
    EXPECT_EQ(loading(file, {std::nullopt, Bytes(32, 1)}), invalidCredentials);
    for (std::size_t i = 32; i < 64; ++i)
        EXPECT_EQ(loading(flipped(file, end + i)), invalidCredentials) << i;
}

TEST(KdbxLoad4Test, aHeaderAlteredTogetherWithItsHashIsAWrongPassword) {
    const auto builder = VaultBuilder::kdbx4();
    auto altered = builder;
    altered.add(1, bytesOf("not"));
    auto file = altered.build();
    const auto original = builder.build();
    const auto hmac = ByteView(original).subspan(builder.header().size() + 32, 32);
    std::ranges::copy(hmac, file.begin() + static_cast<std::ptrdiff_t>(altered.header().size() + 32));

    EXPECT_EQ(loading(file), invalidCredentials);
}

TEST(KdbxLoad4Test, aDamagedBlockIsNamed) {
    auto builder = VaultBuilder::kdbx4();
    builder.blockSize = 64;
    const auto file = builder.build();
    const auto blocks = builder.header().size() + 64;

    EXPECT_EQ(loading(flipped(file, blocks + 36)), blockHmacMismatch(0));
    EXPECT_EQ(loading(flipped(file, blocks)), blockHmacMismatch(0));
    EXPECT_EQ(loading(flipped(file, blocks + 100 + 36)), blockHmacMismatch(1));
}

TEST(KdbxLoad4Test, whatFollowsTheTerminatorIsIgnored) {
    auto file = VaultBuilder::kdbx4().build();
    append(file, bytesOf("fazla"));
    EXPECT_EQ(loading(file), "nothing");
}

TEST(KdbxLoad4Test, anUnknownCipherIsReportedOnlyBehindTheRightPasswordAndTheBlocks) {
    auto builder = VaultBuilder::kdbx4();
    builder.set(FieldID::cipherID, KdbxUUIDs::twofish().kdbxBytes());
    const auto file = builder.build();

    EXPECT_EQ(loading(file), unsupportedCipher("Twofish"));
    EXPECT_EQ(loading(file, {"yanlış", std::nullopt}), invalidCredentials);
    EXPECT_EQ(loading(flipped(file, builder.header().size() + 64 + 36)), blockHmacMismatch(0));
    builder.set(FieldID::cipherID, Bytes(16, 0xAB));
    EXPECT_EQ(loading(builder), unsupportedCipher("ABABABAB-ABAB-ABAB-ABAB-ABABABABABAB"));
}

TEST(KdbxLoad4Test, anIVOfTheWrongSizeIsReported) {
    auto builder = VaultBuilder::kdbx4();
    builder.set(FieldID::encryptionIV, Bytes(15));
    EXPECT_EQ(loading(builder), corruptedData("AES IV 16 bayt olmalı"));
    builder.remove(FieldID::encryptionIV);
    EXPECT_EQ(loading(builder), corruptedData("AES IV 16 bayt olmalı"));
    builder.setCipher(KdbxCipher::chacha20).set(FieldID::encryptionIV, Bytes(16));
    EXPECT_EQ(loading(builder), corruptedData("ChaCha20 nonce 12 bayt olmalı"));
}

TEST(KdbxLoad4Test, aFailureOfAESBehindAValidHMACPassesThrough) {
    auto builder = VaultBuilder::kdbx4();
    builder.ciphertext = Bytes(17, 1);
    EXPECT_TRUE(loading(builder).starts_with("AESCipher.Error.cryptoFailure:")) << loading(builder);
    builder.ciphertext = Bytes(32, 1);
    EXPECT_TRUE(loading(builder).starts_with("AESCipher.Error.cryptoFailure:")) << loading(builder);
}

TEST(KdbxLoad4Test, aFailureOfGzipPassesThrough) {
    auto builder = VaultBuilder::kdbx4();
    builder.compressed = copyOf(bytesOf("this is no gzip member at all"));
    EXPECT_TRUE(loading(builder).starts_with("Gzip.Error.notGzip:")) << loading(builder);
    builder.setCompressed(false);
    EXPECT_FALSE(loading(builder).starts_with("Gzip.Error")) << loading(builder);
}

TEST(KdbxLoad4Test, failuresOfTheInnerHeaderPassThrough) {
    auto builder = VaultBuilder::kdbx4();
    builder.payload = fromHex("03 00000000");
    EXPECT_EQ(loading(builder), corruptedData("boş iç başlık ikili verisi"));
    builder.payload = Bytes();
    EXPECT_EQ(loading(builder), shortData(1, 0));
}

TEST(KdbxLoad4Test, anUnknownInnerStreamIsReportedByItsNumber) {
    auto builder = VaultBuilder::kdbx4();
    builder.innerHeader.streamID = 7;
    EXPECT_EQ(loading(builder), unsupportedCipher("inner stream 7"));
    EXPECT_EQ(loading(builder.build(), {"yanlış", std::nullopt}), invalidCredentials);
    builder.innerHeader.streamID = 0xFFFFFFFF;
    EXPECT_EQ(loading(builder), unsupportedCipher("inner stream 4294967295"));
    builder.innerHeader.streamID = 1;
    EXPECT_EQ(loading(builder), unsupportedCipher("ARCFour inner stream"));
}

TEST(KdbxLoad4Test, theStreamIsJudgedBeforeTheDocument) {
    auto builder = VaultBuilder::kdbx4();
    builder.document = "bozuk";
    EXPECT_EQ(loading(builder), xmlParseFailure("belge çözümlenemedi"));
    builder.innerHeader.streamID = 7;
    EXPECT_EQ(loading(builder), unsupportedCipher("inner stream 7"));
}

TEST(KdbxLoad4Test, theDocumentsHeaderHashIsNotLookedAt) {
    auto builder = VaultBuilder::kdbx4();
    builder.document = "<KeePassFile><Meta><HeaderHash>AAAA</HeaderHash></Meta><Root><Group/></Root></KeePassFile>";
    EXPECT_EQ(loading(builder), "nothing");
}

TEST(KdbxLoad4Test, theReportedKeyDerivationIsTheHeadersView) {
    auto builder = VaultBuilder::kdbx4();
    builder.setParameter("R", VariantValue{std::uint32_t{3}});
    EXPECT_EQ(loaded(builder).kdf, KdfSettings{KdfSettings::AesKdf{3}});
}

TEST(KdbxLoad4Test, aVersionWithoutAnHMACKeyIsRefused) {
    // The road of KDBX 4 walked with a header of KDBX 3, whose keys have none.
    const auto builder = VaultBuilder::kdbx3();
    auto file = builder.header();
    const auto header = KdbxHeader::parse(file);
    append(file, Sha2::sha256(header.rawData));
    append(file, Bytes(32, 0));

    EXPECT_EQ(outcomeOf([&] { return KdbxFile::loadKdbx4(file, header, builder.key); }),
              cryptoFailure("KDBX 4 için HMAC anahtarı türetilemedi"));
}

TEST(KdbxLoad4Test, aFailureLeavesTheNextLoadAlone) {
    const auto builder = VaultBuilder::kdbx4();
    const auto file = builder.build();
    EXPECT_EQ(loading(file, {"yanlış", std::nullopt}), invalidCredentials);
    EXPECT_EQ(loading(file), "nothing");
}

}  // namespace
