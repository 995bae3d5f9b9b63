// SPDX-License-Identifier: MIT
#include "core/primitives/Gzip.h"

#include "core/primitives/LittleEndian.h"
#include "tests/core/primitives/Material.h"
#include "tests/support/Hex.h"
#include "tests/support/Thrown.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using Gzip::Error;

enum Flag : std::uint8_t { text = 1, headerCRC = 2, extra = 4, name = 8, comment = 16 };

std::optional<Error> failureOfDecompressing(ByteView data) {
    return thrown<Error>([&] { (void)Gzip::decompress(data); });
}

const Bytes plain = copyOf(bytesOf("Kasanın belgesi, kasanın belgesi, kasanın belgesi."));

/// The DEFLATE stream of `plain`, by the codec itself.
Bytes stream() {
    const auto member = Gzip::compress(plain);
    return copyOf(ByteView(member).subspan(10, member.size() - 18));
}

/// A member with these flags and what follows the fixed header, the body, and the trailer that is right for `plain`.
Bytes memberWith(std::uint8_t flags, std::string_view optionalFields, ByteView body) {
    auto member = fromHex("1f8b0800112233440203");
    member[3] = flags;
    append(member, bytesOf(optionalFields));
    append(member, body);
    appendLE(member, Gzip::crc32(plain));
    appendLE(member, static_cast<std::uint32_t>(plain.size()));
    return member;
}

Bytes memberWithHeaderCRC(std::uint8_t flags, std::string_view optionalFields, std::uint16_t difference = 0) {
    auto header = fromHex("1f8b0800112233440203");
    header[3] = flags | Flag::headerCRC;
    append(header, bytesOf(optionalFields));
    const auto crc = static_cast<std::uint16_t>(Gzip::crc32(header) + difference);
    std::string fields(optionalFields);
    fields += {static_cast<char>(crc & 0xFF), static_cast<char>(crc >> 8)};
    return memberWith(flags | Flag::headerCRC, fields, stream());
}

using namespace std::string_view_literals;

// Crc-32/ISO-HDLC's check value, and RFC 1952's own definition for the empty text.
TEST(GzipTest, crc32GivesThePublishedCheckValues) {
    EXPECT_EQ(Gzip::crc32(bytesOf("123456789")), 0xCBF43926U);
    EXPECT_EQ(Gzip::crc32({}), 0U);
    EXPECT_EQ(Gzip::crc32(bytesOf("The quick brown fox jumps over the lazy dog")), 0x414FA339U);
}

TEST(GzipTest, crc32IsTheBytewiseRuleOverAnyLength) {
    Material material(1);
    for (std::size_t size = 0; size < 400; ++size) {
        const auto data = material.bytes(size);
        std::uint32_t crc = ~0U;
        for (const auto byte : data) {
            crc ^= byte;
            for (int bit = 0; bit < 8; ++bit)
                crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320U : 0U);
        }
        EXPECT_EQ(Gzip::crc32(data), ~crc) << size;
    }
}

TEST(GzipTest, whatIsCompressedIsDecompressed) {
    Material material(2);
    for (const std::size_t size : {0, 1, 2, 17, 18, 1000, 65535, 65536, 65537, 1000000}) {
        const auto data = material.bytes(size);
        const auto repetitive = Bytes(size, 'a');
        EXPECT_TRUE(Gzip::decompress(Gzip::compress(data)) == data) << size;
        EXPECT_TRUE(Gzip::decompress(Gzip::compress(repetitive)) == repetitive) << size;
    }
}

TEST(GzipTest, writesTheFixedHeaderAndTheTrailer) {
    const auto member = Gzip::compress(plain);

    EXPECT_EQ(toHex(ByteView(member).first(10)), "1f8b0800000000000003");
    EXPECT_EQ(loadLE<std::uint32_t>(member.data() + member.size() - 8), Gzip::crc32(plain));
    EXPECT_EQ(loadLE<std::uint32_t>(member.data() + member.size() - 4), plain.size());
}

TEST(GzipTest, anEmptyInputGoesThroughTheStreamToo) {
    const auto member = Gzip::compress({});

    EXPECT_GT(member.size(), 18U);
    EXPECT_EQ(toHex(ByteView(member).last(8)), "0000000000000000");
    EXPECT_TRUE(Gzip::decompress(member).empty());
}

TEST(GzipTest, aForeignHeaderIsNotKept) {
    const auto foreign = memberWith(Flag::name, "belge.xml\0"sv, stream());

    const auto again = Gzip::compress(Gzip::decompress(foreign));

    EXPECT_EQ(toHex(ByteView(again).first(10)), "1f8b0800000000000003");
}

