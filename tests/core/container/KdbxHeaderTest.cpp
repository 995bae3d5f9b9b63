// SPDX-License-Identifier: MIT
#include "core/container/KdbxHeader.h"

#include "core/primitives/LittleEndian.h"
#include "tests/support/Failures.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using FieldID = KdbxHeader::FieldID;

/// The bytes of a header, field by field.
class HeaderBytes {
public:
    HeaderBytes(std::uint16_t major, std::uint16_t minor) : m_isKdbx4(major > 3) {
        append(m_bytes, fromHex("03d9a29a 67fb4bb5"));
        appendLE(m_bytes, minor);
        appendLE(m_bytes, major);
    }

    HeaderBytes& field(std::uint8_t tag, ByteView value) { return field(tag, value, value.size()); }
    HeaderBytes& field(std::uint8_t tag, ByteView value, std::size_t declaredLength) {
        m_bytes.push_back(tag);
        if (m_isKdbx4)
            appendLE(m_bytes, static_cast<std::uint32_t>(declaredLength));
        else
            appendLE(m_bytes, static_cast<std::uint16_t>(declaredLength));
        append(m_bytes, value);
        return *this;
    }
    HeaderBytes& field(FieldID id, ByteView value) { return field(static_cast<std::uint8_t>(id), value); }
    HeaderBytes& end() { return field(FieldID::endOfHeader, fromHex("0d0a0d0a")); }

    [[nodiscard]] ByteView bytes() const { return m_bytes; }
    [[nodiscard]] KdbxHeader parsed() const { return KdbxHeader::parse(m_bytes); }
    [[nodiscard]] std::string outcome() const {
        return outcomeOf([&] { return KdbxHeader::parse(m_bytes); });
    }

private:
    Bytes m_bytes;
    bool m_isKdbx4;
};

const Bytes seed(32, 0x11);
const Bytes emptyDictionary = fromHex("000100");

HeaderBytes kdbx4() {
    return HeaderBytes(4, 1).field(FieldID::masterSeed, seed).field(FieldID::kdfParameters, emptyDictionary);
}

HeaderBytes kdbx3() {
    return HeaderBytes(3, 1)
        .field(FieldID::masterSeed, seed)
        .field(FieldID::transformSeed, Bytes(32, 0x22))
        .field(FieldID::transformRounds, fromHex("0100000000000000"))
        .field(FieldID::streamStartBytes, Bytes(32, 0x33))
        .field(FieldID::innerRandomStreamKey, Bytes(32, 0x44));
}

KdbxHeader headerWith(VariantDictionary parameters) {
    KdbxHeader header;
    header.kdfParameters = std::move(parameters);
    return header;
}

VariantDictionary parametersOf(const UUID& id) {
    VariantDictionary parameters;
    parameters.set("$UUID", VariantValue{copyOf(id.kdbxBytes())});
    return parameters;
}

TEST(KdbxUUIDsTest, areThePublishedOnes) {
    EXPECT_EQ(KdbxUUIDs::aes256().text(), "31C1F2E6-BF71-4350-BE58-05216AFC5AFF");
    EXPECT_EQ(KdbxUUIDs::chacha20().text(), "D6038A2B-8B6F-4CB5-A524-339A31DBB59A");
    EXPECT_EQ(KdbxUUIDs::twofish().text(), "AD68F29F-576F-4BB9-A36A-D47AF965346C");
    EXPECT_EQ(KdbxUUIDs::kdfAes().text(), "C9D9F39A-628A-4460-BF74-0D08C18A4FEA");
    EXPECT_EQ(KdbxUUIDs::kdfAesKdbx3(), KdbxUUIDs::kdfAes());
    EXPECT_EQ(KdbxUUIDs::kdfArgon2d().text(), "EF636DDF-8C29-444B-91F7-A9A403E30A0C");
    EXPECT_EQ(KdbxUUIDs::kdfArgon2id().text(), "9E298B19-56DB-4773-B23D-FC3EC6F0A1E6");
}

