// SPDX-License-Identifier: MIT
#include "app/state/EntrySearch.h"

#include "app/state/SearchText.h"
#include "app/state/SubstringSearch.h"
#include "tests/support/Entries.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

bool titleMatches(std::string title, std::string_view query) {
    return matches(entryTitled(std::move(title)), query);
}

// What a search finds, by looking at one entry after the other.
EntryReferences foundOneByOne(const KdbxGroup& group, std::string_view query) {
    EntryReferences found;
    for (const auto& entry : group.entries)
        if (matches(entry, query))
            found.push_back(&entry);
    for (const auto& subgroup : group.groups)
        for (const auto* entry : foundOneByOne(subgroup, query))
            found.push_back(entry);
    return found;
}

class RandomVault {
public:
    explicit RandomVault(unsigned seed) : m_random(seed) {}

    std::string text(std::size_t most) {
        static const std::vector<std::string> pieces{"a",       "b",  "A",  " ", "ı",       "I", "İ", "i",
                                                     "i\u0307", "ş",  "Ş",  "é", "e\u0301", "Σ", "σ", "ς",
                                                     "ß",       "\n", "\t", "1", "字",      "-"};
        std::string text;
        for (auto count = below(most + 1); count > 0; --count)
            text += pieces[below(pieces.size())];
        return text;
    }

    KdbxEntry entry() {
        KdbxEntry entry;
        for (auto* field : {&entry.title, &entry.username, &entry.url, &entry.notes})
            *field = text(6);
        for (auto count = below(3); count > 0; --count)
            entry.tags.push_back(text(3));
        for (auto count = below(4); count > 0; --count) {
            const auto name = text(3);
            entry.customFields[name] = text(4);
            if (below(2) == 0)
                entry.protectedCustomFields.insert(name);
        }
        return entry;
    }

    KdbxGroup group(std::size_t depth) {
        KdbxGroup group;
        for (auto count = below(12); count > 0; --count)
            group.entries.append(entry());
        for (auto count = depth == 0 ? 0 : below(4); count > 0; --count)
            group.groups.append(this->group(depth - 1));
        return group;
    }

    // One change such as a user makes, somewhere in the tree.
    void change(KdbxGroup& group) {
        if (!group.groups.empty() && below(2) == 0)
            return change(group.groups.mutableAt(below(group.groups.size())));
        const auto size = group.entries.size();
        switch (below(6)) {
            case 0:
                return group.entries.insert(below(size + 1), entry());
            case 1:
                return size == 0 ? void() : static_cast<void>(group.entries.removeAt(below(size)));
            case 2:
                return group.groups.append(this->group(1));
            case 3:
                return group.groups.empty() ? void()
                                            : static_cast<void>(group.groups.removeAt(below(group.groups.size())));
            case 4: {
                std::vector<std::size_t> indices(size);
                for (std::size_t i = 0; i < size; ++i)
                    indices[i] = size - 1 - i;
                return group.entries.rearrange(indices);
            }
            default:
                return size == 0 ? void() : static_cast<void>(group.entries.mutableAt(below(size)).title = text(6));
        }
    }

    std::size_t below(std::size_t limit) { return m_random() % limit; }

private:
    std::mt19937 m_random;
};

TEST(EntrySearchTest, spacesAndTabsAloneAreNoSearchButALineBreakIs) {
    for (const auto* text : {"", " ", "\t \t", "\u00a0", "\u3000"})
        EXPECT_FALSE(isSearch(text)) << text;
    for (const auto* text : {"a", " a ", "\n", " \r\n ", "\u2028", "\u200b"})
        EXPECT_TRUE(isSearch(text)) << text;
}

TEST(EntrySearchTest, aQueryWithoutWordsMatchesEveryEntry) {
    EXPECT_TRUE(titleMatches("banka", ""));
    EXPECT_TRUE(titleMatches("", " \t "));
    EXPECT_FALSE(titleMatches("banka", "\n"));
    EXPECT_TRUE(titleMatches("iki\nsatır", "\n"));
}