TEST(GzipTest, fewerThanEighteenBytesAreTruncatedWhateverTheyAre) {
    const auto member = Gzip::compress({});
    for (std::size_t size = 0; size < 18; ++size) {
        EXPECT_EQ(failureOfDecompressing(Bytes(size, 0)), Error::truncated()) << size;
        EXPECT_EQ(failureOfDecompressing(ByteView(member).first(size)), Error::truncated()) << size;
    }
}

TEST(GzipTest, anEmptyBodyIsAnEmptyResultWhenItsTrailerSaysSo) {
    EXPECT_TRUE(Gzip::decompress(fromHex("1f8b0800000000000003 00000000 00000000")).empty());
    EXPECT_EQ(failureOfDecompressing(fromHex("1f8b0800000000000003 00000000 05000000")), Error::sizeMismatch({5, 0}));
    EXPECT_EQ(failureOfDecompressing(fromHex("1f8b0800000000000003 07000000 00000000")), Error::crcMismatch({7, 0}));
}

TEST(GzipTest, anotherMagicOrMethodIsNotGzip) {
    const auto member = Gzip::compress(plain);
    for (std::size_t i = 0; i < 3; ++i)
        for (const int change : {1, 0x80, 0xFF}) {
            auto changed = member;
            changed[i] ^= static_cast<std::uint8_t>(change);
            EXPECT_EQ(failureOfDecompressing(changed), Error::notGzip()) << i;
        }
    EXPECT_EQ(failureOfDecompressing(fromHex("1f8b0700000000000003 00000000 00000000")), Error::notGzip());
    EXPECT_EQ(failureOfDecompressing(Bytes(18, 0)), Error::notGzip());
}

TEST(GzipTest, timeExtraFlagsAndSystemAreIgnored) {
    auto member = Gzip::compress(plain);
    for (std::size_t i = 4; i < 10; ++i)
        member[i] = 0xA5;

    EXPECT_EQ(Gzip::decompress(member), plain);
}

TEST(GzipTest, theTextFlagAndTheReservedOnesAreIgnored) {
    for (const int flags : {1, 0x20, 0x40, 0x80, 0xE1})
        EXPECT_EQ(Gzip::decompress(memberWith(static_cast<std::uint8_t>(flags), "", stream())), plain) << flags;
}

TEST(GzipTest, optionalFieldsArePassedOverInTheirOrder) {
    EXPECT_EQ(Gzip::decompress(memberWith(Flag::extra, "\x05\0abcde"sv, stream())), plain);
    EXPECT_EQ(Gzip::decompress(memberWith(Flag::extra, "\0\0"sv, stream())), plain);
    EXPECT_EQ(Gzip::decompress(memberWith(Flag::name, "belge\0"sv, stream())), plain);
    EXPECT_EQ(Gzip::decompress(memberWith(Flag::name, "\0"sv, stream())), plain);
    EXPECT_EQ(Gzip::decompress(memberWith(Flag::comment, "not\0"sv, stream())), plain);
    EXPECT_EQ(
        Gzip::decompress(memberWith(Flag::extra | Flag::name | Flag::comment, "\x03\0\0x\0belge\0not\0"sv, stream())),
        plain);
    EXPECT_EQ(Gzip::decompress(memberWithHeaderCRC(Flag::extra | Flag::name | Flag::comment | Flag::text,
                                                   "\x03\0\0x\0belge\0not\0"sv)),
              plain);
}

TEST(GzipTest, theExtraFieldsLengthIsLittleEndian) {
    auto field = std::string("\x02\x01", 2);
    field.append(0x102, 'x');

    EXPECT_EQ(Gzip::decompress(memberWith(Flag::extra, field, stream())), plain);
}

TEST(GzipTest, anExtraFieldBehindTheEndIsTruncated) {
    for (const int others : std::initializer_list<int>{0, Flag::name, Flag::comment, Flag::headerCRC}) {
        const auto flags = static_cast<std::uint8_t>(Flag::extra | others);
        EXPECT_EQ(failureOfDecompressing(memberWith(flags, "\xFF\xFF", {})), Error::truncated()) << others;
    }
}