TEST(KdbxHeaderTest, anEmptyHeaderClaimsVersion4Point1AESAndGzip) {
    const KdbxHeader header;

    EXPECT_EQ(header.major, 4);
    EXPECT_EQ(header.minor, 1);
    EXPECT_EQ(header.cipherUUID, KdbxUUIDs::aes256());
    EXPECT_EQ(header.compressionFlags, 1u);
    EXPECT_TRUE(header.masterSeed.empty() && header.encryptionIV.empty() && header.rawData.empty());
    EXPECT_FALSE(header.kdfParameters || header.publicCustomData || header.transformSeed || header.transformRounds ||
                 header.streamStartBytes || header.innerRandomStreamKey || header.innerRandomStreamID ||
                 header.comment);
    EXPECT_EQ(header.endOffset, 0);
}

TEST(KdbxHeaderTest, aFileOfLessThan12BytesIsNoVaultWhateverItBeginsWith) {
    const auto preamble = fromHex("03d9a29a 67fb4bb5 01000400");
    for (std::size_t size = 0; size < preamble.size(); ++size) {
        const auto prefix = ByteView(preamble).first(size);
        EXPECT_EQ(outcomeOf([&] { return KdbxHeader::parse(prefix); }), notAKdbxFile) << size;
    }
}

TEST(KdbxHeaderTest, refusesEitherSignatureWithAnyByteChanged) {
    const auto header = kdbx4().end();
    for (std::size_t i = 0; i < 8; ++i) {
        auto bytes = copyOf(header.bytes());
        bytes[i] ^= 1;
        EXPECT_EQ(outcomeOf([&] { return KdbxHeader::parse(bytes); }), notAKdbxFile) << i;
    }
}

TEST(KdbxHeaderTest, failsOnTheFirstFieldOfAFileThatEndsBehindItsVersion) {
    EXPECT_EQ(HeaderBytes(3, 1).outcome(), shortData(1, 0));
}

TEST(KdbxHeaderTest, acceptsVersion3WithAnyMinorAndVersion4WithMinor0Or1) {
    const std::string prefix = "KdbxError.unsupportedVersion: Desteklenmeyen KDBX sürümü: ";
    for (const int minor : {0, 1, 4, 9, 65535})
        EXPECT_EQ(HeaderBytes(3, static_cast<std::uint16_t>(minor)).outcome(), shortData(1, 0)) << minor;
    for (const int minor : {0, 1})
        EXPECT_EQ(HeaderBytes(4, static_cast<std::uint16_t>(minor)).outcome(), shortData(1, 0)) << minor;
    EXPECT_EQ(HeaderBytes(4, 2).outcome(), prefix + "4.2");
    EXPECT_EQ(HeaderBytes(5, 0).outcome(), prefix + "5.0");
    EXPECT_EQ(HeaderBytes(2, 1).outcome(), prefix + "2.1");
    EXPECT_EQ(HeaderBytes(0, 65535).outcome(), prefix + "0.65535");
}

TEST(KdbxHeaderTest, aLengthThatRunsPastTheInputFailsWithBothCounts) {
    EXPECT_EQ(HeaderBytes(3, 1).field(1, Bytes(5), 0xFFFF).outcome(), shortData(65535, 5));
    EXPECT_EQ(HeaderBytes(4, 1).field(1, Bytes(5), 0xFFFFFFFF).outcome(), shortData(4294967295, 5));
    EXPECT_EQ(HeaderBytes(4, 1).field(99, Bytes(5), 6).outcome(), shortData(6, 5));
}

TEST(KdbxHeaderTest, aFieldCutInItsLengthFailsWithTheLengthsSize) {
    const auto cut = [](const HeaderBytes& header) {
        const auto bytes = header.bytes().first(14);
        return outcomeOf([&] { return KdbxHeader::parse(bytes); });
    };
    EXPECT_EQ(cut(HeaderBytes(3, 1).field(1, Bytes(5))), shortData(2, 1));
    EXPECT_EQ(cut(HeaderBytes(4, 1).field(1, Bytes(5))), shortData(4, 1));
}