TEST(EntrySearchTest, looksIntoTheSixFields) {
    KdbxEntry entry;
    entry.title = "başlık";
    entry.username = "kullanıcı";
    entry.url = "https://ornek.test/yol";
    entry.notes = "birinci\nikinci";
    entry.tags = {"etiket", "iki parça"};
    entry.customFields["Alan"] = "değeri";
    for (const auto* query :
         {"aşlı", "kullan", "ornek.test/", "birinci\niki", "etiket", "iki", "parça", "alan", "değer"})
        EXPECT_TRUE(matches(entry, query)) << query;
    EXPECT_FALSE(matches(entry, "olmayan"));
}

TEST(EntrySearchTest, wordsMayStandInDifferentFieldsInAnyOrder) {
    auto entry = entryTitled("ikinci");
    entry.notes = "birinci";
    EXPECT_TRUE(matches(entry, "birinci ikinci"));
    EXPECT_TRUE(matches(entry, "  ikinci   birinci "));
    EXPECT_FALSE(matches(entry, "birinci ikinci üçüncü"));
}

TEST(EntrySearchTest, noWordSpansTwoFields) {
    auto entry = entryTitled("ab");
    entry.username = "cd";
    entry.tags = {"ef", "gh"};
    EXPECT_FALSE(matches(entry, "abcd"));
    EXPECT_FALSE(matches(entry, "efgh"));
    EXPECT_FALSE(matches(entry, "b\u00a0c"));
}

TEST(EntrySearchTest, wordsAreDividedBySpacesAlone) {
    EXPECT_FALSE(titleMatches("b a", "a\tb"));
    EXPECT_TRUE(titleMatches("xa\tby", "a\tb"));
    EXPECT_FALSE(titleMatches("b a", "a\u00a0b"));
}

TEST(EntrySearchTest, neitherThePasswordNorOtherFieldsAreSearched) {
    auto entry = entryTitled("banka");
    entry.password = SecureString("gizli");
    entry.autoTypeSequence = "sekans";
    entry.unknownXML = {"<yabancı/>"};
    entry.historyItems.append(entryTitled("eski"));
    for (const auto* query : {"gizli", "sekans", "yabancı", "eski"})
        EXPECT_FALSE(matches(entry, query)) << query;
}

TEST(EntrySearchTest, aProtectedCustomFieldIsFoundNeitherByNameNorByValue) {
    KdbxEntry entry;
    entry.customFields["açık ad"] = "açık değer";
    entry.customFields["kapalı ad"] = "kapalı değer";
    entry.protectedCustomFields = {"kapalı ad"};
    EXPECT_TRUE(matches(entry, "açık"));
    EXPECT_TRUE(matches(entry, "ad"));
    EXPECT_FALSE(matches(entry, "kapalı"));

    entry.customFields["s\u0327ifre"] = "örtülü";
    entry.protectedCustomFields.insert("şifre");
    EXPECT_FALSE(matches(entry, "örtülü"));
}

TEST(EntrySearchTest, caseMakesNoDifferenceByTheMappingForAllLanguages) {
    EXPECT_TRUE(titleMatches("ŞEKER ÇAY", "şeker çay"));
    EXPECT_TRUE(titleMatches("şeker", "ŞEKER"));
    EXPECT_TRUE(titleMatches("INCI", "inci"));
    EXPECT_TRUE(titleMatches("inci", "INCI"));
    EXPECT_FALSE(titleMatches("INCI", "ıncı"));
    EXPECT_FALSE(titleMatches("ılık", "ILIK"));
    EXPECT_TRUE(titleMatches("ılık", "ıLıK"));
}

TEST(EntrySearchTest, theDottedCapitalIsASmallOneWithACombiningDot) {
    EXPECT_TRUE(titleMatches("İnci", "i\u0307nci"));
    EXPECT_TRUE(titleMatches("İnci", "İ"));
    EXPECT_TRUE(titleMatches("İnci", "i"));
    EXPECT_TRUE(titleMatches("İnci", "nci"));
    EXPECT_FALSE(titleMatches("İnci", "inci"));
    EXPECT_FALSE(titleMatches("inci", "İnci"));
}

TEST(EntrySearchTest, matchesCodePointsWithoutRegardToAccentsOrSpelling) {
    EXPECT_FALSE(titleMatches("şeker", "seker"));
    EXPECT_FALSE(titleMatches("ş", "s\u0327"));
    EXPECT_TRUE(titleMatches("s\u0327eker", "s"));
    EXPECT_TRUE(titleMatches("e\u0301", "\u0301"));
    EXPECT_FALSE(titleMatches("字", "孖"));
}

