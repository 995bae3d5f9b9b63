// SPDX-License-Identifier: MIT
// Vault files made to do harm: each ends in the failure that is right for it, in bounded time and memory.
#include "core/container/KdbxCrypto.h"
#include "core/container/KdbxFile.h"
#include "core/model/KdbxError.h"
#include "core/primitives/Base64.h"
#include "core/primitives/Gzip.h"
#include "core/primitives/LittleEndian.h"
#include "core/primitives/Sha2.h"
#include "tests/core/container/VaultBuilder.h"
#include "tests/support/Child.h"
#include "tests/support/Failures.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using FieldID = KdbxHeader::FieldID;

constexpr std::int64_t mebibyte = 1024;  // in KiB

const KdbxKey key{"parola", std::nullopt};

std::string loading(ByteView file) {
    return outcomeOf([&] { return KdbxFile::load(file, key); });
}

std::string loading(const VaultBuilder& builder) {
    return loading(builder.build());
}

bool runsShort(const std::string& outcome) {
    return outcome.starts_with(corruptedData("beklenenden kısa veri ("));
}

/// Where each field of a header starts, and how large its value is.
struct FieldPlace {
    FieldID id;
    std::size_t lengthOffset;
    std::size_t valueOffset;
    std::size_t size;
};

std::vector<FieldPlace> fieldsOf(ByteView header, bool isKdbx4) {
    std::vector<FieldPlace> places;
    KdbxReader reader(header);
    (void)reader.read(12);
    while (!reader.isAtEnd()) {
        const auto id = FieldID{reader.u8()};
        const auto lengthOffset = static_cast<std::size_t>(reader.offset());
        const std::size_t size = isKdbx4 ? reader.u32() : reader.u16();
        places.push_back({id, lengthOffset, static_cast<std::size_t>(reader.offset()), size});
        (void)reader.read(static_cast<std::int64_t>(size));
    }
    return places;
}

/// Where each HMAC block starts, the terminator too.
std::vector<std::size_t> blockStarts(ByteView file, std::size_t offset) {
    std::vector<std::size_t> starts;
    for (std::uint32_t size = 1; size > 0; offset += 36 + size) {
        starts.push_back(offset);
        size = loadLE<std::uint32_t>(&file[offset + 32]);
    }
    return starts;
}

void storeAllOnes(Bytes& bytes, std::size_t offset, std::size_t size) {
    std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(offset), size, std::uint8_t{0xFF});
}

/// A KDBX 3 vault whose document holds the hash of its header, so that nothing in the header is left unchecked.
VaultBuilder kdbx3WithHeaderHash() {
    auto builder = VaultBuilder::kdbx3();
    builder.document = "<KeePassFile><Meta><HeaderHash>" + Base64::encode(Sha2::sha256(builder.header())) +
                       "</HeaderHash></Meta><Root><Group/></Root></KeePassFile>";
    return builder;
}

/// DEFLATE of zeros at its densest: two bits are a match of 258 bytes (RFC 1951, section 3.2.7).
class ZerosAtTheirDensest {
public:
    explicit ZerosAtTheirDensest(std::size_t bodySize) {
        put(1, 1);   // the last block,
        put(2, 2);   // with codes of its own:
        put(29, 5);  // 286 literals and lengths,
        put(0, 5);   // 1 distance,
        put(14, 4);  // 18 code lengths, of which 0, 1, 2 and 18 are used, by 2 bits each
        for (const int symbol : {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1})
            put(symbol == 18 || symbol < 3 ? 2 : 0, 3);
        putLength(2);  // the literal 0: "10"
        putUnused(138);
        putUnused(117);
        putLength(2);  // the end of the block: "11"
        putUnused(28);
        putLength(1);  // 258 bytes: "0"
        putLength(1);  // from 1 byte back: "0"
        put(1, 2);     // one literal, and then nothing but matches, which are zeros too
        const auto matches = (bodySize * 8 - m_bitCount) / 2 - 1;
        m_outputSize = 1 + 258 * matches;
        m_bitCount += 2 * matches;
        m_bytes.resize(m_bitCount / 8 + 1, 0);
        if (m_bitCount % 8 == 0)
            m_bytes.pop_back();
        put(3, 2);
    }

