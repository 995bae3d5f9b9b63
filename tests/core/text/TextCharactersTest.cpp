// SPDX-License-Identifier: MIT
#include "core/text/Text.h"
#include "core/text/TextICU.h"
#include "tests/core/text/Scalars.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <random>
#include <sstream>
#include <thread>

namespace {

using Characters = std::vector<std::string_view>;

Characters charactersOfICU(std::string_view text) {
    Characters characters;
    if (!text.empty())
        TextICU::appendCharacters(characters, text);
    return characters;
}

/// A line of the standard's test: "÷ 0020 × 0308 ÷" with "÷" at the boundaries.
std::vector<std::string> charactersOfLine(const std::string& line) {
    std::vector<std::string> characters;
    std::istringstream words(line.substr(0, line.find('#')));
    for (std::string word; words >> word;) {
        if (word == "÷")
            characters.emplace_back();
        else if (word != "×")
            characters.back() += utf8(static_cast<char32_t>(std::stoul(word, nullptr, 16)));
    }
    if (!characters.empty())
        characters.pop_back();  // what the last boundary opened
    return characters;
}

TEST(TextCharactersTest, dividesEveryLineOfTheStandardsTestAsItSays) {
    std::ifstream file(BRENVIK_TEST_DATA "/unicode/GraphemeBreakTest.txt");
    int lines = 0;
    for (std::string line; std::getline(file, line);) {
        const auto expected = charactersOfLine(line);
        if (expected.empty())
            continue;
        ++lines;
        std::string text;
        for (const auto& character : expected)
            text += character;
        EXPECT_EQ(Text::characters(text), Characters(expected.begin(), expected.end())) << line;
        EXPECT_EQ(Text::characterCount(text), expected.size()) << line;
    }
    EXPECT_EQ(lines, 602);
}

TEST(TextCharactersTest, aCarriageReturnWithItsLineFeedIsOneCharacter) {
    EXPECT_EQ(Text::characters("a\r\nb\n\r"), (Characters{"a", "\r\n", "b", "\n", "\r"}));
    EXPECT_EQ(Text::characters("\r\r\n\n"), (Characters{"\r", "\r\n", "\n"}));
    EXPECT_EQ(Text::characters("e\u0301\r\n"), (Characters{"e\u0301", "\r\n"}));
}

TEST(TextCharactersTest, whatAPersonTakesForOneCharacterIsOne) {
    for (const auto* character : {"s\u0327", "<\u0338", "👨‍👩‍👧", "🇹🇷", "👍🏽", "1\uFE0F\u20E3",
                                  "\u1100\u1161\u11A8", "\u0600a", "ก\u0E33", "\u0915\u093F"})
        EXPECT_EQ(Text::characters(character), Characters{character});
    EXPECT_EQ(Text::characterCount("🇹🇷🇹🇷"), 2u);
    EXPECT_EQ(Text::characterCount("şifre👨‍👩‍👧!"), 7u);
    EXPECT_EQ(Text::characterCount(""), 0u);
}

TEST(TextCharactersTest, theFastPathDividesAsciiAsICUDoes) {
    std::mt19937 random(1);
    for (int round = 0; round < 3'000; ++round) {
        std::string text;
        for (auto length = random() % 40; length > 0; --length)
            text += random() % 4 == 0 ? "\r\n"[random() % 2] : static_cast<char>(random() % 128);
        ASSERT_EQ(Text::characters(text), charactersOfICU(text));
    }
}

TEST(TextCharactersTest, anyTwoScalarsBelowTheCombiningMarksAreTwoCharactersButForALineBreak) {
    for (char32_t first = 0; first < 0x300; ++first) {
        // One text for all pairs with `first`: each pair stands between line feeds, which are boundaries always.
        std::string text;
        for (char32_t second = 0; second < 0x300; ++second)
            text += utf8(first) + utf8(second) + "\n";
        ASSERT_EQ(Text::characters(text), charactersOfICU(text)) << std::uint32_t(first);
    }
}

TEST(TextCharactersTest, mixedAndIllFormedTextIsDividedAsICUDividesTheWhole) {
    const std::vector<std::string> pieces{"a",      "<", "\r",   "\n",   "ş",        "©",    "\u00AD", "\u0301",
                                          "\u200D", "👩", "🇹",    "🇷",    "\u0600",   "각",   "ᄀ",     "ᅡ",
                                          "\uFE0F", "न", "\xFF", "\xE2", "\xF0\x9F", "\x80", "\uFFFD", "\u0E33"};
    std::mt19937 random(2);
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (auto count = random() % 12; count > 0; --count)
            text += pieces[random() % pieces.size()];
        ASSERT_EQ(Text::characters(text), charactersOfICU(text)) << ::testing::PrintToString(text);
        ASSERT_EQ(Text::characterCount(text), Text::characters(text).size());
    }
}

TEST(TextCharactersTest, theFastPathsOfOrderHashAndCaseAgreeWithICU) {
    const std::vector<std::string> pieces{"a",  "A",      "b",      "<",        "=",      "s", "ş", "ß",
                                          "I",  "\u0131", "\u0327", "\u0338",   "\u0301", "é", "e", "ᄀ",
                                          "ᅡ", "\xC3",   "\xFF",   "\xE2\x82", "\x82",   "🔑", "Σ"};
    const auto sign = [](auto order) { return order < 0 ? -1 : order > 0 ? 1 : 0; };
    std::mt19937 random(3);
    const auto anyText = [&] {
        std::string text;
        for (auto count = random() % 5; count > 0; --count)
            text += pieces[random() % pieces.size()];
        return text;
    };
    for (int round = 0; round < 100'000; ++round) {
        const auto a = anyText();
        const auto b = anyText();
        const auto expected = sign(TextICU::composed(a).compare(TextICU::composed(b)));
        ASSERT_EQ(sign(Text::compare(a, b)), expected) << ::testing::PrintToString(std::pair(a, b));
        ASSERT_EQ(Text::equal(a, b), expected == 0) << ::testing::PrintToString(std::pair(a, b));
        if (expected == 0) {
            ASSERT_EQ(Text::hash(a), Text::hash(b));
        }
        ASSERT_EQ(Text::lowercased(a), TextICU::lowercased(a)) << ::testing::PrintToString(a);
        ASSERT_EQ(Text::uppercased(a), TextICU::uppercased(a)) << ::testing::PrintToString(a);
    }
}

TEST(TextCharactersTest, answersOnManyThreadsAtATime) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([] {
            for (int round = 0; round < 200; ++round) {
                EXPECT_EQ(Text::characterCount("şifre👨‍👩‍👧!"), 7u);
                EXPECT_TRUE(Text::equal("ş", "s\u0327"));
                EXPECT_EQ(Text::lowercased("ÇĞ"), "çğ");
            }
        });
    for (auto& thread : threads)
        thread.join();
}

}  // namespace
