// SPDX-License-Identifier: MIT
#include "core/text/Text.h"

#include <gtest/gtest.h>

namespace {

using Characters = std::vector<std::string_view>;

TEST(TextTest, canonicallyEquivalentTextsAreEqual) {
    EXPECT_TRUE(Text::equal("ş", "s\u0327"));
    EXPECT_TRUE(Text::equal("\u212B", "A\u030A"));
    EXPECT_FALSE(Text::equal("ş", "s"));
    EXPECT_FALSE(Text::equal("a", "A"));
}

TEST(TextTest, aCarriageReturnWithItsLineFeedIsOneCharacter) {
    EXPECT_EQ(Text::characters("a\r\nb\n\r"), (Characters{"a", "\r\n", "b", "\n", "\r"}));
    EXPECT_EQ(Text::characters("e\u0301\r\n"), (Characters{"e\u0301", "\r\n"}));
}

TEST(TextTest, lowersAndRaisesWithNoLanguagesExceptions) {
    EXPECT_EQ(Text::lowercased("ISPARTA"), "isparta");
    EXPECT_EQ(Text::lowercased("İ"), "i\u0307");
    EXPECT_EQ(Text::uppercased("ıi"), "II");
    EXPECT_EQ(Text::uppercased("ß"), "SS");
}

}  // namespace