    [[nodiscard]] std::size_t outputSize() const { return m_outputSize; }
    [[nodiscard]] Bytes gzipMember(std::uint32_t crc) const {
        Bytes member{0x1F, 0x8B, 8, 0, 0, 0, 0, 0, 0, 3};
        append(member, m_bytes);
        appendLE(member, crc);
        appendLE(member, static_cast<std::uint32_t>(m_outputSize));
        return member;
    }

private:
    /// Bits from the lowest.
    void put(unsigned value, int bits) {
        for (int i = 0; i < bits; ++i, ++m_bitCount) {
            if (m_bitCount % 8 == 0)
                m_bytes.push_back(0);
            m_bytes.back() = static_cast<std::uint8_t>(m_bytes.back() | (value >> i & 1) << m_bitCount % 8);
        }
    }
    /// The code length 1 by its code "01", 2 by "10"; codes stand with their first bit first.
    void putLength(int length) { put(length == 1 ? 2 : 1, 2); }
    /// Symbol 18, by its code "11": 11 to 138 unused codes.
    void putUnused(unsigned count) {
        put(3, 2);
        put(count - 11, 7);
    }

    Bytes m_bytes;
    std::size_t m_bitCount = 0;
    std::size_t m_outputSize = 0;
};

TEST(HostileVaultTest, anEmptyFileIsNoVault) {
    EXPECT_EQ(loading(ByteView()), notAKdbxFile);
}

TEST(HostileVaultTest, everyFlippedByteOfAKdbx4FileIsReportedByItsRegion) {
    auto builder = VaultBuilder::kdbx4();
    builder.blockSize = 128;
    const auto file = builder.build();
    const auto end = builder.header().size();
    const auto starts = blockStarts(file, end + 64);
    ASSERT_EQ(starts.size(), 4u);

    for (const std::uint8_t mask : {0x01, 0x80, 0xFF}) {
        for (std::size_t i = 0; i < file.size(); ++i) {
            auto changed = file;
            changed[i] = static_cast<std::uint8_t>(changed[i] ^ mask);
            const auto outcome = loading(changed);
            SCOPED_TRACE("byte " + std::to_string(i) + " by " + std::to_string(mask) + ": " + outcome);

            if (i < 8) {
                EXPECT_EQ(outcome, notAKdbxFile);
            } else if (i < end) {
                // The header's own failure comes first, and then its hash; a header that now ends elsewhere may leave
                // no room for the hash.
                const auto parsing = outcomeOf([&] { return KdbxHeader::parse(changed); });
                if (parsing != "nothing")
                    EXPECT_EQ(outcome, parsing);
                else
                    EXPECT_TRUE(outcome == headerHashMismatch || runsShort(outcome));
            } else if (i < end + 32) {
                EXPECT_EQ(outcome, headerHashMismatch);
            } else if (i < end + 64) {
                EXPECT_EQ(outcome, invalidCredentials);
            } else {
                const auto block = std::ranges::upper_bound(starts, i) - starts.begin() - 1;
                const auto place = i - starts[static_cast<std::size_t>(block)];
                const bool isSize = place >= 32 && place < 36;
                EXPECT_TRUE(outcome == blockHmacMismatch(static_cast<int>(block)) || (isSize && runsShort(outcome)));
            }
        }
    }
}

TEST(HostileVaultTest, everyFlippedByteOfAKdbx3HeaderIsReportedByItsField) {
    const auto builder = kdbx3WithHeaderHash();
    const auto file = builder.build();
    const auto outcomeAt = [&](std::size_t offset, std::uint8_t mask) {
        auto changed = file;
        changed[offset] = static_cast<std::uint8_t>(changed[offset] ^ mask);
        return loading(changed);
    };

    EXPECT_EQ(loading(file), "nothing");
    EXPECT_EQ(outcomeAt(8, 1), headerHashMismatch);  // any minor version is read
    for (const auto& field : fieldsOf(builder.header(), false)) {
        for (std::size_t i = 0; i < field.size; ++i) {
            // As many rounds run as a file asks for: of their eight bytes only two are changed.
            const auto place = field.id == FieldID::transformRounds ? i % 2 : i;
            const auto outcome = outcomeAt(field.valueOffset + place, 1);
            SCOPED_TRACE("field " + std::to_string(static_cast<int>(field.id)) + ", byte " + std::to_string(i));
            switch (field.id) {
                case FieldID::cipherID:
                    EXPECT_TRUE(outcome.starts_with("KdbxError.unsupportedCipher:")) << outcome;
                    break;
                case FieldID::compressionFlags:
                    EXPECT_EQ(outcome, i == 0 ? xmlParseFailure("belge çözümlenemedi")
                                              : corruptedData("bilinmeyen sıkıştırma bayrağı " +
                                                              std::to_string(1 + (1u << 8 * i))));
                    break;
                case FieldID::transformRounds:
                case FieldID::masterSeed:
                case FieldID::transformSeed:
                case FieldID::encryptionIV:
                case FieldID::streamStartBytes:
                    EXPECT_EQ(outcome, invalidCredentials);
                    break;
                default:
                    EXPECT_EQ(outcome, headerHashMismatch);
            }
        }
    }
}