TEST(KdbxHeaderTest, passesOverUnknownFieldsAndStillWantsAnEnd) {
    EXPECT_EQ(kdbx4().field(99, Bytes(7)).field(13, Bytes()).field(255, Bytes(1)).end().outcome(), "nothing");
    EXPECT_EQ(kdbx4().field(99, Bytes(7)).outcome(), shortData(1, 0));
}

TEST(KdbxHeaderTest, wantsACipherIDOf16Bytes) {
    EXPECT_EQ(kdbx4().field(FieldID::cipherID, Bytes(15)).end().outcome(), corruptedData("CipherID 16 bayt değil"));
    EXPECT_EQ(kdbx4().field(FieldID::cipherID, Bytes(17)).end().outcome(), corruptedData("CipherID 16 bayt değil"));
    EXPECT_EQ(kdbx4().field(FieldID::cipherID, Bytes()).end().outcome(), corruptedData("CipherID 16 bayt değil"));
    EXPECT_EQ(kdbx4().field(FieldID::cipherID, Bytes(16, 7)).end().outcome(), "nothing");
}

TEST(KdbxHeaderTest, readsACompressionFieldOfLessThan4BytesAsNone) {
    const auto header = kdbx4().field(FieldID::compressionFlags, fromHex("010000")).end().parsed();
    EXPECT_EQ(header.compressionFlags, 0u);
    EXPECT_FALSE(header.compressed());
    EXPECT_EQ(kdbx4().field(FieldID::compressionFlags, fromHex("0100000099")).end().parsed().compressionFlags, 1u);
}

TEST(KdbxHeaderTest, refusesAnUnknownCompressionBeforeItMissesTheSeed) {
    EXPECT_EQ(HeaderBytes(4, 1).field(FieldID::compressionFlags, fromHex("02000000")).outcome(),
              corruptedData("bilinmeyen sıkıştırma bayrağı 2"));
    EXPECT_EQ(HeaderBytes(4, 1).field(FieldID::compressionFlags, fromHex("ffffffff")).outcome(),
              corruptedData("bilinmeyen sıkıştırma bayrağı 4294967295"));
}

TEST(KdbxHeaderTest, wantsAMasterSeedOf32BytesBeforeItMissesAnythingElse) {
    const auto expected = corruptedData("MasterSeed 32 bayt olmalı");
    EXPECT_EQ(HeaderBytes(4, 1).end().outcome(), expected);
    EXPECT_EQ(HeaderBytes(3, 1).end().outcome(), expected);
    EXPECT_EQ(HeaderBytes(4, 1).field(FieldID::masterSeed, Bytes(31)).end().outcome(), expected);
    EXPECT_EQ(HeaderBytes(4, 1).field(FieldID::masterSeed, Bytes(33)).end().outcome(), expected);
}

TEST(KdbxHeaderTest, wantsKdfParametersInKdbx4Alone) {
    EXPECT_EQ(HeaderBytes(4, 0).field(FieldID::masterSeed, seed).end().outcome(),
              corruptedData("KDBX 4 başlığında KdfParameters yok"));
    EXPECT_EQ(kdbx3().end().outcome(), "nothing");
}

TEST(KdbxHeaderTest, wantsFourFieldsInKdbx3) {
    const std::array required{FieldID::transformSeed, FieldID::transformRounds, FieldID::streamStartBytes,
                              FieldID::innerRandomStreamKey};
    for (const auto left : required) {
        auto header = HeaderBytes(3, 1).field(FieldID::masterSeed, seed);
        for (const auto id : required) {
            if (id != left)
                header.field(id, Bytes(8));
        }
        EXPECT_EQ(header.end().outcome(), corruptedData("KDBX 3 başlığında zorunlu alanlar eksik"))
            << static_cast<int>(left);
    }
}

TEST(KdbxHeaderTest, needsNeitherCipherNorIVNorInnerStream) {
    const auto header = kdbx3().end().parsed();

    EXPECT_EQ(header.cipherUUID, KdbxUUIDs::aes256());
    EXPECT_EQ(header.compressionFlags, 1u);
    EXPECT_TRUE(header.encryptionIV.empty());
    EXPECT_FALSE(header.innerRandomStreamID);
}