TEST(EntrySearchTest, findsInTheOrderOfTheTree) {
    KdbxGroup root;
    KdbxGroup first;
    KdbxGroup inner;
    KdbxGroup second;
    inner.entries.append(entryTitled("x3"));
    first.entries.append(entryTitled("x2"));
    first.groups.append(inner);
    second.entries.append(entryTitled("x4"));
    root.entries.append(entryTitled("x1"));
    root.entries.append(entryTitled("y"));
    root.groups.append(first);
    root.groups.append(second);

    EntrySearch search;
    EXPECT_THAT(titlesOf(search.matching(root, "x")), ElementsAre("x1", "x2", "x3", "x4"));
    EXPECT_THAT(titlesOf(search.matching(root, "")), ElementsAre("x1", "y", "x2", "x3", "x4"));
    EXPECT_THAT(titlesOf(search.matching(root, "x 3")), ElementsAre("x3"));
    EXPECT_THAT(search.matching(root, "z"), IsEmpty());
}

TEST(EntrySearchTest, findsTheEntriesOfTheVaultItself) {
    KdbxGroup root;
    root.entries.append(entryTitled("x"));
    EntrySearch search;
    EXPECT_THAT(search.matching(root, "x"), ElementsAre(&root.entries[0]));
}

TEST(EntrySearchTest, noWordSpansTwoEntries) {
    KdbxGroup root;
    root.entries.append(entryTitled("ab"));
    root.entries.append(entryTitled("cd"));
    EntrySearch search;
    EXPECT_THAT(search.matching(root, "bc"), IsEmpty());
    EXPECT_THAT(titlesOf(search.matching(root, "cd")), ElementsAre("cd"));
    EXPECT_THAT(search.matching(root, "ab cd"), IsEmpty());
}

TEST(EntrySearchTest, anEntryIsFoundOnceHoweverOftenItHasTheWord) {
    KdbxGroup root;
    root.entries.append(entryTitled("aaaa aaaa"));
    root.entries.append(entryTitled("a"));
    EntrySearch search;
    EXPECT_THAT(titlesOf(search.matching(root, "a")), ElementsAre("aaaa aaaa", "a"));
}

TEST(EntrySearchTest, aVaultWithoutEntriesHasNothingToFind) {
    KdbxGroup root;
    root.groups.append(KdbxGroup());
    EntrySearch search;
    EXPECT_THAT(search.matching(root, "a"), IsEmpty());
    EXPECT_THAT(search.matching(root, ""), IsEmpty());
}

TEST(EntrySearchTest, seesWhatChangedSinceTheLastSearch) {
    KdbxGroup root;
    root.entries.append(entryTitled("eski"));
    root.entries.append(entryTitled("kalan"));
    EntrySearch search;
    ASSERT_THAT(titlesOf(search.matching(root, "eski")), ElementsAre("eski"));

    root.entries.mutableAt(0).title = "yeni";

    EXPECT_THAT(search.matching(root, "eski"), IsEmpty());
    EXPECT_THAT(titlesOf(search.matching(root, "yeni")), ElementsAre("yeni"));
    EXPECT_THAT(titlesOf(search.matching(root, "kalan")), ElementsAre("kalan"));
}

TEST(EntrySearchTest, anEntryInTheMemoryOfAnotherIsNotTakenForIt) {
    EntrySearch search;
    for (int i = 0; i < 50; ++i) {
        KdbxGroup root;
        root.entries.append(entryTitled("kayıt" + std::to_string(i) + "."));
        EXPECT_EQ(search.matching(root, "kayıt" + std::to_string(i) + ".").size(), 1U);
        EXPECT_THAT(search.matching(root, "kayıt" + std::to_string(i + 1) + "."), IsEmpty());
    }
}