/// As many rounds run as a file asks for, so a test does without those that ask for long.
bool asksForManyRounds(ByteView file) {
    try {
        return KdbxHeader::parse(file).transformRounds > 1'000'000;
    } catch (const KdbxError&) {
        return false;
    }
}

TEST(HostileVaultTest, noFlippedByteOfAKdbx3FileOpensUnnoticed) {
    const auto file = kdbx3WithHeaderHash().build();
    for (const std::uint8_t mask : {0x01, 0x80}) {
        for (std::size_t i = 0; i < file.size(); ++i) {
            auto changed = file;
            changed[i] = static_cast<std::uint8_t>(changed[i] ^ mask);
            if (asksForManyRounds(changed))
                continue;
            const auto outcome = loading(changed);
            EXPECT_TRUE(outcome != "nothing" && !outcome.starts_with("untyped")) << i << ": " << outcome;
        }
    }
}

TEST(HostileVaultTest, everyFlippedByteOfAKdbx3CiphertextIsReportedByItsPlace) {
    auto builder = kdbx3WithHeaderHash();
    const auto file = builder.build();
    const auto end = builder.header().size();
    for (std::size_t i = end; i < file.size(); ++i) {
        auto changed = file;
        changed[i] ^= 1;
        const auto outcome = loading(changed);
        SCOPED_TRACE(std::to_string(i - end) + ": " + outcome);
        // In CBC a byte spoils its own block of 16 and one byte of the next: the start bytes are the first two.
        if (i < end + 32)
            EXPECT_EQ(outcome, invalidCredentials);
        else
            EXPECT_TRUE(outcome == invalidCredentials || outcome == blockHmacMismatch(0) || runsShort(outcome) ||
                        outcome.starts_with(corruptedData("blok sırası bozuk (")) ||
                        outcome == corruptedData("sonlandırıcı bloğun hash'i sıfır değil"));
    }
}

TEST(HostileVaultTest, everyPrefixOfAKdbx4FileRunsShort) {
    const auto file = VaultBuilder::kdbx4().build();
    for (std::size_t size = 0; size < file.size(); ++size) {
        const auto outcome = loading(ByteView(file).first(size));
        if (size < 12)
            EXPECT_EQ(outcome, notAKdbxFile) << size;
        else
            EXPECT_TRUE(runsShort(outcome)) << size << ": " << outcome;
    }
}

TEST(HostileVaultTest, everyPrefixOfAKdbx3FileRunsShortOrLooksLikeAWrongPassword) {
    const auto builder = VaultBuilder::kdbx3();
    const auto file = builder.build();
    const auto end = builder.header().size();
    for (std::size_t size = 0; size < file.size(); ++size) {
        const auto outcome = loading(ByteView(file).first(size));
        if (size < 12)
            EXPECT_EQ(outcome, notAKdbxFile) << size;
        else if (size < end)
            EXPECT_TRUE(runsShort(outcome)) << size << ": " << outcome;
        else
            EXPECT_TRUE(outcome == invalidCredentials || runsShort(outcome)) << size << ": " << outcome;
    }
}

TEST(HostileVaultTest, theLargestDeclaredLengthOfAnyHeaderFieldRunsShort) {
    for (const auto& builder : {VaultBuilder::kdbx3(), VaultBuilder::kdbx4()}) {
        const bool isKdbx4 = builder.version.major == 4;
        for (const auto& field : fieldsOf(builder.header(), isKdbx4)) {
            auto file = builder.build();
            storeAllOnes(file, field.lengthOffset, isKdbx4 ? 4 : 2);
            EXPECT_EQ(loading(file),
                      shortData(isKdbx4 ? 4294967295 : 65535, static_cast<long long>(file.size() - field.valueOffset)))
                << static_cast<int>(field.id);
        }
    }
}

