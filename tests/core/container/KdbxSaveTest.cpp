// SPDX-License-Identifier: MIT
#include "core/container/KdbxCrypto.h"
#include "core/container/KdbxFile.h"
#include "core/container/KdbxFileSteps.h"
#include "core/container/KdbxKeys.h"
#include "core/document/KdbxXMLWriter.h"
#include "core/primitives/Gzip.h"
#include "core/primitives/LittleEndian.h"
#include "core/primitives/Sha2.h"
#include "tests/core/container/VaultBuilder.h"
#include "tests/support/Failures.h"
#include "tests/support/Hex.h"
#include "tests/support/VaultJSON.h"

#include <gtest/gtest.h>

namespace {

const KdbxKey key{"parola", std::nullopt};

KdbxDatabase vault() {
    KdbxDatabase database{.meta = {},
                          .root = {},
                          .cipher = KdbxCipher::aes256,
                          .kdf = {KdfSettings::AesKdf{1}},
                          .compressed = true,
                          .formatVersion = {.major = 4, .minor = 1}};
    database.root.name = "Kasa";
    KdbxEntry entry;
    entry.title = "Posta";
    entry.password = SecureString("gizli");
    database.root.entries.append(entry);
    return database;
}

/// A saved file taken apart, as a reader with the right key would.
struct TakenApart {
    KdbxHeader header;
    Bytes ciphertext;
    Bytes plaintext;  // before decompression
    KdbxInnerHeader innerHeader;
    Bytes document;
};

TakenApart takenApart(ByteView file) {
    TakenApart parts;
    parts.header = KdbxHeader::parse(file);
    const auto keys = KdbxKeys::derive(KdbxKeys::compositeKey(key), parts.header);
    KdbxReader reader(file);
    (void)reader.read(parts.header.endOffset + 64);
    parts.ciphertext = KdbxCrypto::readHMACBlocks(reader, {.key = *keys.hmac});
    EXPECT_TRUE(reader.isAtEnd());
    parts.plaintext = KdbxCrypto::decryptPayload(
        parts.ciphertext, {.cipher = parts.header.cipher(), .key = keys.master, .iv = parts.header.encryptionIV});
    const auto payload = parts.header.compressed() ? Gzip::decompress(parts.plaintext) : parts.plaintext;
    KdbxReader inner(payload);
    parts.innerHeader = KdbxInnerHeader::parse(inner);
    parts.document = copyOf(ByteView(payload).subspan(static_cast<std::size_t>(inner.offset())));
    return parts;
}

TEST(KdbxSaveTest, whatIsSavedLoadsAgain) {
    for (const auto cipher : allKdbxCiphers) {
        for (const bool compressed : {false, true}) {
            auto database = vault();
            database.cipher = cipher;
            database.compressed = compressed;

            const auto again = KdbxFile::load(KdbxFile::save(database, key), key);

            EXPECT_EQ(again.cipher, cipher);
            EXPECT_EQ(again.compressed, compressed);
            EXPECT_EQ(again.kdf, database.kdf);
            EXPECT_EQ(again.root.entries[0].password.value(), "gizli");
            EXPECT_EQ(again.root.entries[0].id, database.root.entries[0].id);
        }
    }
}

TEST(KdbxSaveTest, keepsTheVersionsThatItWritesAndRaisesAllOthers) {
    const auto savedVersion = [](KdbxFormatVersion version) {
        auto database = vault();
        database.formatVersion = version;
        return KdbxFile::load(KdbxFile::save(database, key), key).formatVersion;
    };
    EXPECT_EQ(savedVersion({4, 0}), (KdbxFormatVersion{4, 0}));
    EXPECT_EQ(savedVersion({4, 1}), (KdbxFormatVersion{4, 1}));
    EXPECT_EQ(savedVersion({4, 2}), (KdbxFormatVersion{4, 1}));
    EXPECT_EQ(savedVersion({3, 0}), (KdbxFormatVersion{4, 1}));
    EXPECT_EQ(savedVersion({3, 1}), (KdbxFormatVersion{4, 1}));
    EXPECT_EQ(savedVersion({5, 0}), (KdbxFormatVersion{4, 1}));
}

TEST(KdbxSaveTest, leavesTheCallersDatabaseAlone) {
    auto database = vault();
    database.formatVersion = {.major = 3, .minor = 1};
    const auto before = VaultJSON::of(database);
    (void)KdbxFile::save(database, key);
    EXPECT_EQ(VaultJSON::of(database), before);
}

TEST(KdbxSaveTest, raisesAKdbx3VaultWithItsRoundsAndAChaCha20InnerStream) {
    auto builder = VaultBuilder::kdbx3();
    builder.set(KdbxHeader::FieldID::transformRounds, fromHex("0700000000000000"));
    const auto file = KdbxFile::save(KdbxFile::load(builder.build(), key), key);

    EXPECT_EQ(toHex(ByteView(file).subspan(8, 4)), "01000400");
    const auto parts = takenApart(file);
    EXPECT_EQ(KdbxKeyDerivation::identifier(*parts.header.kdfParameters), KdbxUUIDs::kdfAes());
    EXPECT_EQ(*(*parts.header.kdfParameters)["R"], VariantValue{std::uint64_t{7}});
    EXPECT_EQ(parts.innerHeader.streamID, 3u);
}

TEST(KdbxSaveTest, writesSixHeaderFieldsInOrderAndNoOther) {
    const auto header = KdbxHeader::parse(KdbxFile::save(vault(), key));
    std::vector<int> tags;
    KdbxReader reader(header.rawData);
    (void)reader.read(12);
    while (!reader.isAtEnd()) {
        tags.push_back(reader.u8());
        (void)reader.read(reader.u32());
    }

    EXPECT_EQ(tags, (std::vector<int>{2, 3, 4, 7, 11, 0}));
    EXPECT_EQ(header.kdfParameters->keys(), (std::vector<std::string>{"$UUID", "R", "S"}));
    EXPECT_EQ((*header.kdfParameters)["S"]->asData()->size(), 32u);
    EXPECT_EQ(header.masterSeed.size(), 32u);
    EXPECT_EQ(header.encryptionIV.size(), 16u);
}

TEST(KdbxSaveTest, aChaCha20NonceHas12Bytes) {
    auto database = vault();
    database.cipher = KdbxCipher::chacha20;
    const auto header = KdbxHeader::parse(KdbxFile::save(database, key));
    EXPECT_EQ(header.cipherUUID, KdbxUUIDs::chacha20());
    EXPECT_EQ(header.encryptionIV.size(), 12u);
}

TEST(KdbxSaveTest, aCommentAndPublicDataOfAForeignFileAreGone) {
    auto builder = VaultBuilder::kdbx4();
    builder.add(1, bytesOf("not")).add(12, fromHex("0001 08 01000000 61 01000000 01 00"));
    const auto header = KdbxHeader::parse(KdbxFile::save(KdbxFile::load(builder.build(), key), key));
    EXPECT_FALSE(header.comment);
    EXPECT_FALSE(header.publicCustomData);
}

TEST(KdbxSaveTest, twoSavesShareNothing) {
    const auto first = takenApart(KdbxFile::save(vault(), key));
    const auto second = takenApart(KdbxFile::save(vault(), key));

    EXPECT_NE(first.header.masterSeed, second.header.masterSeed);
    EXPECT_NE(first.header.encryptionIV, second.header.encryptionIV);
    EXPECT_NE((*first.header.kdfParameters)["S"]->asData(), (*second.header.kdfParameters)["S"]->asData());
    EXPECT_NE(first.innerHeader.streamKey, second.innerHeader.streamKey);
    EXPECT_NE(first.ciphertext, second.ciphertext);
}

TEST(KdbxSaveTest, noRandomValueOfAFileIsAnother) {
    const auto parts = takenApart(KdbxFile::save(vault(), key));
    const auto salt = (*parts.header.kdfParameters)["S"]->asData().value();
    const auto& innerKey = parts.innerHeader.streamKey;

    EXPECT_EQ(innerKey.size(), 64u);
    EXPECT_NE(parts.header.masterSeed, salt);
    EXPECT_NE(copyOf(ByteView(innerKey).first(32)), parts.header.masterSeed);
    EXPECT_NE(copyOf(ByteView(innerKey).first(32)), salt);
    EXPECT_NE(copyOf(ByteView(innerKey).first(32)), copyOf(ByteView(innerKey).last(32)));
}

TEST(KdbxSaveTest, anUncompressedPayloadHoldsNoGzipMember) {
    auto database = vault();
    database.compressed = false;
    const auto parts = takenApart(KdbxFile::save(database, key));
    EXPECT_EQ(parts.header.compressionFlags, 0u);
    EXPECT_EQ(parts.plaintext[0], 1);  // the inner header's first field

    const auto compressed = takenApart(KdbxFile::save(vault(), key));
    EXPECT_EQ(compressed.header.compressionFlags, 1u);
    EXPECT_EQ(toHex(ByteView(compressed.plaintext).first(2)), "1f8b");
}

TEST(KdbxSaveTest, theDocumentIsWhatTheWriterGivesUnderTheFreshStream) {
    const auto database = vault();
    const auto parts = takenApart(KdbxFile::save(database, key));
    const auto stream = KdbxCrypto::makeInnerStream(KdbxCrypto::InnerStreamID::chaCha20, parts.innerHeader.streamKey);
    KdbxXML::Writer writer(*stream, 4);
    writer.writeDocument(database, std::nullopt);

    EXPECT_EQ(textOf(parts.document), textOf(writer.out()));
    EXPECT_EQ(textOf(parts.document).find("gizli"), std::string_view::npos);
}

TEST(KdbxSaveTest, theSavedFileIsHashedAndAuthenticatedAsRead) {
    const auto file = KdbxFile::save(vault(), key);
    const auto header = KdbxHeader::parse(file);
    const auto keys = KdbxKeys::derive(KdbxKeys::compositeKey(key), header);
    const auto end = static_cast<std::size_t>(header.endOffset);

    EXPECT_EQ(copyOf(ByteView(file).subspan(end, 32)), Sha2::sha256(header.rawData));
    EXPECT_EQ(copyOf(ByteView(file).subspan(end + 32, 32)),
              KdbxCrypto::headerHMAC(header.rawData, {.key = *keys.hmac}));
}

TEST(KdbxSaveTest, aPayloadOfMoreThanAMiBHasFullBlocksAndAShorterLast) {
    auto database = vault();
    database.compressed = false;
    database.cipher = KdbxCipher::chacha20;
    database.root.notes = std::string(2'500'000, 'n');
    const auto file = KdbxFile::save(database, key);

    KdbxReader reader(file);
    (void)reader.read(KdbxHeader::parse(file).endOffset + 64);
    std::vector<std::uint32_t> sizes;
    do {
        (void)reader.read(32);
        sizes.push_back(reader.u32());
        (void)reader.read(sizes.back());
    } while (sizes.back() != 0);

    ASSERT_EQ(sizes.size(), 4u);
    EXPECT_EQ(sizes[0], 1048576u);
    EXPECT_EQ(sizes[1], 1048576u);
    EXPECT_LT(sizes[2], 1048576u);
}

TEST(KdbxSaveTest, aVaultWithoutEntriesStillHasADataBlock) {
    auto database = vault();
    database.root.entries = {};
    const auto parts = takenApart(KdbxFile::save(database, key));
    EXPECT_FALSE(parts.ciphertext.empty());
    EXPECT_FALSE(parts.document.empty());
}

TEST(KdbxSaveTest, attachmentsGoBackIntoTheInnerHeader) {
    auto builder = VaultBuilder::kdbx4();
    builder.innerHeader.binaries = {{1, Bytes(300, 7)}, {0, {}}, {255, fromHex("00")}};
    const auto parts = takenApart(KdbxFile::save(KdbxFile::load(builder.build(), key), key));
    EXPECT_EQ(parts.innerHeader.binaries, builder.innerHeader.binaries);
}

TEST(KdbxSaveTest, refusesNoCredentialsAndAnUnusableKeyFile) {
    EXPECT_EQ(outcomeOf([] { return KdbxFile::save(vault(), KdbxKey()); }), invalidCredentials);
    EXPECT_EQ(outcomeOf([] {
                  return KdbxFile::save(vault(), {"p", copyOf(bytesOf("<KeyFile/>"))});
              }),
              corruptedData("anahtar dosyasında <Key><Data> yok"));
}

TEST(KdbxSaveTest, failuresOfTheKeyDerivationPassThrough) {
    auto database = vault();
    database.kdf = {KdfSettings::Argon2{KdfSettings::Variant::argon2id, 8, 0, 1}};
    EXPECT_EQ(outcomeOf([&] { return KdbxFile::save(database, key); }),
              unsupportedKdf("geçersiz Argon2 parametreleri"));
    database.kdf = {KdfSettings::Argon2{KdfSettings::Variant::argon2d, 1, 1, 1}};
    EXPECT_TRUE(outcomeOf([&] { return KdbxFile::save(database, key); }).starts_with("Argon2.Error.invalidMemory:"));
    database.kdf = {KdfSettings::Argon2{KdfSettings::Variant::argon2d, std::uint64_t{1} << 32, 1, 1}};
    EXPECT_EQ(outcomeOf([&] { return KdbxFile::save(database, key); }),
              unsupportedKdf("Argon2 parametreleri aralık dışı"));
}

TEST(KdbxSaveTest, anotherKeyFileIsNotNoticedTheVaultIsSimplyUnderIt) {
    const KdbxKey other{"parola", Bytes(32, 1)};
    const auto file = KdbxFile::save(vault(), other);
    EXPECT_EQ(outcomeOf([&] { return KdbxFile::load(file, key); }), invalidCredentials);
    EXPECT_EQ(outcomeOf([&] { return KdbxFile::load(file, other); }), "nothing");
}

TEST(KdbxSaveTest, aHeaderWithoutAnHMACKeyIsRefused) {
    auto header = KdbxFile::freshHeader(vault());
    header.major = 3;
    header.transformSeed = Bytes(32, 1);
    header.transformRounds = 1;
    EXPECT_EQ(outcomeOf([&] { return KdbxFile::saveBehind(header, vault(), key); }),
              cryptoFailure("HMAC anahtarı türetilemedi"));
}

TEST(KdbxTransformationTest, isAskedOnceByASaveAndOnceByTheLoadOfItsFile) {
    int asked = 0;
    const auto counting = [&](ByteView compositeKey, const KdbxHeader& header) {
        ++asked;
        return KdbxKeys::transform(compositeKey, header);
    };

    const auto file = KdbxFile::save(vault(), key, counting);
    const auto loaded = KdbxFile::load(file, key, counting);

    EXPECT_EQ(asked, 2);
    EXPECT_EQ(loaded.root.name, "Kasa");
}

TEST(KdbxTransformationTest, decidesWhichKeyAFileHas) {
    const auto another = [](ByteView, const KdbxHeader&) { return Bytes(32, 7); };

    const auto file = KdbxFile::save(vault(), key, another);

    EXPECT_EQ(outcomeOf([&] { return KdbxFile::load(file, key); }),
              "KdbxError.invalidCredentials: Ana parola veya anahtar dosyası hatalı.");
    EXPECT_EQ(KdbxFile::load(file, key, another).root.name, "Kasa");
}

}  // namespace
