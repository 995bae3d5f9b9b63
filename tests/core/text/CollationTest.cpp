// SPDX-License-Identifier: MIT
#include "core/text/Collation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

std::vector<std::string_view> viewsOf(const std::vector<std::string>& texts) {
    return {texts.begin(), texts.end()};
}

std::vector<std::string> sorted(const Collation& collation, const std::vector<std::string>& texts) {
    std::vector<std::string> result;
    for (const auto index : collation.order(viewsOf(texts)))
        result.push_back(texts[index]);
    return result;
}

// What `order` promises, by comparing alone.
std::vector<std::uint32_t> comparedOrder(const Collation& collation, const std::vector<std::string>& texts) {
    std::vector<std::uint32_t> indices(texts.size());
    std::iota(indices.begin(), indices.end(), 0);
    std::stable_sort(indices.begin(), indices.end(),
                     [&](auto a, auto b) { return collation.compare(texts[a], texts[b]) < 0; });
    return indices;
}

std::string randomText(std::mt19937& random, const std::vector<std::string>& pieces, int most) {
    std::string text;
    for (auto count = random() % static_cast<unsigned>(most + 1); count > 0; --count)
        text += pieces[random() % pieces.size()];
    return text;
}

// Every scalar below U+0180, and some that no table of letters holds.
std::vector<std::string> allPieces() {
    std::vector<std::string> pieces;
    for (unsigned scalar = 0; scalar < 0x180; ++scalar)
        pieces.push_back(scalar < 0x80 ? std::string(1, static_cast<char>(scalar))
                                       : std::string{static_cast<char>(0xc0 | scalar >> 6),
                                                     static_cast<char>(0x80 | (scalar & 0x3f))});
    for (const auto* other : {"\u0301", "\u0307", "\u0327", "\u1e9e", "ж", "Ω", "字", "😀", "\uac00", "\u2028"})
        pieces.emplace_back(other);
    return pieces;
}

const std::vector<std::string>& tightPieces() {
    static const std::vector<std::string> pieces{"a", "A", "b", "B", "0", "1", "2", "10",    "009",
                                                 " ", "-", ".", "ç", "Ç", "i", "I", "ı",     "İ",
                                                 "é", "e", "ş", "s", "ğ", "g", "z", "\u0301"};
    return pieces;
}

TEST(CollationTest, putsTurkishLettersWhereTheAlphabetHasThem) {
    const Collation turkish("tr_TR.UTF-8");
    EXPECT_THAT(sorted(turkish, {"zeytin", "şeker", "çilek", "ığdır", "inci", "süt", "cam", "dağ", "özet", "ot", "ğ",
                                 "güz", "ütü", "us", "hız"}),
                ElementsAre("cam", "çilek", "dağ", "güz", "ğ", "hız", "ığdır", "inci", "ot", "özet", "süt", "şeker",
                            "us", "ütü", "zeytin"));
}

TEST(CollationTest, pairsTheTwoTurkishLettersIWithTheirCapitals) {
    const Collation turkish("tr");
    EXPECT_THAT(sorted(turkish, {"İ", "i", "I", "ı"}), ElementsAre("ı", "I", "i", "İ"));
    EXPECT_THAT(sorted(turkish, {"Ib", "ıa", "İa", "ib", "Ia", "ia"}), ElementsAre("ıa", "Ia", "Ib", "ia", "İa", "ib"));
    EXPECT_EQ(turkish.compare("I\u0307", "İ"), std::weak_ordering::equivalent);
}

TEST(CollationTest, looksAtCaseOnlyWhenLettersAndAccentsAreTheSame) {
    const Collation collation("en_US.UTF-8");
    EXPECT_THAT(sorted(collation, {"b", "A", "B", "a"}), ElementsAre("a", "A", "b", "B"));
    EXPECT_THAT(sorted(collation, {"Ab", "aa", "AA", "ab"}), ElementsAre("aa", "AA", "ab", "Ab"));
    EXPECT_THAT(sorted(collation, {"résumé", "Resume", "resume", "résume"}),
                ElementsAre("resume", "Resume", "résume", "résumé"));
}

TEST(CollationTest, comparesRunsOfDigitsByTheirValue) {
    const Collation collation("tr");
    EXPECT_THAT(sorted(collation, {"Sunucu 10", "Sunucu 9", "Sunucu 100", "sunucu 2"}),
                ElementsAre("sunucu 2", "Sunucu 9", "Sunucu 10", "Sunucu 100"));
    EXPECT_THAT(sorted(collation, {"a10b2", "a9b10", "a10b1", "a"}), ElementsAre("a", "a9b10", "a10b1", "a10b2"));
    EXPECT_TRUE(collation.compare("99999999999999999999", "100000000000000000000") < 0);
}

