// SPDX-License-Identifier: MIT
#include "core/document/KdbxXMLEscape.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

TEST(KdbxXMLEscapeTest, sanitisingDropsExactlyWhatXMLCannotCarry) {
    std::string controls;
    for (char c = 0; c < 0x20; ++c)
        controls += c;
    EXPECT_EQ(KdbxXMLEscape::sanitise("a" + controls + "b"), "a\t\n\rb");
    EXPECT_EQ(KdbxXMLEscape::sanitise("x\u0001\ty"), "x\ty");
    EXPECT_EQ(KdbxXMLEscape::sanitise("a\uFFFE\uFFFF\uFFFD\uFFF0\uFEFFb"), "a\uFFFD\uFFF0\uFEFFb");
    EXPECT_EQ(KdbxXMLEscape::sanitise("\x7F\u0085\U0001FFFE\U0010FFFF ş"), "\x7F\u0085\U0001FFFE\U0010FFFF ş");
    EXPECT_EQ(KdbxXMLEscape::sanitise("\0"s), "");
    EXPECT_EQ(KdbxXMLEscape::sanitise(""), "");
}

TEST(KdbxXMLEscapeTest, sanitisingRepairsWhatIsNotText) {
    EXPECT_EQ(KdbxXMLEscape::sanitise("a\xFF\xEF\xBF"), "a\uFFFD\uFFFD");
}

TEST(KdbxXMLEscapeTest, escapesThreeCharactersAndNoQuotationMarks) {
    EXPECT_EQ(KdbxXMLEscape::text("<a & b>"), "&lt;a &amp; b&gt;");
    EXPECT_EQ(KdbxXMLEscape::text("\"'"), "\"'");
    EXPECT_EQ(KdbxXMLEscape::text("&amp;"), "&amp;amp;");
    EXPECT_EQ(KdbxXMLEscape::text("\r\n\t"), "\r\n\t");
    EXPECT_EQ(KdbxXMLEscape::text("\x01"), "");
}

TEST(KdbxXMLEscapeTest, leavesWhatACombiningMarkMakesAnotherCharacter) {
    EXPECT_EQ(KdbxXMLEscape::text("<\u0301<"), "<\u0301&lt;");
    EXPECT_EQ(KdbxXMLEscape::text("&\uFE0F"), "&\uFE0F");
    EXPECT_EQ(KdbxXMLEscape::text(">\x01\u0308"), ">\u0308");
}

}  // namespace