TEST(EntrySearchTest, groupsThatShareTheirEntriesAreSearchedEach) {
    KdbxGroup root;
    KdbxGroup group;
    group.entries.append(entryTitled("x"));
    group.entries.append(entryTitled("y"));
    root.groups.append(group);
    root.groups.append(group);
    EntrySearch search;
    EXPECT_THAT(titlesOf(search.matching(root, "x")), ElementsAre("x", "x"));
    root.groups.append(group);
    EXPECT_THAT(titlesOf(search.matching(root, "x")), ElementsAre("x", "x", "x"));
    root.groups.mutableAt(1).entries.mutableAt(0).title = "z";
    EXPECT_THAT(titlesOf(search.matching(root, "z")), ElementsAre("z"));
    EXPECT_THAT(titlesOf(search.matching(root, "y")), ElementsAre("y", "y", "y"));
}

TEST(EntrySearchTest, forgettingLetsGoOfTheSecrets) {
    EntrySearch search;
    KdbxGroup root;
    root.entries.append(entryTitled("x"));
    ASSERT_EQ(search.matching(root, "x").size(), 1U);
    const auto* before = &root.entries[0];

    search.forget();

    // An entry that nobody else holds is changed where it is.
    root.entries.mutableAt(0).title = "y";
    EXPECT_EQ(&root.entries[0], before);
    EXPECT_THAT(titlesOf(search.matching(root, "y")), ElementsAre("y"));
}

TEST(EntrySearchTest, aTreeTooDeepForTheStackIsSearched) {
    KdbxGroup root;
    root.entries.append(entryTitled("x"));
    for (int depth = 0; depth < 100'000; ++depth) {
        KdbxGroup parent;
        parent.groups.append(std::move(root));
        root = std::move(parent);
    }
    EntrySearch search;
    EXPECT_THAT(titlesOf(search.matching(root, "x")), ElementsAre("x"));
}

TEST(EntrySearchTest, findsWhatLookingAtEachEntryFindsWhateverIsChangedBetween) {
    RandomVault random(4711);
    for (int vault = 0; vault < 30; ++vault) {
        auto root = random.group(3);
        auto earlier = root;
        EntrySearch search;
        for (int step = 0; step < 40; ++step) {
            const auto query = random.text(step % 2 == 0 ? 3 : 6);
            EXPECT_EQ(search.matching(root, query), foundOneByOne(root, query)) << query;
            if (step % 4 == 3)
                std::swap(root, earlier);
            for (auto changes = random.below(3); changes > 0; --changes)
                random.change(root);
            if (step % 8 == 7)
                earlier = root;
        }
    }
}

TEST(EntrySearchTest, findsTheSameHoweverMuchIsPreparedBefore) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        RandomVault maker(seed);
        auto root = maker.group(2);
        for (int entry = 0; entry < 300; ++entry)
            root.entries.append(entryTitled(maker.text(6)));
        EntrySearch search;
        for (int step = 0; step < 30; ++step) {
            search.prepare(root, maker.below(200));
            if (maker.below(4) == 0) {
                ASSERT_EQ(search.matching(root, "a"), foundOneByOne(root, "a")) << seed << ' ' << step;
            }
            for (auto changes = maker.below(8) == 0 ? 150 : maker.below(3); changes > 0; --changes)
                maker.change(root);
        }
    }
}

TEST(EntrySearchTest, isPreparedAfterAsManyStepsAsItTakes) {
    KdbxGroup root;
    for (int entry = 0; entry < 10; ++entry)
        root.entries.append(entryTitled("a"));
    EntrySearch search;
    EXPECT_FALSE(search.prepare(root, 4));
    EXPECT_FALSE(search.prepare(root, 4));
    EXPECT_TRUE(search.prepare(root, 4));
    EXPECT_TRUE(search.prepare(root, 4));
    root.entries.mutableAt(3).title = "b";
    EXPECT_TRUE(search.prepare(root, 0)) << "the few that change are looked at at once";
}

