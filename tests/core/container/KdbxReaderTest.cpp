// SPDX-License-Identifier: MIT
#include "core/container/KdbxReader.h"

#include "tests/support/Failures.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(KdbxReaderTest, readsNumbersOfEveryWidthLittleEndian) {
    const auto bytes = fromHex("01 0203 04050607 08090a0b0c0d0e0f");
    KdbxReader reader(bytes);

    EXPECT_EQ(reader.u8(), 0x01);
    EXPECT_EQ(reader.u16(), 0x0302);
    EXPECT_EQ(reader.u32(), 0x07060504u);
    EXPECT_EQ(reader.u64(), 0x0f0e0d0c0b0a0908u);
    EXPECT_TRUE(reader.isAtEnd());
}

TEST(KdbxReaderTest, readsSignedNumbersAsTwosComplement) {
    const auto bytes = fromHex("ffffffff feffffffffffffff");
    KdbxReader reader(bytes);

    EXPECT_EQ(reader.i32(), -1);
    EXPECT_EQ(reader.i64(), -2);
}

TEST(KdbxReaderTest, knowsWhereItStandsAndWhatIsLeft) {
    const auto bytes = fromHex("010203");
    KdbxReader reader(bytes);

    EXPECT_EQ(reader.offset(), 0);
    EXPECT_EQ(reader.remaining(), 3);
    EXPECT_FALSE(reader.isAtEnd());
    EXPECT_EQ(toHex(reader.read(2)), "0102");
    EXPECT_EQ(reader.offset(), 2);
    EXPECT_EQ(reader.remaining(), 1);
}

TEST(KdbxReaderTest, aReadBeyondTheEndNamesBothCountsAndMovesNothing) {
    const auto bytes = fromHex("010203");
    KdbxReader reader(bytes);
    (void)reader.u8();

    EXPECT_EQ(outcomeOf([&] { return reader.read(3); }), shortData(3, 2));
    EXPECT_EQ(outcomeOf([&] { return reader.u32(); }), shortData(4, 2));
    EXPECT_EQ(outcomeOf([&] { return reader.u64(); }), shortData(8, 2));
    EXPECT_EQ(outcomeOf([&] { return reader.read(std::numeric_limits<std::int64_t>::max()); }),
              shortData(std::numeric_limits<std::int64_t>::max(), 2));
    EXPECT_EQ(reader.offset(), 1);
}

TEST(KdbxReaderTest, aNegativeCountIsNotAHugeOne) {
    const auto bytes = fromHex("010203");
    KdbxReader reader(bytes);

    EXPECT_EQ(outcomeOf([&] { return reader.read(-1); }), shortData(-1, 3));
    EXPECT_EQ(reader.offset(), 0);
}

TEST(KdbxReaderTest, aReadOfNothingSucceedsAlsoAtTheEnd) {
    KdbxReader reader{ByteView()};

    EXPECT_TRUE(reader.read(0).empty());
    EXPECT_EQ(outcomeOf([&] { return reader.u8(); }), shortData(1, 0));
    EXPECT_EQ(outcomeOf([&] { return reader.u16(); }), shortData(2, 0));
}

TEST(KdbxReaderTest, aCopyReadsOnItsOwn) {
    const auto bytes = fromHex("0102");
    KdbxReader reader(bytes);
    auto copy = reader;
    (void)copy.u8();

    EXPECT_EQ(reader.offset(), 0);
    EXPECT_EQ(copy.offset(), 1);
}

}  // namespace