TEST(CollationTest, leadingZerosMakeNoDifference) {
    const Collation collation("tr");
    EXPECT_EQ(collation.compare("7", "007"), std::weak_ordering::equivalent);
    EXPECT_TRUE(collation.compare("007", "08") < 0);
}

TEST(CollationTest, canonicallyEquivalentTextsAreEqual) {
    const Collation collation("tr");
    EXPECT_EQ(collation.compare("ş", "s\u0327"), std::weak_ordering::equivalent);
    EXPECT_EQ(collation.compare("a\u0323\u0302", "a\u0302\u0323"), std::weak_ordering::equivalent);
    EXPECT_EQ(collation.compare("\uac00", "\u1100\u1161"), std::weak_ordering::equivalent);
}

TEST(CollationTest, equalTextsKeepTheirOrderWhateverTheNumberOfTexts) {
    const Collation collation("tr");
    for (const std::size_t count : {4UL, 4000UL}) {
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < count; ++i)
            texts.emplace_back(i % 4 == 0 ? "07" : i % 4 == 1 ? "ş" : i % 4 == 2 ? "7" : "s\u0327");
        const auto order = collation.order(viewsOf(texts));
        for (std::size_t i = 0; i < count / 2; ++i) {
            EXPECT_EQ(order[i], 2 * i);
            EXPECT_EQ(order[count / 2 + i], 2 * i + 1);
        }
    }
}

TEST(CollationTest, emptyTextsComeFirstAndNoTextsAreNoOrder) {
    const Collation collation("tr");
    EXPECT_THAT(sorted(collation, {"a", "", " "}), ElementsAre("", " ", "a"));
    EXPECT_THAT(collation.order({}), ElementsAre());
}

class CollationOfALocale : public testing::TestWithParam<const char*> {};

TEST_P(CollationOfALocale, keysGiveTheOrderThatComparingGives) {
    const Collation collation(GetParam());
    std::mt19937 random(20240607);
    for (const auto& pieces : {tightPieces(), allPieces()})
        for (const auto& [most, count] : {std::pair(2, 3000), std::pair(4, 300), std::pair(14, 3000)}) {
            std::vector<std::string> texts(count);
            for (auto& text : texts)
                text = randomText(random, pieces, most);
            EXPECT_THAT(collation.order(viewsOf(texts)), ElementsAreArray(comparedOrder(collation, texts)));
        }
}

TEST_P(CollationOfALocale, everyPairOfLettersIsOrderedAsByComparing) {
    const Collation collation(GetParam());
    const auto pieces = allPieces();
    std::vector<std::string> texts;
    for (const auto* frame : {"", "a", "1"})
        for (const auto& piece : pieces)
            for (const auto* end : {"", "b", "2"})
                texts.push_back(frame + piece + end);
    EXPECT_THAT(collation.order(viewsOf(texts)), ElementsAreArray(comparedOrder(collation, texts)));
}

// Among them languages that order letter pairs, put capitals first, or reorder whole scripts.
INSTANTIATE_TEST_SUITE_P(Locales, CollationOfALocale,
                         testing::Values("tr", "en_US", "de", "fr_CA", "sv_SE", "da", "cs", "es", "et", "lt", "ja",
                                         "th", "el", "ru", "en_US_POSIX", "de@collation=phonebook", "xx"),
                         [](const auto& locale) {
                             std::string name = locale.param;
                             std::erase_if(name, [](char c) { return c == '@' || c == '=' || c == '_'; });
                             return name;
                         });

TEST(CollationTest, numbersTooLongForAKeyAreOrderedToo) {
    const Collation collation("tr");
    std::vector<std::string> texts(3000, "orta");
    for (const std::size_t digits : {300UL, 199UL, 201UL, 200UL, 255UL, 254UL})
        for (const auto* frame : {"", "a"}) {
            texts.push_back(frame + std::string(digits, '5'));
            texts.push_back(frame + std::string(40, '0') + std::string(digits, '5') + "x");
        }
    EXPECT_THAT(collation.order(viewsOf(texts)), ElementsAreArray(comparedOrder(collation, texts)));
}

