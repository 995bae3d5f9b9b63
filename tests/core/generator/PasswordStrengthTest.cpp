// SPDX-License-Identifier: MIT
#include "core/generator/PasswordGenerator.h"
#include "tests/core/generator/NaiveStrength.h"

#include <cmath>
#include <random>

using PasswordGenerator::Strength;
using PasswordGenerator::strength;

namespace {

const std::string combiningAcute = "\xCC\x81";

// The bits of a text whose characters all differ and follow no pattern.
double plainBits(double poolSize, double count) {
    return std::log2(poolSize) * count;
}

}  // namespace

TEST(PasswordStrengthTest, isNothingForTheEmptyText) {
    EXPECT_EQ(strength(""), (Strength{.score = 0, .entropyBits = 0.0}));
}

TEST(PasswordStrengthTest, givesOneLowerCaseLetterItsShareOfTwentySix) {
    EXPECT_DOUBLE_EQ(strength("a").entropyBits, std::log2(26));
    EXPECT_NEAR(strength("a").entropyBits, 4.70, 0.005);
    EXPECT_EQ(strength("a").score, 5);
}

struct PoolCase {
    const char* name;
    std::string character;
    double size;
};

class PasswordStrengthPoolTest : public testing::TestWithParam<PoolCase> {};

TEST_P(PasswordStrengthPoolTest, addsWhatTheCharacterBelongsTo) {
    EXPECT_DOUBLE_EQ(strength(GetParam().character).entropyBits, std::log2(GetParam().size));
}

INSTANTIATE_TEST_SUITE_P(
    PasswordStrengthTest, PasswordStrengthPoolTest,
    testing::Values(
        PoolCase{"lowerCaseLetter", "q", 26}, PoolCase{"upperCaseLetter", "Q", 26}, PoolCase{"digit", "8", 10},
        PoolCase{"symbol", "%", 28}, PoolCase{"quotationMark", "\"", 28}, PoolCase{"backslash", "\\", 28},
        PoolCase{"space", " ", 2}, PoolCase{"control", "\x01", 2}, PoolCase{"carriageReturnAndLineFeed", "\r\n", 2},
        PoolCase{"lowerCaseWithAccent", "é", 126}, PoolCase{"lowerCaseWithCombiningMark", "e" + combiningAcute, 126},
        PoolCase{"upperCaseWithAccent", "Ş", 126}, PoolCase{"titleCaseLetter", "ǅ", 100},
        PoolCase{"modifierLetter", "ʰ", 100}, PoolCase{"ideograph", "語", 100}, PoolCase{"arabicDigit", "٣", 110},
        PoolCase{"fraction", "½", 110}, PoolCase{"romanNumeral", "Ⅷ", 110}, PoolCase{"ideographicNumeral", "三", 110},
        PoolCase{"foreignPunctuation", "…", 128}, PoolCase{"foreignSymbol", "€", 128},
        PoolCase{"emoji", "👩‍👩‍👧", 128}, PoolCase{"digitWithCombiningMark", "8" + combiningAcute, 110}),
    [](const auto& test) { return test.param.name; });

TEST(PasswordStrengthTest, knowsEverySymbolOfTheGenerator) {
    for (const char symbol : PasswordGenerator::symbolChars)
        EXPECT_DOUBLE_EQ(strength(std::string(1, symbol)).entropyBits, std::log2(28)) << symbol;
}

TEST(PasswordStrengthTest, addsEachClassOnce) {
    EXPECT_DOUBLE_EQ(strength("kQ7%").entropyBits, plainBits(90, 4));
    EXPECT_DOUBLE_EQ(strength("kQ7%é").entropyBits, plainBits(190, 5));
    EXPECT_DOUBLE_EQ(strength("kmtr").entropyBits, plainBits(26, 4));
}

TEST(PasswordStrengthTest, countsCharactersAndNotBytes) {
    EXPECT_DOUBLE_EQ(strength("👩‍👩‍👧").entropyBits, plainBits(128, 1));
    EXPECT_DOUBLE_EQ(strength("e" + combiningAcute + "k").entropyBits, plainBits(126, 2));
}