TEST(EntrySearchTest, followsWhatComesGoesAndMovesInALongList) {
    RandomVault maker(1453);
    KdbxGroup root;
    for (int entry = 0; entry < 5000; ++entry)
        root.entries.append(entryTitled(maker.text(3)));
    EntrySearch search;
    for (int step = 0; step < 120; ++step) {
        for (auto changes = maker.below(4); changes > 0; --changes)
            maker.change(root);
        if (maker.below(4) == 0) {
            std::vector<std::size_t> kept(root.entries.size());
            std::iota(kept.begin(), kept.end(), 0U);
            const auto first = kept.begin() + static_cast<std::ptrdiff_t>(maker.below(kept.size() - 1500));
            const auto last = first + static_cast<std::ptrdiff_t>(maker.below(1500));
            if (maker.below(2) == 0)
                std::rotate(kept.begin(), first, last);
            else if (kept.size() > 4000)
                kept.erase(first, last);
            root.entries.rearrange(kept);
        }
        while (maker.below(2) == 0)
            search.prepare(root, 700);
        ASSERT_EQ(search.matching(root, "a"), foundOneByOne(root, "a")) << step;
        for (int entry = 0; entry < 100 && root.entries.size() < 4000; ++entry)
            root.entries.append(entryTitled(maker.text(3)));
    }
}

TEST(EntrySearchTest, aHundredThousandEntriesAreSearchedAsOneByOne) {
    RandomVault random(17);
    std::vector<KdbxEntry> some;
    for (int i = 0; i < 500; ++i)
        some.push_back(random.entry());
    KdbxGroup root;
    for (int i = 0; i < 100'000; ++i)
        root.entries.append(some[random.below(some.size())]);
    EntrySearch search;
    for (const auto* query : {"a", "ış", "a b", "abba", "i\u0307"})
        EXPECT_TRUE(search.matching(root, query) == foundOneByOne(root, query)) << query;
}

TEST(SearchTextTest, theFastPathLowersAsTheOtherDoes) {
    RandomVault random(2023);
    Bytes texts;
    std::string expected;
    for (int i = 0; i < 3000; ++i) {
        const auto entry = random.entry();
        SearchText::appendLowered(texts, entry);
        expected += SearchText::lowered(entry);
    }
    EXPECT_EQ(textOf(texts), expected);
}

TEST(SearchTextTest, everyLatinLetterIsLoweredAsTextIs) {
    for (char32_t scalar = 0; scalar < 0x200; ++scalar) {
        const auto letter = scalar < 0x80 ? std::string(1, static_cast<char>(scalar))
                                          : std::string{static_cast<char>(0xc0 | scalar >> 6),
                                                        static_cast<char>(0x80 | (scalar & 0x3f))};
        for (const auto& title : {letter, "A" + letter + "B", letter + letter, letter + "Σ"}) {
            Bytes texts;
            SearchText::appendLowered(texts, entryTitled(title));
            EXPECT_EQ(textOf(texts), Text::lowercased(title) + "    ") << title;
        }
    }
}

TEST(SearchTextTest, brokenTextIsRepairedOnBothPaths) {
    for (const auto* title : {"\xc3", "A\xc5", "\xc3(", "\x80", "\xc1\x81", "A\xff"}) {
        Bytes texts;
        SearchText::appendLowered(texts, entryTitled(title));
        EXPECT_EQ(textOf(texts), SearchText::lowered(entryTitled(title)));
    }
}

TEST(SubstringSearchTest, findsWhatAPlainSearchFindsFromEveryPlace) {
    std::mt19937 random(3);
    for (int round = 0; round < 400; ++round) {
        std::string text(random() % 300, 'a');
        for (auto& letter : text)
            letter = static_cast<char>('a' + random() % 3);
        std::string part(random() % 7, 'a');
        for (auto& letter : part)
            letter = static_cast<char>('a' + random() % 3);
        for (std::size_t from = 0; from <= text.size() + 1; ++from)
            EXPECT_EQ(SubstringSearch::find(text, part, from), text.find(part, from)) << text << ' ' << part;
    }
}

TEST(SubstringSearchTest, findsAPartAtTheVeryEndAndNoneThatIsLonger) {
    const std::string text = std::string(64, '.') + "son";
    EXPECT_EQ(SubstringSearch::find(text, "son"), 64U);
    EXPECT_EQ(SubstringSearch::find(text, text), 0U);
    EXPECT_EQ(SubstringSearch::find(text, text + "."), std::string_view::npos);
    EXPECT_EQ(SubstringSearch::find("", "a"), std::string_view::npos);
    EXPECT_EQ(SubstringSearch::find(text, "so\n"), std::string_view::npos);
}

}  // namespace