TEST(HostileVaultTest, theLargestDeclaredLengthInsideADictionaryIsNegativeOrRunsShort) {
    const auto builder = VaultBuilder::kdbx4();
    const auto fields = fieldsOf(builder.header(), true);
    const auto parameters = *std::ranges::find(fields, FieldID::kdfParameters, &FieldPlace::id);
    const auto file = builder.build();
    const auto keyLength = parameters.valueOffset + 3;
    const auto valueLength = keyLength + 4 + std::string_view("$UUID").size();
    const auto outcomeWith = [&](std::size_t offset, std::uint8_t highByte) {
        auto changed = file;
        storeAllOnes(changed, offset, 3);
        changed[offset + 3] = highByte;
        return loading(changed);
    };
    const auto left = [&](std::size_t offset) {
        return static_cast<long long>(parameters.valueOffset + parameters.size - offset - 4);
    };

    EXPECT_EQ(outcomeWith(keyLength, 0xFF), corruptedData("VariantDictionary anahtar uzunluğu negatif"));
    EXPECT_EQ(outcomeWith(valueLength, 0xFF), corruptedData("VariantDictionary değer uzunluğu negatif"));
    EXPECT_EQ(outcomeWith(keyLength, 0x7F), shortData(0x7FFFFFFF, left(keyLength)));
    EXPECT_EQ(outcomeWith(valueLength, 0x7F), shortData(0x7FFFFFFF, left(valueLength)));
}

TEST(HostileVaultTest, theLargestDeclaredLengthOfABlockOrAnInnerFieldRunsShort) {
    const auto builder = VaultBuilder::kdbx4();
    auto file = builder.build();
    const auto size = builder.header().size() + 64 + 32;
    storeAllOnes(file, size, 4);
    EXPECT_EQ(loading(file), shortData(4294967295, static_cast<long long>(file.size() - size - 4)));

    auto inner = VaultBuilder::kdbx4();
    inner.payload = Bytes{3, 0xFF, 0xFF, 0xFF, 0xFF, 1, 2, 3};
    EXPECT_EQ(loading(inner), shortData(4294967295, 3));

    auto hashed = VaultBuilder::kdbx3();
    hashed.blocks = Bytes(36, 0);
    appendLE(*hashed.blocks, std::uint32_t{0xFFFFFFFF});
    append(*hashed.blocks, Bytes(5, 1));
    EXPECT_EQ(loading(hashed), shortData(4294967295, 5));
}

TEST(HostileVaultTest, aDeclaredLengthAllocatesNothing) {
    const auto builder = VaultBuilder::kdbx4();
    auto file = builder.build();
    storeAllOnes(file, builder.header().size() + 64 + 32, 4);
    const auto child = inChild([&] { return loading(file); });
    EXPECT_TRUE(runsShort(child.outcome));
    EXPECT_LT(child.peakMemoryKiB, 16 * mebibyte);
}

TEST(HostileVaultTest, elementsNestedTooDeepForTheStackAreRefused) {
    std::string nested;
    for (int i = 0; i < 100000; ++i)
        nested += "<a>";
    for (int i = 0; i < 100000; ++i)
        nested += "</a>";
    for (const auto& document : {documentWith(nested), documentWith("<Entry>" + nested + "</Entry>"), nested}) {
        auto builder = VaultBuilder::kdbx4();
        builder.document = document;
        EXPECT_EQ(inChild([&] { return loading(builder); }).outcome, xmlParseFailure("belge çözümlenemedi"));
    }
    std::string groups;
    for (int i = 0; i < 100000; ++i)
        groups += "<Group>";
    for (int i = 0; i < 100000; ++i)
        groups += "</Group>";
    auto builder = VaultBuilder::kdbx3();
    builder.document = documentWith(groups);
    EXPECT_EQ(inChild([&] { return loading(builder); }).outcome, xmlParseFailure("belge çözümlenemedi"));
}

TEST(HostileVaultTest, groupsAndForeignElements1000DeepLoadAndSave) {
    std::string groups = "<Entry><String><Key>Title</Key><Value>dip</Value></String></Entry>";
    std::string foreign = "dip";
    for (int i = 0; i < 1000; ++i) {
        groups = "<Group>" + groups + "</Group>";
        foreign = "<a>" + foreign + "</a>";
    }
    auto builder = VaultBuilder::kdbx4();
    builder.document = documentWith(foreign + groups);

    const auto child = inChild([&] {
        const auto database = KdbxFile::load(builder.build(), key);
        const auto again = KdbxFile::load(KdbxFile::save(database, key), key);
        return again.root.allEntries().at(0).title + std::to_string(again.root.unknownXML.at(0) == foreign);
    });

    EXPECT_EQ(child.outcome, "dip1");
}

TEST(HostileVaultTest, aTextOf64MiBLoads) {
    const auto size = std::size_t{64} * 1024 * 1024;
    auto builder = VaultBuilder::kdbx4();
    builder.document = documentWith("<Notes>" + std::string(size, 'n') + "</Notes>");
    const auto file = builder.build();
    builder.document.clear();

    const auto child = inChild([&] { return std::to_string(KdbxFile::load(file, key).root.notes.size()); });

    EXPECT_EQ(child.outcome, std::to_string(size));
    EXPECT_LT(child.peakMemoryKiB, 8 * 64 * mebibyte);
}

