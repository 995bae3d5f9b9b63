// SPDX-License-Identifier: MIT
#include "app/state/EntrySort.h"

#include "core/text/Collation.h"
#include "tests/support/Entries.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <limits>
#include <random>

namespace {

using testing::ElementsAre;
using Column = EntrySort::Column;

KdbxEntry notedEntry(std::string title, std::string notes) {
    auto entry = entryTitled(std::move(title));
    entry.notes = std::move(notes);
    return entry;
}

KdbxEntry entryModifiedAt(double seconds, std::string notes) {
    auto entry = notedEntry({}, std::move(notes));
    entry.modified = Timestamp{seconds};
    return entry;
}

EntryReferences referencesTo(const std::deque<KdbxEntry>& entries) {
    EntryReferences references;
    for (const auto& entry : entries)
        references.push_back(&entry);
    return references;
}

std::vector<std::string> fieldsOf(const EntryReferences& entries, std::string KdbxEntry::*field) {
    std::vector<std::string> fields;
    for (const auto* entry : entries)
        fields.push_back(entry->*field);
    return fields;
}

std::vector<std::string> titlesSorted(const std::deque<KdbxEntry>& entries, EntrySort sort = {}) {
    return fieldsOf(sort.apply(referencesTo(entries)), &KdbxEntry::title);
}

std::vector<std::string> notesSorted(const std::deque<KdbxEntry>& entries, EntrySort sort) {
    return fieldsOf(sort.apply(referencesTo(entries)), &KdbxEntry::notes);
}

TEST(EntrySortTest, columnsStandInTheOrderOfTheMenuWithTheirNamesAndLabels) {
    std::vector<std::pair<std::string, std::string>> columns;
    for (const auto column : EntrySort::allCases)
        columns.emplace_back(EntrySort::rawValue(column), EntrySort::label(column));
    EXPECT_THAT(columns, ElementsAre(std::pair("manual", "Kendi sıram"), std::pair("title", "Başlık"),
                                     std::pair("username", "Kullanıcı"), std::pair("url", "Adres"),
                                     std::pair("modified", "Değiştirilme")));
}

TEST(EntrySortTest, aColumnIsFoundByItsStoredNameToTheLetter) {
    for (const auto column : EntrySort::allCases)
        EXPECT_EQ(EntrySort::columnFromText(EntrySort::rawValue(column)), column);
    for (const auto* text : {"", "Title", "title ", "titl", "Başlık"})
        EXPECT_EQ(EntrySort::columnFromText(text), std::nullopt) << text;
}

TEST(EntrySortTest, startsWithTitlesAscending) {
    EXPECT_EQ(EntrySort(), (EntrySort{.column = Column::title, .ascending = true}));
    EXPECT_NE(EntrySort(), (EntrySort{.column = Column::title, .ascending = false}));
    EXPECT_NE(EntrySort(), (EntrySort{.column = Column::url, .ascending = true}));
}

TEST(EntrySortTest, manualKeepsTheStoredOrderInBothDirections) {
    const std::deque entries{entryTitled("b"), entryTitled("a"), entryTitled("c")};
    EXPECT_THAT(titlesSorted(entries, {.column = Column::manual, .ascending = true}), ElementsAre("b", "a", "c"));
    EXPECT_THAT(titlesSorted(entries, {.column = Column::manual, .ascending = false}), ElementsAre("b", "a", "c"));
}

TEST(EntrySortTest, sortsTextsAsTheUsersLanguageDoesWithoutRegardToCaseAndDigitsByValue) {
    const std::deque entries{entryTitled("posta 10"), entryTitled("Zil"), entryTitled("Posta 9"), entryTitled("çanta"),
                             entryTitled("Can")};
    EXPECT_THAT(titlesSorted(entries), ElementsAre("Can", "çanta", "Posta 9", "posta 10", "Zil"));
}

TEST(EntrySortTest, eachTextColumnSortsByItsOwnField) {
    std::deque entries{notedEntry("a", "x"), notedEntry("b", "y")};
    entries[0].username = "2";
    entries[1].username = "1";
    entries[0].url = "p";
    entries[1].url = "q";
    EXPECT_THAT(notesSorted(entries, {.column = Column::title}), ElementsAre("x", "y"));
    EXPECT_THAT(notesSorted(entries, {.column = Column::username}), ElementsAre("y", "x"));
    EXPECT_THAT(notesSorted(entries, {.column = Column::url}), ElementsAre("x", "y"));
}

TEST(EntrySortTest, modifiedSortsOlderFirstToTheFractionOfASecond) {
    const std::deque entries{entryModifiedAt(10.5, "c"), entryModifiedAt(-3, "a"), entryModifiedAt(10.25, "b")};
    EXPECT_THAT(notesSorted(entries, {.column = Column::modified}), ElementsAre("a", "b", "c"));
    EXPECT_THAT(notesSorted(entries, {.column = Column::modified, .ascending = false}), ElementsAre("c", "b", "a"));
}

TEST(EntrySortTest, tiesKeepTheirOrderAscendingAndAreReversedDescending) {
    const std::deque titled{notedEntry("b", "1"), notedEntry("a", "2"), notedEntry("b", "3"), notedEntry("a", "4")};
    EXPECT_THAT(notesSorted(titled, {.column = Column::title}), ElementsAre("2", "4", "1", "3"));
    EXPECT_THAT(notesSorted(titled, {.column = Column::title, .ascending = false}), ElementsAre("3", "1", "4", "2"));

    const std::deque timed{entryModifiedAt(5, "1"), entryModifiedAt(5, "2"), entryModifiedAt(4, "3")};
    EXPECT_THAT(notesSorted(timed, {.column = Column::modified}), ElementsAre("3", "1", "2"));
    EXPECT_THAT(notesSorted(timed, {.column = Column::modified, .ascending = false}), ElementsAre("2", "1", "3"));
}

TEST(EntrySortTest, aTitleInTwoSpellingsOfOneTextIsATie) {
    const std::deque entries{notedEntry("s\u0327eker", "1"), notedEntry("şeker", "2"), notedEntry("s\u0327eker", "3")};
    EXPECT_THAT(notesSorted(entries, {.column = Column::title}), ElementsAre("1", "2", "3"));
    EXPECT_THAT(notesSorted(entries, {.column = Column::title, .ascending = false}), ElementsAre("3", "2", "1"));
}

TEST(EntrySortTest, timesThatAreNoNumbersHaveAPlaceToo) {
    const auto nan = std::numeric_limits<double>::quiet_NaN();
    const auto infinite = std::numeric_limits<double>::infinity();
    std::deque<KdbxEntry> entries;
    for (int i = 0; i < 100; ++i)
        for (const auto seconds : {3.0, nan, 1.0, infinite, 0.0, -0.0})
            entries.push_back(entryModifiedAt(seconds, std::to_string(seconds)));
    const auto sorted = notesSorted(entries, {.column = Column::modified});
    EXPECT_EQ(sorted.size(), entries.size());
    EXPECT_LT(std::ranges::find(sorted, std::to_string(1.0)), std::ranges::find(sorted, std::to_string(3.0)));
    EXPECT_THAT(std::vector(sorted.begin(), sorted.begin() + 4),
                ElementsAre("0.000000", "-0.000000", "0.000000", "-0.000000"));
}

TEST(EntrySortTest, noEntriesStayNone) {
    for (const auto column : EntrySort::allCases)
        EXPECT_TRUE((EntrySort{.column = column, .ascending = false}.apply({}).empty()));
}

TEST(EntrySortTest, togglingTheCurrentColumnTurnsItAndTwiceTurnsItBack) {
    EntrySort sort{.column = Column::url, .ascending = true};
    sort.toggle(Column::url);
    EXPECT_EQ(sort, (EntrySort{.column = Column::url, .ascending = false}));
    sort.toggle(Column::url);
    EXPECT_EQ(sort, (EntrySort{.column = Column::url, .ascending = true}));
}

TEST(EntrySortTest, togglingAnotherColumnTakesItAscending) {
    for (const bool ascending : {true, false}) {
        EntrySort sort{.column = Column::url, .ascending = ascending};
        sort.toggle(Column::modified);
        EXPECT_EQ(sort, (EntrySort{.column = Column::modified, .ascending = true}));
    }
}

TEST(EntrySortTest, togglingManualFlipsTheDirectionAndShowsTheSame) {
    const std::deque entries{entryTitled("b"), entryTitled("a")};
    EntrySort sort{.column = Column::manual, .ascending = true};
    sort.toggle(Column::manual);
    EXPECT_FALSE(sort.ascending);
    EXPECT_THAT(titlesSorted(entries, sort), ElementsAre("b", "a"));
}

TEST(EntrySortTest, aHundredThousandEntriesAreSortedAsByComparingEachTwo) {
    std::mt19937 random(99);
    const std::vector<std::string> words{"Posta", "posta", "banka ", "Şube", "ığdır",   "Iğdır", "istanbul", "7",
                                         "07",    "10",    " ",      "ж",    "e\u0301", "é",     "-"};
    std::deque<KdbxEntry> entries(1);
    while (entries.size() < 100'000) {
        std::string title;
        for (auto count = random() % 4; count > 0; --count)
            title += words[random() % words.size()];
        entries.push_back(entries.front());
        entries.back().title = std::move(title);
    }
    auto expected = referencesTo(entries);
    std::ranges::stable_sort(
        expected, [](const auto* a, const auto* b) { return Collation::ofUser().compare(a->title, b->title) < 0; });

    EXPECT_TRUE(EntrySort{.column = Column::title}.apply(referencesTo(entries)) == expected);
    std::ranges::reverse(expected);
    EXPECT_TRUE((EntrySort{.column = Column::title, .ascending = false}.apply(referencesTo(entries)) == expected));
}

}  // namespace
