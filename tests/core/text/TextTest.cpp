// SPDX-License-Identifier: MIT
#include "core/text/Text.h"
#include "core/text/TextICU.h"
#include "tests/core/text/Scalars.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace {

std::string repaired(std::string_view text) {
    return Text::repairingUTF8({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

bool isValid(std::string_view text) {
    return Text::isValidUTF8({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

TEST(TextTest, canonicallyEquivalentTextsAreEqual) {
    EXPECT_TRUE(Text::equal("", ""));
    EXPECT_TRUE(Text::equal("ş", "s\u0327"));
    EXPECT_TRUE(Text::equal("\u212B", "A\u030A"));               // the ångström sign
    EXPECT_TRUE(Text::equal("q\u0307\u0323", "q\u0323\u0307"));  // marks in either order
    EXPECT_TRUE(Text::equal("\uAC01", "\u1100\u1161\u11A8"));    // a Hangul syllable and its letters
    EXPECT_TRUE(Text::equal("\u226E", "<\u0338"));               // ASCII that a mark changes
    EXPECT_TRUE(Text::equal("Parola ş son", "Parola s\u0327 son"));
}

TEST(TextTest, otherTextsDiffer) {
    EXPECT_FALSE(Text::equal("ş", "s"));
    EXPECT_FALSE(Text::equal("a", "A"));
    EXPECT_FALSE(Text::equal("a", "a "));
    EXPECT_FALSE(Text::equal("\uFB01", "fi"));  // only compatible
    EXPECT_FALSE(Text::equal("q\u0307\u0301", "q\u0301\u0307"));
    EXPECT_FALSE(Text::equal("\u0131", "i"));
}

TEST(TextTest, ordersByTheScalarsOfTheComposedForms) {
    EXPECT_TRUE(Text::compare("a", "b") < 0);
    EXPECT_TRUE(Text::compare("a", "ab") < 0);
    EXPECT_TRUE(Text::compare("", "a") < 0);
    EXPECT_TRUE(Text::compare("Z", "a") < 0);
    EXPECT_TRUE(Text::compare("z", "ç") < 0);
    EXPECT_TRUE(Text::compare("z", "c\u0327") < 0);  // by its bytes "c" would come first
    EXPECT_TRUE(Text::compare("ç", "c\u0327") == 0);
    EXPECT_TRUE(Text::compare("\uFFFD", "\U0001F600") < 0);  // by UTF-16 it would be the other way round
    EXPECT_TRUE(Text::compare("b<", "b<\u0338") < 0);
    EXPECT_TRUE(Text::compare("b=", "b<\u0338") < 0);
}

TEST(TextTest, equalTextsHaveOneHash) {
    EXPECT_EQ(Text::hash("ş"), Text::hash("s\u0327"));
    EXPECT_EQ(Text::hash("\u226E"), Text::hash("<\u0338"));
    EXPECT_EQ(Text::hash("a\xFF"), Text::hash("a\uFFFD"));
    EXPECT_NE(Text::hash("parola"), Text::hash("Parola"));
}

TEST(TextTest, keysOfMapsAndSetsAreTexts) {
    Text::Map<int> map{{"ş", 1}};
    map["s\u0327"] = 2;
    EXPECT_EQ(map.size(), 1u);
    EXPECT_EQ(map.find(std::string_view("ş"))->second, 2);

    const Text::Set set{"b", "ç", "a", "c\u0327", "z"};
    EXPECT_EQ(std::vector<std::string>(set.begin(), set.end()), (std::vector<std::string>{"a", "b", "z", "ç"}));
}

TEST(TextTest, lowersAndRaisesAsciiLettersAlone) {
    EXPECT_EQ(Text::lowercased("@AZ[`az{ 09"), "@az[`az{ 09");
    EXPECT_EQ(Text::uppercased("@AZ[`az{ 09"), "@AZ[`AZ{ 09");
}

TEST(TextTest, lowersAndRaisesWithNoLanguagesExceptions) {
    EXPECT_EQ(Text::lowercased("ISPARTA"), "isparta");
    EXPECT_EQ(Text::lowercased("Iİ"), "ii\u0307");
    EXPECT_EQ(Text::lowercased("ÇĞÖŞÜ"), "çğöşü");
    EXPECT_EQ(Text::uppercased("iı"), "II");
    EXPECT_EQ(Text::uppercased("çğöşü"), "ÇĞÖŞÜ");
}

TEST(TextTest, takesTheFullMappings) {
    EXPECT_EQ(Text::uppercased("ß"), "SS");
    EXPECT_EQ(Text::uppercased("\uFB01"), "FI");
    EXPECT_EQ(Text::lowercased("ΟΔΟΣ"), "οδος");  // a sigma at the end of a word
    EXPECT_EQ(Text::lowercased("\U00010400"), "\U00010428");
}

TEST(TextTest, mapsIllFormedTextAsRepaired) {
    EXPECT_EQ(Text::lowercased("A\xFFÇ"), "a\uFFFDç");
    EXPECT_EQ(Text::uppercased("a\xE2\x82"), "A\uFFFD");
}

TEST(TextTest, illFormedTextIsEqualToItsRepair) {
    EXPECT_TRUE(Text::equal("a\xFF", "a\uFFFD"));
    EXPECT_TRUE(Text::equal("\xE2\x82", "\xFF"));
    EXPECT_FALSE(Text::equal("\xE2\x82", "\xFF\xFF"));
    EXPECT_TRUE(Text::compare("a\xC3", "aé") > 0);
    EXPECT_TRUE(Text::compare("a\xC3", "ab") > 0);
}

// The scalars of both sets, and those of the wider one alone.
constexpr char32_t blanks[] = {0x09,   0x20,   0xA0,   0x1680, 0x2000, 0x2001, 0x2002, 0x2003, 0x2004,
                               0x2005, 0x2006, 0x2007, 0x2008, 0x2009, 0x200A, 0x202F, 0x205F, 0x3000};
constexpr char32_t lineBreaks[] = {0x0A, 0x0B, 0x0C, 0x0D, 0x85, 0x2028, 0x2029};

bool contains(std::span<const char32_t> scalars, char32_t scalar) {
    return std::ranges::find(scalars, scalar) != scalars.end();
}

TEST(TextTest, trimsTheScalarsOfTheTwoSetsAndNoOthers) {
    for (char32_t scalar = 1; scalar < 0x10000; ++scalar) {
        if (scalar >= 0xD800 && scalar < 0xE000)
            continue;
        const auto blank = utf8(scalar);
        const auto text = blank + "a" + blank + "b" + blank;
        const auto trimmed = "a" + blank + "b";
        const auto isBlank = contains(blanks, scalar);
        const auto isBlankOrLineBreak = isBlank || contains(lineBreaks, scalar);
        ASSERT_EQ(Text::trimmingWhitespace(text), isBlank ? trimmed : text) << std::uint32_t(scalar);
        ASSERT_EQ(Text::trimmingWhitespaceAndNewlines(text), isBlankOrLineBreak ? trimmed : text)
            << std::uint32_t(scalar);
        ASSERT_EQ(Text::isWhitespaceOrNewline(scalar), isBlankOrLineBreak) << std::uint32_t(scalar);
    }
}

TEST(TextTest, trimsATextOfBlanksToNothing) {
    EXPECT_EQ(Text::trimmingWhitespace(" \t\u3000 "), "");
    EXPECT_EQ(Text::trimmingWhitespace(""), "");
    EXPECT_EQ(Text::trimmingWhitespace(" \n "), "\n");
    EXPECT_EQ(Text::trimmingWhitespaceAndNewlines(" \n\u2028\r\n"), "");
}

TEST(TextTest, trimsUpToIllFormedBytes) {
    EXPECT_EQ(Text::trimmingWhitespace(" \x80 "), "\x80");
    EXPECT_EQ(Text::trimmingWhitespace(" a\xE3\x80 "), "a\xE3\x80");
    EXPECT_EQ(Text::trimmingWhitespace("\xA0"), "\xA0");
    EXPECT_EQ(Text::trimmingWhitespace("\x80\x80\x80\x80\x80 "), "\x80\x80\x80\x80\x80");
}

TEST(TextTest, acceptsEveryScalarAndNoOtherForm) {
    for (const auto* text : {"", "plain ascii of some length", "\x7F", "\u0080", "\u07FF", "\u0800", "\uD7FF", "\uE000",
                             "\uFFFF", "\U00010000", "\U0010FFFF", "eight by eight ş and on"})
        EXPECT_TRUE(isValid(text)) << text;
    for (const auto* text : {"\x80", "\xC0\x80", "\xC1\xBF", "\xC2", "\xC2 ", "\xE0\x9F\xBF", "\xED\xA0\x80",
                             "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFE", "\xFF",
                             "\xE2\x82", "\xF0\x9F\x98", "eight by eight bytes \xFF"})
        EXPECT_FALSE(isValid(text)) << text;
}

// Unicode 15, section 3.9, tables 3-8 to 3-11: "R" stands for the replacement character.
TEST(TextTest, repairsEachIllFormedPieceByItsLongestValidBeginning) {
    const auto withReplacements = [](std::string_view pattern) {
        std::string text;
        for (const auto character : pattern)
            text += character == 'R' ? "\uFFFD" : std::string(1, character);
        return text;
    };
    EXPECT_EQ(repaired("\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41"), withReplacements("RRRRRRRRA"));
    EXPECT_EQ(repaired("\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41"), withReplacements("RRRRRRRRA"));
    EXPECT_EQ(repaired("\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42"), withReplacements("RRRRRARRB"));
    EXPECT_EQ(repaired("\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41"), withReplacements("RRRRA"));
}

TEST(TextTest, repairingLeavesWellFormedTextAsItIs) {
    EXPECT_EQ(repaired(""), "");
    EXPECT_EQ(repaired("Şifre 🔑\r\n"), "Şifre 🔑\r\n");
    EXPECT_EQ(repaired("\xE2\x82"), "\uFFFD");
}

TEST(TextICUTest, refusesATextThatIsLongerThanICUCounts) {
    // The length is looked at before any byte is, so that the bytes need not be there.
    const std::string_view tooLong("a", std::size_t{1} << 31);
    std::vector<std::string_view> characters;
    EXPECT_THROW(TextICU::composed(tooLong), std::length_error);
    EXPECT_THROW(TextICU::appendCharacters(characters, tooLong), std::length_error);
    EXPECT_THROW(TextICU::lowercased(tooLong), std::length_error);
    EXPECT_THROW(TextICU::uppercased(tooLong), std::length_error);
}

}  // namespace