TEST(PasswordStrengthTest, lowersTheBitsWhenCharactersReturn) {
    EXPECT_DOUBLE_EQ(strength("kkm").entropyBits, plainBits(26, 3) * (0.65 * (2.0 / 3) + 0.35));
}

TEST(PasswordStrengthTest, takesTwoSpellingsOfACharacterForTheSame) {
    EXPECT_DOUBLE_EQ(strength("é"
                              "ke" +
                              combiningAcute)
                         .entropyBits,
                     plainBits(126, 3) * (0.65 * (2.0 / 3) + 0.35));
}

TEST(PasswordStrengthTest, subtractsALongRepeat) {
    EXPECT_DOUBLE_EQ(strength("aaaa").entropyBits, plainBits(26, 4) * (0.65 * 0.25 + 0.35) - 0.8 * std::log2(26) * 2);
    EXPECT_NEAR(strength("aaaa").entropyBits, 2.12, 0.006);
    EXPECT_EQ(strength("aaaa").score, 2);
}

TEST(PasswordStrengthTest, leavesARepeatOfTwoAlone) {
    EXPECT_DOUBLE_EQ(strength("kkmm").entropyBits, plainBits(26, 4) * (0.65 * 0.5 + 0.35));
}

TEST(PasswordStrengthTest, findsARepeatInTwoSpellings) {
    EXPECT_DOUBLE_EQ(strength("ée" + combiningAcute + "é").entropyBits,
                     std::max(0.0, plainBits(126, 3) * (0.65 / 3 + 0.35) - 0.8 * std::log2(126)));
}

TEST(PasswordStrengthTest, subtractsRunsOfNeighbours) {
    // "xyz" and "zyx" are 3 each, and no keyboard run.
    EXPECT_DOUBLE_EQ(strength("xyzkw").entropyBits, plainBits(26, 5) - 0.6 * std::log2(26) * 3);
    EXPECT_DOUBLE_EQ(strength("zyxkw").entropyBits, plainBits(26, 5) - 0.6 * std::log2(26) * 3);
    EXPECT_DOUBLE_EQ(strength("αβγk").entropyBits, plainBits(126, 4) - 0.6 * std::log2(126) * 3);
}

TEST(PasswordStrengthTest, ignoresLetterCaseInRuns) {
    EXPECT_DOUBLE_EQ(strength("xYzkw").entropyBits, plainBits(52, 5) - 0.6 * std::log2(52) * 3);
    EXPECT_DOUBLE_EQ(strength("hİjmk").entropyBits, plainBits(152, 5) - 0.6 * std::log2(152) * 3);
}

TEST(PasswordStrengthTest, leavesRunsOfTwoAlone) {
    EXPECT_DOUBLE_EQ(strength("xykwmn").entropyBits, plainBits(26, 6));
    EXPECT_DOUBLE_EQ(strength("ab").entropyBits, plainBits(26, 2));
}

TEST(PasswordStrengthTest, countsATurningPointInBothRuns) {
    EXPECT_DOUBLE_EQ(strength("abcba").entropyBits,
                     std::max(0.0, plainBits(26, 5) * (0.65 * 0.6 + 0.35) - 0.6 * std::log2(26) * 6));
    EXPECT_DOUBLE_EQ(strength("abcbaKQWXJ%&/").entropyBits,
                     plainBits(80, 13) * (0.65 * 11 / 13 + 0.35) - 0.6 * std::log2(80) * 6);
}

TEST(PasswordStrengthTest, subtractsTheLongestKeyboardRunOnce) {
    const double b = std::log2(26);

    EXPECT_DOUBLE_EQ(strength("qweKMLX").entropyBits, std::log2(52) * 7 - 0.6 * std::log2(52) * 3);
    EXPECT_DOUBLE_EQ(strength("wertmasd").entropyBits, b * 8 - 0.6 * b * 4);
    EXPECT_DOUBLE_EQ(strength("poiuxm").entropyBits, b * 6 - 0.6 * b * 4);
    EXPECT_DOUBLE_EQ(strength("bvcxzh").entropyBits, b * 6 - 0.6 * b * 5);
    EXPECT_DOUBLE_EQ(strength("rtzux").entropyBits, b * 5 - 0.6 * b * 4);
    EXPECT_DOUBLE_EQ(strength("zertx").entropyBits, b * 5 - 0.6 * b * 4);
}

