// SPDX-License-Identifier: MIT
#include "core/primitives/LittleEndian.h"

#include "tests/support/Hex.h"

#include <gtest/gtest.h>

namespace {

TEST(LittleEndianTest, loadsTheLowByteFirstAtAnyAddress) {
    const auto bytes = fromHex("ff 0102030405060788");

    EXPECT_EQ(loadLE<std::uint8_t>(&bytes[1]), 0x01);
    EXPECT_EQ(loadLE<std::uint16_t>(&bytes[1]), 0x0201);
    EXPECT_EQ(loadLE<std::uint32_t>(&bytes[1]), 0x04030201U);
    EXPECT_EQ(loadLE<std::uint64_t>(&bytes[1]), 0x8807060504030201U);
    EXPECT_LT(loadLE<std::int64_t>(&bytes[1]), 0);
}

TEST(LittleEndianTest, storesTheLowByteFirstAndNothingMore) {
    Bytes bytes(6, 0xEE);

    storeLE(&bytes[1], std::uint32_t{0x04030201});

    EXPECT_EQ(toHex(bytes), "ee01020304ee");
}

TEST(LittleEndianTest, appendsBehindWhatABufferHolds) {
    Bytes bytes{0xEE};

    appendLE(bytes, std::uint16_t{0x0201});
    appendLE(bytes, std::int64_t{-2});

    EXPECT_EQ(toHex(bytes), "ee0102feffffffffffffff");
}

}  // namespace