TEST(GzipTest, aTextThatDoesNotEndIsTruncated) {
    for (const int flag : {Flag::name, Flag::comment}) {
        auto member = memberWith(static_cast<std::uint8_t>(flag), "belge", {});
        for (std::size_t i = member.size() - 8; i < member.size(); ++i)
            member[i] = 'x';  // the search goes on through the trailer
        EXPECT_EQ(failureOfDecompressing(member), Error::truncated()) << flag;
    }
    EXPECT_EQ(failureOfDecompressing(memberWith(Flag::name | Flag::comment, "ad\0yorum"sv, Bytes(4, 'x'))),
              Error::truncated());
}

TEST(GzipTest, aTextThatEndsInTheTrailerLeavesNoRoomForIt) {
    auto member = memberWith(Flag::name, "belge", {});
    member[member.size() - 8] = 0;

    EXPECT_EQ(failureOfDecompressing(member), Error::truncated());
}

TEST(GzipTest, aRightHeaderCRCPasses) {
    EXPECT_EQ(Gzip::decompress(memberWithHeaderCRC(0, "")), plain);
    EXPECT_EQ(Gzip::decompress(memberWithHeaderCRC(Flag::name, "belge\0"sv)), plain);
}

TEST(GzipTest, aWrongHeaderCRCIsReported) {
    for (const int difference : {1, 0x100, 0x8000}) {
        EXPECT_EQ(failureOfDecompressing(memberWithHeaderCRC(0, "", static_cast<std::uint16_t>(difference))),
                  Error::headerCRCMismatch());
        EXPECT_EQ(failureOfDecompressing(
                      memberWithHeaderCRC(Flag::name, "belge\0"sv, static_cast<std::uint16_t>(difference))),
                  Error::headerCRCMismatch());
    }
}

TEST(GzipTest, aHeaderCRCBehindTheEndIsTruncated) {
    auto member = memberWith(Flag::name | Flag::headerCRC, "belge", {});
    for (std::size_t i = member.size() - 8; i < member.size(); ++i)
        member[i] = 'x';
    member[member.size() - 2] = 0;  // one byte is left for it

    EXPECT_EQ(failureOfDecompressing(member), Error::truncated());
}

TEST(GzipTest, theHeaderCRCIsLookedAtBeforeTheRoomForTheTrailer) {
    auto member = memberWith(Flag::name | Flag::headerCRC, "belge", {});
    for (std::size_t i = member.size() - 8; i < member.size(); ++i)
        member[i] = 'x';
    member[member.size() - 3] = 0;  // just the two bytes are left for it
    auto right = member;
    storeLE(right.data() + right.size() - 2,
            static_cast<std::uint16_t>(Gzip::crc32(ByteView(right).first(right.size() - 2))));

    EXPECT_EQ(failureOfDecompressing(member), Error::headerCRCMismatch());
    EXPECT_EQ(failureOfDecompressing(right), Error::truncated());
}

TEST(GzipTest, bytesBehindTheStreamAreIgnored) {
    Material material(3);
    for (const std::size_t size : {1, 2, 7, 8, 9, 100, 5000}) {
        auto body = stream();
        append(body, material.bytes(size));
        EXPECT_EQ(Gzip::decompress(memberWith(0, "", body)), plain) << size;
    }
}

TEST(GzipTest, aStreamThatIsCutShortFails) {
    const auto whole = stream();
    for (std::size_t size = 1; size < whole.size(); ++size)
        EXPECT_EQ(failureOfDecompressing(memberWith(0, "", ByteView(whole).first(size))), Error::streamFailure())
            << size;
}

TEST(GzipTest, aStreamThatIsNoneFails) {
    EXPECT_EQ(failureOfDecompressing(memberWith(0, "", fromHex("07"))), Error::streamFailure());  // block type 3
    EXPECT_EQ(failureOfDecompressing(memberWith(0, "", fromHex("01 0500 0000 68656c6c6f"))),
              Error::streamFailure());  // a stored block whose length and complement differ
    EXPECT_EQ(failureOfDecompressing(memberWith(0, "", fromHex("4b 04 16 00"))), Error::streamFailure());
}