TEST(KdbxHeaderTest, readsAShortNumberAsZeroAndCountsItAsPresent) {
    const auto header = kdbx3()
                            .field(FieldID::transformRounds, Bytes(7, 0xFF))
                            .field(FieldID::innerRandomStreamID, Bytes(3, 0xFF))
                            .end()
                            .parsed();

    EXPECT_EQ(header.transformRounds, 0u);
    EXPECT_EQ(header.innerRandomStreamID, 0u);
}

TEST(KdbxHeaderTest, keepsTheLastOfARepeatedField) {
    const auto header = kdbx4()
                            .field(FieldID::comment, bytesOf("ilk"))
                            .field(FieldID::comment, bytesOf("son"))
                            .field(FieldID::cipherID, KdbxUUIDs::twofish().kdbxBytes())
                            .field(FieldID::cipherID, KdbxUUIDs::chacha20().kdbxBytes())
                            .end()
                            .parsed();

    EXPECT_EQ(textOf(*header.comment), "son");
    EXPECT_EQ(header.cipher(), KdbxCipher::chacha20);
}

TEST(KdbxHeaderTest, storesFieldsOfTheOtherVersionAllTheSame) {
    const auto four = kdbx4()
                          .field(FieldID::transformSeed, Bytes(3, 1))
                          .field(FieldID::transformRounds, fromHex("0500000000000000"))
                          .field(FieldID::streamStartBytes, Bytes(4, 2))
                          .field(FieldID::innerRandomStreamKey, Bytes(5, 3))
                          .field(FieldID::innerRandomStreamID, fromHex("02000000"))
                          .end()
                          .parsed();
    const auto three = kdbx3().field(FieldID::kdfParameters, emptyDictionary).end().parsed();

    EXPECT_EQ(four.transformSeed, Bytes(3, 1));
    EXPECT_EQ(four.transformRounds, 5u);
    EXPECT_EQ(four.streamStartBytes, Bytes(4, 2));
    EXPECT_EQ(four.innerRandomStreamKey, Bytes(5, 3));
    EXPECT_EQ(four.innerRandomStreamID, 2u);
    EXPECT_TRUE(three.kdfParameters && three.kdfParameters->isEmpty());
}

TEST(KdbxHeaderTest, aBrokenDictionaryEndsTheParse) {
    EXPECT_EQ(kdbx4().field(FieldID::kdfParameters, fromHex("000200")).end().outcome(),
              corruptedData("desteklenmeyen VariantDictionary sürümü 200"));
    EXPECT_EQ(kdbx4().field(FieldID::publicCustomData, fromHex("0001")).end().outcome(), shortData(1, 0));
}

TEST(KdbxHeaderTest, keepsTheFilesOwnBytesUpToTheEndField) {
    const auto header = kdbx4().end();
    auto file = copyOf(header.bytes());
    append(file, bytesOf("yük"));

    const auto parsed = KdbxHeader::parse(file);

    EXPECT_EQ(parsed.endOffset, static_cast<std::int64_t>(header.bytes().size()));
    EXPECT_EQ(toHex(parsed.rawData), toHex(header.bytes()));
}

TEST(KdbxHeaderTest, theEndFieldMayHoldAnything) {
    EXPECT_EQ(kdbx4().field(FieldID::endOfHeader, Bytes()).outcome(), "nothing");
    EXPECT_EQ(kdbx4().field(FieldID::endOfHeader, Bytes(100)).outcome(), "nothing");
}

TEST(KdbxHeaderTest, namesTheCipherThatItDoesNotOffer) {
    KdbxHeader header;
    EXPECT_EQ(header.cipher(), KdbxCipher::aes256);
    header.cipherUUID = KdbxUUIDs::twofish();
    EXPECT_EQ(outcomeOf([&] { return header.cipher(); }), unsupportedCipher("Twofish"));
    header.cipherUUID = *UUID::fromText("abcdef01-2345-6789-abcd-ef0123456789");
    EXPECT_EQ(outcomeOf([&] { return header.cipher(); }), unsupportedCipher("ABCDEF01-2345-6789-ABCD-EF0123456789"));
}