TEST(PasswordStrengthTest, findsKeyboardRunsInUpperCase) {
    EXPECT_DOUBLE_EQ(strength("ASDKM").entropyBits, std::log2(26) * 5 - 0.6 * std::log2(26) * 3);
}

TEST(PasswordStrengthTest, takesNoCharacterWithAMarkForAKey) {
    EXPECT_DOUBLE_EQ(strength("qwe" + combiningAcute).entropyBits, plainBits(126, 3));
}

TEST(PasswordStrengthTest, findsAKeyboardRunThatEndsInADottedCapitalI) {
    // Lower-cased, "İ" is an "i" with a dot above behind it.
    EXPECT_DOUBLE_EQ(strength("kYUİ").entropyBits, std::log2(152) * 4 - 0.6 * std::log2(152) * 3);
}

TEST(PasswordStrengthTest, countsTheSameDigitsAsSequenceAndAsKeyboardRun) {
    EXPECT_DOUBLE_EQ(strength("abc123k").entropyBits, std::max(0.0, plainBits(36, 7) - 0.6 * std::log2(36) * 9));
    EXPECT_DOUBLE_EQ(strength("abc123KQWXMJH%").entropyBits, plainBits(90, 14) - 0.6 * std::log2(90) * 9);
}

struct CeilingCase {
    const char* name;
    std::string password;
    double entropyBits;
};

class PasswordStrengthCeilingTest : public testing::TestWithParam<CeilingCase> {};

TEST_P(PasswordStrengthCeilingTest, capsTheBits) {
    EXPECT_DOUBLE_EQ(strength(GetParam().password).entropyBits, GetParam().entropyBits);
}

INSTANTIATE_TEST_SUITE_P(
    PasswordStrengthTest, PasswordStrengthCeilingTest,
    testing::Values(CeilingCase{"commonPassword", "password", 8.0}, CeilingCase{"inCapitals", "PASSWORD", 8.0},
                    CeilingCase{"withAThorn", "þifre", 8.0}, CeilingCase{"withACapitalThorn", "Þifre", 8.0},
                    CeilingCase{"withSignsAndDigits", "Password123!", 16.0},
                    CeilingCase{"withSignsInFront", "!@#$%^&*()_+-=.,monkey", 16.0},
                    CeilingCase{"withSignsBehind", "monkey!@#$%^&*()_+-=.,", 16.0},
                    CeilingCase{"withDigitsBehind", "monkey83", 16.0}, CeilingCase{"disguised", "p@ssw0rd", 20.0},
                    CeilingCase{"disguisedByFiveAndFour", "m4573r", 20.0},
                    CeilingCase{"disguisedByDollarAndThree", "$up3rman", 20.0},
                    CeilingCase{"disguisedByExclamationMark", "w3lcom3", 20.0},
                    CeilingCase{"disguisedWithDigitsThatStayDigits", "p@ssw0rd2689", 20.0},
                    CeilingCase{"numberOfEight", "80613952", 14.0}),
    [](const auto& test) { return test.param.name; });

TEST(PasswordStrengthTest, mapsDigitsBeforeItStripsThem) {
    // "p@ssw0rd1" becomes "passwordi".
    EXPECT_DOUBLE_EQ(strength("p@ssw0rd1").entropyBits, plainBits(64, 9) * (0.65 * (8.0 / 9) + 0.35));
}

TEST(PasswordStrengthTest, doesNotTrimADisguisedPassword) {
    EXPECT_GT(strength("p@ssw0rd.").entropyBits, 20.0);
}

TEST(PasswordStrengthTest, capsWithoutRaising) {
    EXPECT_EQ(strength("111111").entropyBits, 0.0);
    EXPECT_LT(strength("123456").entropyBits, 8.0);
}