TEST(HostileVaultTest, aBombOfEntitiesIsRefused) {
    std::string declarations = "<!ENTITY a0 \"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa\">";
    for (int i = 1; i < 12; ++i) {
        const auto inner = "&a" + std::to_string(i - 1) + ";";
        declarations += "<!ENTITY a" + std::to_string(i) + " \"";
        for (int repeat = 0; repeat < 10; ++repeat)
            declarations += inner;
        declarations += "\">";
    }
    auto builder = VaultBuilder::kdbx4();
    builder.document = "<!DOCTYPE KeePassFile [" + declarations +
                       "]><KeePassFile><Root><Group><Name>&a11;</Name></Group></Root></KeePassFile>";

    const auto child = inChild([&] { return loading(builder); });

    EXPECT_EQ(child.outcome, xmlParseFailure("belge çözümlenemedi"));
    EXPECT_LT(child.peakMemoryKiB, 64 * mebibyte);
}

TEST(HostileVaultTest, anExternalEntityIsNotFetched) {
    auto builder = VaultBuilder::kdbx4();
    builder.document =
        "<!DOCTYPE KeePassFile [<!ENTITY e SYSTEM \"file:///etc/hostname\">]><KeePassFile><Root><Group>"
        "<Name>a&e;b</Name></Group></Root></KeePassFile>";
    const auto outcome = outcomeOf([&] {
        const auto name = KdbxFile::load(builder.build(), key).root.name;
        EXPECT_EQ(name, "ab");
    });
    EXPECT_TRUE(outcome == "nothing" || outcome == xmlParseFailure("belge çözümlenemedi")) << outcome;
}

TEST(HostileVaultTest, whatTheBombIsMadeOfIsSound) {
    const ZerosAtTheirDensest zeros(1000);
    const Bytes output(zeros.outputSize(), 0);
    EXPECT_GT(output.size(), 1000u * 1000);
    EXPECT_EQ(Gzip::decompress(zeros.gzipMember(Gzip::crc32(output))), output);
}

TEST(HostileVaultTest, aGzipBombBehindAValidHMACEndsAsAStreamFailure) {
    if (!canBoundAddressSpace())
        GTEST_SKIP() << "address space cannot be bounded here";
    auto builder = VaultBuilder::kdbx4();
    builder.blockSize = KdbxCrypto::defaultBlockSize;
    builder.compressed = ZerosAtTheirDensest(10 * 1024 * 1024).gzipMember(0);  // 10 GiB
    const auto file = builder.build();

    const auto child = inChild([&] { return loading(file); }, 512 * 1024 * 1024);

    EXPECT_EQ(child.outcome, "Gzip.Error.streamFailure: Gzip: sıkıştırma akışı başarısız.");
    EXPECT_LT(child.peakMemoryKiB, 512 * mebibyte);
}

TEST(HostileVaultTest, argon2ParametersThatNoMachineHasAreRefusedAtOnce) {
    const auto loadingWith = [](std::uint64_t memory) {
        auto builder = VaultBuilder::kdbx4();
        builder.setKdf({KdfSettings::Argon2{KdfSettings::Variant::argon2id, 8, 1, 1}})
            .setParameter("M", VariantValue{memory});
        const auto file = builder.build();
        return inChild([&] { return loading(file); });
    };
    const auto most = loadingWith((std::uint64_t{1} << 42) - 1);
    EXPECT_TRUE(most.outcome.starts_with("Argon2.Error.allocationFailed:")) << most.outcome;
    EXPECT_LT(most.peakMemoryKiB, 64 * mebibyte);
    const auto oneTebibyte = loadingWith(std::uint64_t{1} << 40);
    EXPECT_TRUE(oneTebibyte.outcome.starts_with("Argon2.Error.allocationFailed:")) << oneTebibyte.outcome;
    EXPECT_EQ(loadingWith(std::uint64_t{1} << 42).outcome, unsupportedKdf("Argon2 parametreleri aralık dışı"));
}

TEST(HostileVaultTest, manyEmptyFieldsAndItemsCostWhatTheyHold) {
    auto builder = VaultBuilder::kdbx4();
    for (int i = 0; i < 100000; ++i)
        builder.add(99, {});
    VariantDictionary publicData;
    for (int i = 0; i < 100000; ++i)
        publicData.set(std::to_string(i), VariantValue{true});
    builder.add(12, publicData.serialize());
    const auto file = builder.build();

    const auto child = inChild([&] { return loading(file); });

    EXPECT_EQ(child.outcome, "nothing");
    EXPECT_LT(child.peakMemoryKiB, 64 * mebibyte);
}

}  // namespace