TEST(KdbxHeaderTest, kdfSettingsOfKdbx3AreItsRoundsAndNothingElse) {
    KdbxHeader header;
    header.major = 3;
    EXPECT_EQ(header.kdfSettings(), KdfSettings{KdfSettings::AesKdf{6000}});
    header.transformRounds = 7;
    header.kdfParameters = parametersOf(KdbxUUIDs::kdfArgon2d());
    EXPECT_EQ(header.kdfSettings(), KdfSettings{KdfSettings::AesKdf{7}});
}

TEST(KdbxHeaderTest, kdfSettingsNeedAUsableIdentifier) {
    const auto expected = unsupportedKdf("KdfParameters içinde $UUID yok");
    const auto settingsOf = [](const KdbxHeader& header) { return outcomeOf([&] { return header.kdfSettings(); }); };
    VariantDictionary text;
    text.set("$UUID", VariantValue{std::string("C9D9F39A-628A-4460-BF74-0D08C18A4FEA")});
    VariantDictionary shortBytes;
    shortBytes.set("$UUID", VariantValue{Bytes(15)});
    VariantDictionary missing;
    missing.set("R", VariantValue{std::uint64_t{1}});

    EXPECT_EQ(settingsOf(KdbxHeader()), expected);
    EXPECT_EQ(settingsOf(headerWith({})), expected);
    EXPECT_EQ(settingsOf(headerWith(text)), expected);
    EXPECT_EQ(settingsOf(headerWith(shortBytes)), expected);
    EXPECT_EQ(settingsOf(headerWith(missing)), expected);
}

TEST(KdbxHeaderTest, kdfSettingsNameAnIdentifierThatTheyDoNotKnow) {
    EXPECT_EQ(outcomeOf([] { return headerWith(parametersOf(KdbxUUIDs::twofish())).kdfSettings(); }),
              unsupportedKdf("AD68F29F-576F-4BB9-A36A-D47AF965346C"));
}

TEST(KdbxHeaderTest, kdfSettingsOfAESFallBackTo6000Rounds) {
    auto parameters = parametersOf(KdbxUUIDs::kdfAes());
    EXPECT_EQ(headerWith(parameters).kdfSettings(), KdfSettings{KdfSettings::AesKdf{6000}});
    parameters.set("R", VariantValue{std::int32_t{12}});
    EXPECT_EQ(headerWith(parameters).kdfSettings(), KdfSettings{KdfSettings::AesKdf{12}});
    parameters.set("R", VariantValue{true});
    EXPECT_EQ(headerWith(parameters).kdfSettings(), KdfSettings{KdfSettings::AesKdf{6000}});
}

TEST(KdbxHeaderTest, kdfSettingsOfArgon2FallBackFieldByField) {
    auto parameters = parametersOf(KdbxUUIDs::kdfArgon2d());
    EXPECT_EQ(headerWith(parameters).kdfSettings(),
              (KdfSettings{KdfSettings::Argon2{KdfSettings::Variant::argon2d, 65536, 2, 2}}));

    parameters = parametersOf(KdbxUUIDs::kdfArgon2id());
    parameters.set("M", VariantValue{std::string("1048576")});
    parameters.set("I", VariantValue{Bytes(8)});
    parameters.set("P", VariantValue{std::uint64_t{1} << 32});
    EXPECT_EQ(headerWith(parameters).kdfSettings(),
              (KdfSettings{KdfSettings::Argon2{KdfSettings::Variant::argon2id, 65536, 2, 2}}));

    parameters.set("M", VariantValue{std::uint64_t{1048576 + 1023}});
    parameters.set("I", VariantValue{std::uint32_t{3}});
    parameters.set("P", VariantValue{std::int64_t{4}});
    EXPECT_EQ(headerWith(parameters).kdfSettings(),
              (KdfSettings{KdfSettings::Argon2{KdfSettings::Variant::argon2id, 1024, 3, 4}}));
}

