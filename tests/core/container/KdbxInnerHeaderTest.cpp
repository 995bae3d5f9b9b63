// SPDX-License-Identifier: MIT
#include "core/container/KdbxInnerHeader.h"

#include "tests/support/Failures.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

namespace {

KdbxInnerHeader parsed(std::string_view hex) {
    const auto bytes = fromHex(hex);
    KdbxReader reader(bytes);
    return KdbxInnerHeader::parse(reader);
}

std::string parsing(std::string_view hex) {
    return outcomeOf([&] { return parsed(hex); });
}

TEST(KdbxInnerHeaderTest, isOfDefaultsWhereOnlyItsEndIsThere) {
    const auto header = parsed("00 00000000");

    EXPECT_EQ(header.streamID, 3u);
    EXPECT_TRUE(header.streamKey.empty());
    EXPECT_TRUE(header.binaries.empty());
    EXPECT_EQ(header, KdbxInnerHeader());
}

TEST(KdbxInnerHeaderTest, keepsTheLaterOfTwoKeys) {
    EXPECT_EQ(parsed("02 02000000 0101 02 01000000 02 00 00000000").streamKey, Bytes{2});
}

TEST(KdbxInnerHeaderTest, readsAStreamIDOfLessThan4BytesAsNone) {
    EXPECT_EQ(parsed("01 02000000 0300 00 00000000").streamID, 0u);
    EXPECT_EQ(parsed("01 04000000 07000000 00 00000000").streamID, 7u);
    EXPECT_EQ(parsed("01 06000000 020000009999 00 00000000").streamID, 2u);
}

TEST(KdbxInnerHeaderTest, passesOverAnUnknownField) {
    EXPECT_EQ(parsed("09 05000000 0102030405 02 01000000 08 00 00000000").streamKey, Bytes{8});
}

TEST(KdbxInnerHeaderTest, aBinaryOfOneByteIsAnAttachmentOfNone) {
    const auto header = parsed("03 01000000 05 00 00000000");

    ASSERT_EQ(header.binaries.size(), 1u);
    EXPECT_EQ(header.binaries[0].flags, 5);
    EXPECT_TRUE(header.binaries[0].data.empty());
}

TEST(KdbxInnerHeaderTest, keepsAttachmentsInOrder) {
    const auto header = parsed("03 03000000 01aabb 03 02000000 00cc 00 00000000");

    EXPECT_EQ(header.binaries, (std::vector<KdbxXML::Binary>{{1, fromHex("aabb")}, {0, fromHex("cc")}}));
}

TEST(KdbxInnerHeaderTest, refusesAnEmptyBinary) {
    EXPECT_EQ(parsing("03 00000000 00 00000000"), corruptedData("boş iç başlık ikili verisi"));
}

TEST(KdbxInnerHeaderTest, failsWhereTheDataEndsBeforeTheEndField) {
    EXPECT_EQ(parsing(""), shortData(1, 0));
    EXPECT_EQ(parsing("02 01000000 01"), shortData(1, 0));
    EXPECT_EQ(parsing("00 0000"), shortData(4, 2));
    EXPECT_EQ(parsing("03 ffffffff 0102"), shortData(4294967295, 2));
    EXPECT_EQ(parsing("00 01000000"), shortData(1, 0));
}

TEST(KdbxInnerHeaderTest, dropsTheValueOfTheEndFieldAndStandsBehindIt) {
    const auto bytes = fromHex("00 02000000 aabb 3c");
    KdbxReader reader(bytes);
    (void)KdbxInnerHeader::parse(reader);
    EXPECT_EQ(reader.offset(), 7);
}

TEST(KdbxInnerHeaderTest, whatIsWrittenReadsBackTheSameUpToItsEnd) {
    const KdbxInnerHeader header{.streamID = 2, .streamKey = Bytes(64, 7), .binaries = {{1, Bytes(3, 9)}, {0, {}}}};
    auto bytes = header.serialize();
    const auto size = static_cast<std::int64_t>(bytes.size());
    append(bytes, bytesOf("<?xml"));
    KdbxReader reader(bytes);

    EXPECT_EQ(KdbxInnerHeader::parse(reader), header);
    EXPECT_EQ(reader.offset(), size);
}

TEST(KdbxInnerHeaderTest, writesItsFieldsInOrder) {
    const KdbxInnerHeader header{.streamID = 3, .streamKey = fromHex("0102"), .binaries = {{1, fromHex("aa")}}};

    EXPECT_EQ(toHex(header.serialize()),
              "01"
              "04000000"
              "03000000"
              "02"
              "02000000"
              "0102"
              "03"
              "02000000"
              "01aa"
              "00"
              "00000000");
}

}  // namespace