TEST(PasswordStrengthTest, knowsEachCommonPassword) {
    for (const auto* password :
         {"password",   "passw0rd", "123456",   "12345678",    "123456789",  "1234567890", "qwerty",
          "qwertyuiop", "abc123",   "111111",   "123123",      "admin",      "letmein",    "welcome",
          "monkey",     "dragon",   "iloveyou", "sunshine",    "princess",   "football",   "master",
          "login",      "starwars", "trustno1", "superman",    "baseball",   "shadow",     "parola",
          "sifre",      "þifre",    "sifre123", "galatasaray", "fenerbahce", "besiktas"})
        EXPECT_LE(strength(password).entropyBits, 8.0) << password;
}

TEST(PasswordStrengthTest, takesAShortNumberForADateOrACode) {
    EXPECT_LE(strength("1234").entropyBits, 14.0);
    EXPECT_EQ(strength("80613952").entropyBits, 14.0);
    EXPECT_DOUBLE_EQ(strength("806").entropyBits, plainBits(10, 3));
    EXPECT_GT(strength("806139527").entropyBits, 14.0);
}

TEST(PasswordStrengthTest, takesALongCountForNothing) {
    EXPECT_EQ(strength("123456789012"), (Strength{.score = 0, .entropyBits = 0.0}));
}

TEST(PasswordStrengthTest, scoresACommonPasswordByItsCeiling) {
    EXPECT_EQ(strength("password").score, 8);
    EXPECT_EQ(strength("Password123!").score, 16);
    EXPECT_EQ(strength("p@ssw0rd").score, 20);
}

TEST(PasswordStrengthTest, capsTheScoreOfShortTexts) {
    EXPECT_EQ(strength("kQ7%é").score, 20);
    EXPECT_EQ(strength("kQ7%m;").score, 39);
    EXPECT_EQ(strength("kQ7%m;é").score, 40);
    EXPECT_GT(strength("kQ7%m;éX").score, 40);
    EXPECT_DOUBLE_EQ(strength("kQ7%m;é").entropyBits, plainBits(190, 7));
}

TEST(PasswordStrengthTest, capsTheScoreOfTwoDistinctCharacters) {
    std::string password;
    for (int i = 0; i < 100; ++i)
        password += "k%";

    EXPECT_EQ(strength(password).score, 10);
    EXPECT_GT(strength(password).entropyBits, 100);
    EXPECT_GT(strength(password + "7").score, 10);
}

TEST(PasswordStrengthTest, roundsTheBitsToTheScore) {
    EXPECT_EQ(strength("kQ7%m;XzR4").score, 65);  // 64.92 bits
    EXPECT_EQ(strength("kQ7%m;XzR4&hW2=u:N").score, 100);
    EXPECT_EQ(strength("kQ7%m;XzR4&hW2=u:NcT").score, 100);
}

TEST(PasswordStrengthTest, agreesWithTheNaiveEstimateOnGeneratedPasswords) {
    for (int i = 0; i < 1000; ++i) {
        const PasswordGenerator::Options options{.length = 1 + i % 40,
                                                 .upper = i % 2 == 0,
                                                 .lower = i % 3 != 0,
                                                 .digits = i % 5 != 0,
                                                 .symbols = i % 7 == 0,
                                                 .excludeAmbiguous = i % 11 == 0};
        const auto password = PasswordGenerator::generate(options);
        EXPECT_EQ(strength(password), naiveStrength(password)) << password;
    }
}

TEST(PasswordStrengthTest, agreesWithTheNaiveEstimateOnWhatPeopleMakeUp) {
    const std::vector<std::string> pieces{"password", "parola", "sifre", "þifre", "admin", "123", "321", "qwe", "asdf",
                                          "lkj",      "aaa",    "abc",   "zyx",   "!",     "@",   "0",   "1",   "7",
                                          "2024",     "Ş",      "ş",     "é",     "İ",     "ı",   "€",   "😀",   "٣",
                                          "½",        "…",      " ",     "\r\n",  "Q",     "x",   "."};
    std::mt19937 random(20240601);  // NOLINT(cert-msc51-cpp): the same texts in each run
    for (int i = 0; i < 3000; ++i) {
        std::string password;
        for (auto count = random() % 6; count-- > 0;)
            password += pieces[random() % pieces.size()];
        EXPECT_EQ(strength(password), naiveStrength(password)) << password;
    }
}