TEST(KdbxHeaderTest, kdfSettingsNeverGiveLessThan8KiB) {
    auto parameters = parametersOf(KdbxUUIDs::kdfArgon2id());
    parameters.set("M", VariantValue{std::uint64_t{1024}});
    EXPECT_EQ(headerWith(parameters).kdfSettings(),
              (KdfSettings{KdfSettings::Argon2{KdfSettings::Variant::argon2id, 8, 2, 2}}));
}

TEST(KdbxHeaderTest, kdfParametersStandInTheirOrderOnDisk) {
    const Bytes salt(32, 9);
    using Keys = std::vector<std::string>;

    const auto argon2 =
        KdbxHeader::kdfParametersFor({KdfSettings::Argon2{KdfSettings::Variant::argon2d, 64, 5, 3}}, salt);
    EXPECT_EQ(argon2.keys(), (Keys{"$UUID", "S", "P", "M", "I", "V"}));
    EXPECT_EQ(argon2["$UUID"]->asData(), copyOf(KdbxUUIDs::kdfArgon2d().kdbxBytes()));
    EXPECT_EQ(argon2["S"]->asData(), salt);
    EXPECT_EQ(*argon2["P"], VariantValue{std::uint32_t{3}});
    EXPECT_EQ(*argon2["M"], VariantValue{std::uint64_t{65536}});
    EXPECT_EQ(*argon2["I"], VariantValue{std::uint64_t{5}});
    EXPECT_EQ(*argon2["V"], VariantValue{std::uint32_t{19}});

    const auto argon2id = KdbxHeader::kdfParametersFor(KdfSettings::recommended(), salt);
    EXPECT_EQ(argon2id["$UUID"]->asData(), copyOf(KdbxUUIDs::kdfArgon2id().kdbxBytes()));
    EXPECT_EQ(*argon2id["M"], VariantValue{std::uint64_t{268435456}});

    const auto aes = KdbxHeader::kdfParametersFor({KdfSettings::AesKdf{77}}, salt);
    EXPECT_EQ(aes.keys(), (Keys{"$UUID", "R", "S"}));
    EXPECT_EQ(aes["$UUID"]->asData(), copyOf(KdbxUUIDs::kdfAes().kdbxBytes()));
    EXPECT_EQ(*aes["R"], VariantValue{std::uint64_t{77}});
    EXPECT_EQ(aes["S"]->asData(), salt);
}

TEST(KdbxHeaderTest, writesAKdbx4HeaderInItsOrder) {
    KdbxHeader header;
    header.minor = 0;
    header.masterSeed = seed;
    header.encryptionIV = Bytes(16, 0x55);
    header.kdfParameters = VariantDictionary();
    header.publicCustomData = VariantDictionary();
    header.comment = copyOf(bytesOf("not"));

    EXPECT_EQ(toHex(header.serialize()),
              "03d9a29a67fb4bb5"
              "00000400"
              "01"
              "03000000"
              "6e6f74"
              "02"
              "10000000"
              "31c1f2e6bf714350be5805216afc5aff"
              "03"
              "04000000"
              "01000000"
              "04"
              "20000000" +
                  toHex(seed) +
                  "07"
                  "10000000" +
                  toHex(Bytes(16, 0x55)) +
                  "0b"
                  "03000000"
                  "000100"
                  "00"
                  "04000000"
                  "0d0a0d0a");
}

TEST(KdbxHeaderTest, writesPublicCustomDataUnlessItIsEmpty) {
    KdbxHeader header;
    header.masterSeed = seed;
    header.kdfParameters = VariantDictionary();
    VariantDictionary custom;
    custom.set("a", VariantValue{true});
    header.publicCustomData = custom;

    EXPECT_EQ(KdbxHeader::parse(header.serialize()).publicCustomData, custom);
    header.publicCustomData = VariantDictionary();
    EXPECT_FALSE(KdbxHeader::parse(header.serialize()).publicCustomData);
    header.kdfParameters.reset();
    EXPECT_EQ(outcomeOf([&] { return KdbxHeader::parse(header.serialize()); }),
              corruptedData("KDBX 4 başlığında KdfParameters yok"));
}

