// SPDX-License-Identifier: MIT
#include "core/generator/PasswordGenerator.h"
#include "tests/core/generator/ChosenRandom.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <map>
#include <new>
#include <set>

using PasswordGenerator::generate;
using PasswordGenerator::Options;
using testing::AllOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr int attempts = 500;  // enough that a rule which holds by chance alone is caught

constexpr Options noClass{.upper = false, .lower = false, .digits = false, .symbols = false};

int countOf(std::string_view characters, std::string_view password) {
    return static_cast<int>(std::ranges::count_if(
        password, [&](char character) { return characters.find(character) != std::string_view::npos; }));
}

int upperCount(std::string_view password) {
    return countOf(PasswordGenerator::upperChars, password);
}
int lowerCount(std::string_view password) {
    return countOf(PasswordGenerator::lowerChars, password);
}
int digitCount(std::string_view password) {
    return countOf(PasswordGenerator::digitChars, password);
}
int symbolCount(std::string_view password) {
    return countOf(PasswordGenerator::symbolChars, password);
}

}  // namespace

TEST(PasswordGeneratorTest, hasTablesOfItsFourClasses) {
    EXPECT_EQ(PasswordGenerator::upperChars, "ABCDEFGHIJKLMNOPQRSTUVWXYZ");
    EXPECT_EQ(PasswordGenerator::lowerChars, "abcdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(PasswordGenerator::digitChars, "0123456789");
    EXPECT_EQ(PasswordGenerator::symbolChars, R"(!#$%&()*+,-./:;<=>?@[]^_{|}~)");
    EXPECT_EQ(PasswordGenerator::symbolChars.size(), 28u);
}

TEST(PasswordGeneratorTest, knowsTenAmbiguousCharacters) {
    const std::set<char> ambiguous(PasswordGenerator::ambiguousChars.begin(), PasswordGenerator::ambiguousChars.end());

    EXPECT_EQ(ambiguous, (std::set<char>{'O', '0', 'o', 'I', 'l', '1', '|', '`', '\'', '"'}));
    EXPECT_EQ(PasswordGenerator::ambiguousChars.size(), 10u);
}

TEST(PasswordGeneratorTest, asksForTwentyCharactersOfAllClassesByDefault) {
    const Options options;

    EXPECT_EQ(options.length, 20);
    EXPECT_TRUE(options.upper && options.lower && options.digits && options.symbols);
    EXPECT_FALSE(options.excludeAmbiguous);
}

TEST(PasswordGeneratorTest, comparesOptionsByEveryField) {
    EXPECT_EQ(Options(), Options());
    EXPECT_NE(Options(), Options{.length = 21});
    EXPECT_NE(Options(), Options{.upper = false});
    EXPECT_NE(Options(), Options{.lower = false});
    EXPECT_NE(Options(), Options{.digits = false});
    EXPECT_NE(Options(), Options{.symbols = false});
    EXPECT_NE(Options(), Options{.excludeAmbiguous = true});
}

TEST(PasswordGeneratorTest, listsTheChosenClassesInAFixedOrder) {
    EXPECT_THAT(Options().characterClasses(),
                ElementsAre(PasswordGenerator::upperChars, PasswordGenerator::lowerChars, PasswordGenerator::digitChars,
                            PasswordGenerator::symbolChars));
    EXPECT_THAT((Options{.upper = false, .digits = false}).characterClasses(),
                ElementsAre(PasswordGenerator::lowerChars, PasswordGenerator::symbolChars));
    EXPECT_THAT(noClass.characterClasses(), IsEmpty());
}

TEST(PasswordGeneratorTest, leavesAmbiguousCharactersOutOfEachClassAndKeepsTheOrder) {
    EXPECT_THAT(
        Options{.excludeAmbiguous = true}.characterClasses(),
        ElementsAre("ABCDEFGHJKLMNPQRSTUVWXYZ", "abcdefghijkmnpqrstuvwxyz", "23456789", "!#$%&()*+,-./:;<=>?@[]^_{}~"));
}

TEST(PasswordGeneratorTest, givesNothingForALengthBelowOne) {
    for (const std::int64_t length : {std::int64_t{0}, std::int64_t{-1}, std::numeric_limits<std::int64_t>::min()})
        EXPECT_EQ(generate({.length = length}), "");
}

TEST(PasswordGeneratorTest, givesNothingWithoutAClass) {
    for (const std::int64_t length : {0, 1, 20, 128}) {
        auto options = noClass;
        options.length = length;
        EXPECT_EQ(generate(options), "");
        options.excludeAmbiguous = true;
        EXPECT_EQ(generate(options), "");
    }
}

TEST(PasswordGeneratorTest, givesTheOnlyPlaceToTheFirstClass) {
    for (int i = 0; i < attempts; ++i) {
        const auto password = generate({.length = 1, .lower = false, .symbols = false});
        EXPECT_THAT(password, SizeIs(1));
        EXPECT_EQ(upperCount(password), 1) << password;
    }
}

TEST(PasswordGeneratorTest, servesUpperAndLowerAloneWhenTheLengthIsTwo) {
    for (int i = 0; i < attempts; ++i) {
        const auto password = generate({.length = 2});
        EXPECT_TRUE(upperCount(password) == 1 && lowerCount(password) == 1 && password.size() == 2) << password;
    }
}

TEST(PasswordGeneratorTest, dropsTheSymbolWhenTheLengthIsThree) {
    for (int i = 0; i < attempts; ++i) {
        const auto password = generate({.length = 3});
        EXPECT_TRUE(upperCount(password) == 1 && lowerCount(password) == 1 && digitCount(password) == 1 &&
                    password.size() == 3)
            << password;
    }
}

TEST(PasswordGeneratorTest, holdsOneOfEachClassWhenTheLengthIsFour) {
    for (int i = 0; i < attempts; ++i) {
        const auto password = generate({.length = 4});
        EXPECT_TRUE(upperCount(password) == 1 && lowerCount(password) == 1 && digitCount(password) == 1 &&
                    symbolCount(password) == 1 && password.size() == 4)
            << password;
    }
}

TEST(PasswordGeneratorTest, holdsEachChosenClassWhateverTheLength) {
    for (int i = 0; i < attempts; ++i) {
        const auto password = generate({.length = 5 + i % 60});
        EXPECT_TRUE(upperCount(password) > 0 && lowerCount(password) > 0 && digitCount(password) > 0 &&
                    symbolCount(password) > 0)
            << password;
        EXPECT_THAT(password, SizeIs(5 + i % 60));
    }
}

TEST(PasswordGeneratorTest, drawsFromTheEightClearDigitsWhenAmbiguousOnesAreExcluded) {
    const Options options{.length = 1000, .upper = false, .lower = false, .symbols = false, .excludeAmbiguous = true};

    const auto password = generate(options);

    EXPECT_EQ(std::set<char>(password.begin(), password.end()),
              (std::set<char>{'2', '3', '4', '5', '6', '7', '8', '9'}));
}

TEST(PasswordGeneratorTest, neverHoldsAnAmbiguousCharacterWhenTheyAreExcluded) {
    const auto password = generate({.length = 100'000, .excludeAmbiguous = true});

    EXPECT_EQ(countOf("|OIlo01", password), 0);
}

TEST(PasswordGeneratorTest, drawsAClassEachThenThePoolThenShufflesFromTheEnd) {
    // B and 2 of their classes, 9 and A of the pool, and then B29A with 3 and 0 changed, 2 left, 1 and 0 changed.
    ChosenRandom random{1, 12, 35, 0, 0, 5, 2};

    const auto password = generate({.length = 4, .lower = false, .symbols = false}, std::ref(random));

    EXPECT_EQ(password, "2A9B");
    EXPECT_TRUE(random.isUsedUp());
}

TEST(PasswordGeneratorTest, skipsValuesAboveTheBoundInEveryDraw) {
    // Each class has 26 characters, the pool 52, and the shuffle draws from 3 and from 2.
    ChosenRandom random{4294967250, 0, 4294967295, 1, 4294967198, 51, 4294967294, 2, 4294967294, 1};

    const auto password = generate({.length = 3, .digits = false, .symbols = false}, std::ref(random));

    EXPECT_EQ(password, "Abz");
    EXPECT_TRUE(random.isUsedUp());
}

TEST(PasswordGeneratorTest, readsNoRandomValueToShuffleOneCharacter) {
    ChosenRandom random{3};

    EXPECT_EQ(generate({.length = 1}, std::ref(random)), "D");
}

TEST(PasswordGeneratorTest, refusesALengthThatNoIndexReaches) {
    EXPECT_THROW((void)generate({.length = std::numeric_limits<std::int64_t>::max()}), std::bad_alloc);
    EXPECT_THROW((void)generate({.length = std::int64_t{1} << 32}), std::bad_alloc);
}

TEST(PasswordGeneratorTest, drawsEachCharacterOfThePoolAsOften) {
    constexpr int length = 1'000'000;

    const auto password = generate({.length = length});

    std::map<char, int> counts;
    for (const char character : password)
        ++counts[character];
    EXPECT_EQ(counts.size(), 90u);
    // The standard deviation is 105, so that chance alone stays within nine of them.
    for (const auto& [character, count] : counts)
        EXPECT_LT(std::abs(count - length / 90), 945) << character;
}

TEST(PasswordGeneratorTest, putsEachClassAtEachPlaceAsOften) {
    constexpr int passwords = 20'000;
    std::array<int, 4> symbolsAt{};
    for (int i = 0; i < passwords; ++i) {
        const auto password = generate({.length = 4});
        ++symbolsAt.at(password.find_first_of(PasswordGenerator::symbolChars));
    }

    // The standard deviation is 61.
    for (const int count : symbolsAt)
        EXPECT_LT(std::abs(count - passwords / 4), 550);
}
