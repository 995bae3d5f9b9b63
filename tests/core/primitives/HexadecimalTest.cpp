// SPDX-License-Identifier: MIT
#include "core/primitives/Hexadecimal.h"

#include <gtest/gtest.h>

namespace {

TEST(HexadecimalTest, writesTwoDigitsAByteInEitherCase) {
    const Bytes bytes{0x00, 0x0A, 0x9F, 0xFF};

    EXPECT_EQ(hexadecimal(bytes), "000a9fff");
    EXPECT_EQ(hexadecimal(bytes, HexLetters::upper), "000A9FFF");
    EXPECT_EQ(hexadecimal({}), "");
}

TEST(HexadecimalTest, writesANumberWithoutLeadingZeros) {
    EXPECT_EQ(hexadecimalNumber(0), "0");
    EXPECT_EQ(hexadecimalNumber(0x1A), "1a");
    EXPECT_EQ(hexadecimalNumber(0xFFFFFFFF), "ffffffff");
}

TEST(HexadecimalTest, readsBackWhatItWroteAndNothingElse) {
    EXPECT_EQ(hexDecode("000a9FfF"), (Bytes{0x00, 0x0A, 0x9F, 0xFF}));
    EXPECT_EQ(hexDecode(""), Bytes());
    for (const auto* text : {"0", "0g", "g0", " 0", "0x", "/0", ":0", "@0", "`0", "00-0"})
        EXPECT_EQ(hexDecode(text), std::nullopt) << text;
}

}  // namespace