TEST(KdbxHeaderTest, writesAKdbx3HeaderInItsOrderWithItsFallbacks) {
    KdbxHeader header;
    header.major = 3;
    header.masterSeed = seed;
    header.encryptionIV = Bytes(2, 0x55);
    header.kdfParameters = VariantDictionary();

    EXPECT_EQ(toHex(header.serialize()),
              "03d9a29a67fb4bb5"
              "01000300"
              "02"
              "1000"
              "31c1f2e6bf714350be5805216afc5aff"
              "03"
              "0400"
              "01000000"
              "04"
              "2000" +
                  toHex(seed) +
                  "05"
                  "0000"
                  "06"
                  "0800"
                  "7017000000000000"
                  "07"
                  "0200"
                  "5555"
                  "08"
                  "0000"
                  "09"
                  "0000"
                  "0a"
                  "0400"
                  "02000000"
                  "00"
                  "0400"
                  "0d0a0d0a");
}

TEST(KdbxHeaderTest, whatIsWrittenReadsBackTheSame) {
    KdbxHeader header;
    header.cipherUUID = KdbxUUIDs::chacha20();
    header.compressionFlags = 0;
    header.masterSeed = seed;
    header.encryptionIV = Bytes(12, 0x55);
    header.kdfParameters = KdbxHeader::kdfParametersFor(KdfSettings::recommended(), Bytes(32, 6));
    header.comment = copyOf(bytesOf("bir not"));

    const auto parsed = KdbxHeader::parse(header.serialize());

    EXPECT_EQ(parsed.cipherUUID, header.cipherUUID);
    EXPECT_EQ(parsed.compressionFlags, 0u);
    EXPECT_EQ(parsed.masterSeed, header.masterSeed);
    EXPECT_EQ(parsed.encryptionIV, header.encryptionIV);
    EXPECT_EQ(parsed.kdfParameters, header.kdfParameters);
    EXPECT_EQ(parsed.comment, header.comment);
    EXPECT_EQ(parsed.kdfSettings(), KdfSettings::recommended());
}

TEST(KdbxHeaderTest, aKdbx3HeaderReadsBackTheSame) {
    const auto header = kdbx3().field(FieldID::innerRandomStreamID, fromHex("03000000")).end().parsed();

    const auto parsed = KdbxHeader::parse(header.serialize());

    EXPECT_EQ(parsed.transformSeed, header.transformSeed);
    EXPECT_EQ(parsed.transformRounds, header.transformRounds);
    EXPECT_EQ(parsed.streamStartBytes, header.streamStartBytes);
    EXPECT_EQ(parsed.innerRandomStreamKey, header.innerRandomStreamKey);
    EXPECT_EQ(parsed.innerRandomStreamID, 3u);
}

TEST(KdbxHeaderTest, serializingLeavesTheFilesOwnBytesAlone) {
    auto header = kdbx4().field(99, Bytes(7)).end().parsed();
    const auto raw = header.rawData;

    const auto written = header.serialize();

    EXPECT_EQ(header.rawData, raw);
    EXPECT_NE(written, raw);
    EXPECT_EQ(header.endOffset, static_cast<std::int64_t>(raw.size()));
}

TEST(KdbxHeaderDeathTest, aKdbx3FieldOf65536BytesIsAProgrammersFault) {
    KdbxHeader header;
    header.major = 3;
    header.comment = Bytes(65535);
    (void)header.serialize();
    header.comment = Bytes(65536);
    EXPECT_DEATH((void)header.serialize(), "precondition failed");
}

TEST(KdbxHeaderDeathTest, memoryThatOverflowsInBytesIsAProgrammersFault) {
    const auto most = std::numeric_limits<std::uint64_t>::max() / 1024;
    (void)KdbxHeader::kdfParametersFor({KdfSettings::Argon2{KdfSettings::Variant::argon2id, most, 1, 1}}, {});
    EXPECT_DEATH(
        (void)KdbxHeader::kdfParametersFor({KdfSettings::Argon2{KdfSettings::Variant::argon2id, most + 1, 1, 1}}, {}),
        "precondition failed");
}

}  // namespace