TEST(CollationTest, aBrokenTextIsPlacedAndBreaksNothing) {
    const Collation collation("tr");
    std::vector<std::string> texts(3000, "a");
    for (const auto* broken : {"\xc3", "a\xc5", "\xff", "\xe2\x82", "b\x80", "\xc3(", "\xc0\xaf"})
        texts.emplace_back(broken);
    texts.emplace_back("a\0b", 3);
    EXPECT_THAT(collation.order(viewsOf(texts)), ElementsAreArray(comparedOrder(collation, texts)));
}

TEST(CollationTest, veryLongTextsAreOrdered) {
    const Collation collation("tr");
    std::vector<std::string> texts(3000, "a");
    const std::string far(70'000, 'x');
    const std::string near(60'000, 'x');
    texts.insert(texts.end(), {far + "b", far + "a", far.substr(1), std::string(100'000, '\xff')});
    const auto order = collation.order(viewsOf(texts));
    EXPECT_EQ(collation.compare(far + "b", far + "a"), std::weak_ordering::equivalent);
    EXPECT_EQ(collation.compare(near + "b", near + "a"), std::weak_ordering::greater);
    EXPECT_TRUE(std::ranges::find(order, 3000U) < std::ranges::find(order, 3001U));
}

TEST(CollationTest, aHundredThousandTextsAreInOrder) {
    const Collation collation("tr");
    std::mt19937 random(7);
    std::vector<std::string> texts(100'000);
    for (auto& text : texts)
        text = randomText(random, tightPieces(), 12);
    EXPECT_EQ(collation.order(viewsOf(texts)), comparedOrder(collation, texts));
}

TEST(CollationTest, theLocaleIsTheFirstVariableThatIsSet) {
    EXPECT_EQ(collationLocale({.lcAll = "sv_SE.UTF-8", .lcCollate = "de_DE", .lang = "en_US"}), "sv_SE.UTF-8");
    EXPECT_EQ(collationLocale({.lcAll = nullptr, .lcCollate = "de_DE", .lang = "en_US"}), "de_DE");
    EXPECT_EQ(collationLocale({.lcAll = "", .lcCollate = "", .lang = "en_US"}), "en_US");
}

TEST(CollationTest, theLocaleIsTurkishWhereTheEnvironmentNamesNoLanguage) {
    EXPECT_EQ(collationLocale({.lcAll = nullptr, .lcCollate = nullptr, .lang = nullptr}), "tr");
    for (const auto* locale : {"C", "POSIX", "C.UTF-8", "C.utf8", ""})
        EXPECT_EQ(collationLocale({.lcAll = nullptr, .lcCollate = nullptr, .lang = locale}), "tr") << locale;
    EXPECT_EQ(collationLocale({.lcAll = "C", .lcCollate = "sv_SE", .lang = "en_US"}), "tr");
    EXPECT_EQ(collationLocale({.lcAll = nullptr, .lcCollate = nullptr, .lang = "ca_ES"}), "ca_ES");
}

TEST(CollationTest, aLocaleNamedAsInTheEnvironmentIsFound) {
    for (const auto* swedish : {"sv", "sv_SE", "sv_SE.UTF-8", "sv_SE.ISO-8859-1@euro"})
        EXPECT_TRUE(Collation(swedish).compare("z", "ä") < 0) << swedish;
    for (const auto* other : {"de_DE.UTF-8", "no such locale", "!!", ""})
        EXPECT_TRUE(Collation(other).compare("z", "ä") > 0) << other;
    EXPECT_TRUE(Collation(std::string(5000, 'a')).compare("z", "ä") > 0);
}

TEST(CollationTest, aScriptNamedAsInTheEnvironmentIsFound) {
    const auto letterPairIsAfterItsFirstLetter = [](const char* locale) {
        return Collation(locale).compare("lz", "lj") < 0;
    };
    EXPECT_TRUE(letterPairIsAfterItsFirstLetter("sr_RS.UTF-8@latin"));
    EXPECT_FALSE(letterPairIsAfterItsFirstLetter("sr_RS.UTF-8"));
    EXPECT_FALSE(letterPairIsAfterItsFirstLetter("uz_UZ@cyrillic"));
}

TEST(CollationTest, theUsersCollationIsOne) {
    EXPECT_EQ(&Collation::ofUser(), &Collation::ofUser());
    EXPECT_TRUE(Collation::ofUser().compare("a2", "a10") < 0);
}

}  // namespace