TEST(GzipTest, aWrongStoredSizeIsReportedWithTheTrueOne) {
    auto member = Gzip::compress(plain);
    for (const std::uint32_t stored : {0U, 1U, 49U, 1000U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        storeLE(member.data() + member.size() - 4, stored);
        EXPECT_EQ(failureOfDecompressing(member), Error::sizeMismatch({stored, std::ssize(plain)})) << stored;
    }
}

TEST(GzipTest, aWrongStoredCRCIsReportedWithTheComputedOne) {
    auto member = Gzip::compress(plain);
    storeLE(member.data() + member.size() - 8, std::uint32_t{0x12345678});

    EXPECT_EQ(failureOfDecompressing(member), Error::crcMismatch({0x12345678, Gzip::crc32(plain)}));
}

TEST(GzipTest, theSizeIsCheckedBeforeTheCRC) {
    auto member = Gzip::compress(plain);
    storeLE(member.data() + member.size() - 8, std::uint32_t{1});
    storeLE(member.data() + member.size() - 4, std::uint32_t{2});

    EXPECT_EQ(failureOfDecompressing(member), Error::sizeMismatch({2, std::ssize(plain)}));
}

TEST(GzipTest, theStreamIsCheckedBeforeTheTrailer) {
    auto member = memberWith(0, "", fromHex("07"));
    storeLE(member.data() + member.size() - 4, std::uint32_t{2});

    EXPECT_EQ(failureOfDecompressing(member), Error::streamFailure());
}

TEST(GzipTest, aSecondMemberShowsAsAWrongSizeOrCRC) {
    auto two = Gzip::compress(plain);
    append(two, Gzip::compress(bytesOf("başka")));
    EXPECT_EQ(failureOfDecompressing(two), Error::sizeMismatch({6, std::ssize(plain)}));

    auto other = plain;
    other[0] ^= 1;
    auto sameSize = Gzip::compress(plain);
    append(sameSize, Gzip::compress(other));
    EXPECT_EQ(failureOfDecompressing(sameSize), Error::crcMismatch({Gzip::crc32(other), Gzip::crc32(plain)}));
}

TEST(GzipTest, anyOneChangedByteOfBodyOrTrailerIsFound) {
    const auto member = Gzip::compress(plain);
    for (std::size_t i = 10; i < member.size(); ++i) {
        auto changed = member;
        changed[i] ^= 0xFF;
        EXPECT_TRUE(failureOfDecompressing(changed)) << i;
    }
}

TEST(GzipTest, anOutputAsLargeAsAllowedPassesAndOneByteMoreFails) {
    for (const std::size_t size : {1, 100, 5000, 1000000}) {
        const auto repetitive = Bytes(size, 'a');
        const auto member = Gzip::compress(repetitive);
        EXPECT_TRUE(Gzip::decompress(member, size) == repetitive) << size;
        EXPECT_EQ(thrown<Error>([&] { (void)Gzip::decompress(member, size - 1); }), Error::streamFailure()) << size;
    }
}

TEST(GzipTest, nothingFitsWhereNothingIsAllowed) {
    EXPECT_TRUE(Gzip::decompress(Gzip::compress({}), 0).empty());
    EXPECT_EQ(thrown<Error>([] { (void)Gzip::decompress(Gzip::compress(plain), 0); }), Error::streamFailure());
}

TEST(GzipTest, aTrailerThatSaysTooLittleOnlyCostsTime) {
    const auto data = Bytes(3000000, 'a');
    auto member = Gzip::compress(data);
    storeLE(member.data() + member.size() - 4, std::uint32_t{0});

    EXPECT_EQ(failureOfDecompressing(member), Error::sizeMismatch({0, 3000000}));
}

TEST(GzipTest, eachFailureHasItsNumbersInDecimal) {
    EXPECT_EQ(Error::crcMismatch({4294967295, 0}).errorDescription(),
              "Gzip: CRC32 uyuşmuyor (beklenen 4294967295, bulunan 0).");
    EXPECT_EQ(Error::sizeMismatch({16, 5000000000}).errorDescription(),
              "Gzip: açılan boyut uyuşmuyor (beklenen 16, bulunan 5000000000).");
    EXPECT_EQ(Error::notGzip().errorDescription(), "Gzip: geçersiz sihirli sayı.");
    EXPECT_EQ(Error::truncated().errorDescription(), "Gzip: veri eksik.");
    EXPECT_EQ(Error::headerCRCMismatch().errorDescription(), "Gzip: başlık CRC uyuşmuyor.");
    EXPECT_STREQ(Error::streamFailure().what(), "Gzip: sıkıştırma akışı başarısız.");
}

TEST(GzipTest, failuresCompareByCaseAndNumbers) {
    EXPECT_EQ(Error::crcMismatch({1, 2}), Error::crcMismatch({1, 2}));
    EXPECT_NE(Error::crcMismatch({1, 2}), Error::crcMismatch({1, 3}));
    EXPECT_NE(Error::crcMismatch({1, 2}), Error::sizeMismatch({1, 2}));
    EXPECT_NE(Error::truncated(), Error::notGzip());
}

}  // namespace
