// SPDX-License-Identifier: MIT
#include "app/state/EntryBrowser.h"

#include "tests/support/Entries.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Column = EntrySort::Column;

constexpr EntrySort byTitle{.column = Column::title, .ascending = true};
constexpr EntrySort byTitleDown{.column = Column::title, .ascending = false};
constexpr EntrySort manual{.column = Column::manual, .ascending = true};

/// "Posta", "Banka" and "Zil" in the root, "Bahçe" in a group below it.
KdbxGroup smallTree() {
    auto root = groupNamed("Kök");
    root.entries = {entryTitled("Posta"), entryTitled("Banka"), entryTitled("Zil")};
    auto garden = groupNamed("Ev");
    garden.entries = {entryTitled("Bahçe")};
    root.groups = {garden};
    return root;
}

TEST(EntryBrowserTest, showsAGroupsOwnEntriesInTheOrderThatIsAskedFor) {
    EntryBrowser browser;
    const auto root = smallTree();
    EXPECT_THAT(titlesOf(browser.entriesIn(root, byTitle)), ElementsAre("Banka", "Posta", "Zil"));
    EXPECT_THAT(titlesOf(browser.entriesIn(root, byTitleDown)), ElementsAre("Zil", "Posta", "Banka"));
    EXPECT_THAT(titlesOf(browser.entriesIn(root, manual)), ElementsAre("Posta", "Banka", "Zil"));
    EXPECT_THAT(titlesOf(browser.entriesIn(root.groups[0], byTitle)), ElementsAre("Bahçe"));
}

TEST(EntryBrowserTest, givesThatOrderAsIndicesOfTheStoredOne) {
    EntryBrowser browser;
    const auto root = smallTree();
    EXPECT_THAT(browser.orderIn(root, byTitle), ElementsAre(1U, 0U, 2U));
    EXPECT_THAT(browser.orderIn(root, manual), ElementsAre(0U, 1U, 2U));
}

TEST(EntryBrowserTest, searchesAllGroupsAndSortsWhatItFinds) {
    EntryBrowser browser;
    const auto root = smallTree();
    EXPECT_THAT(titlesOf(browser.matching(root, "ba", byTitle)), ElementsAre("Bahçe", "Banka"));
    EXPECT_THAT(titlesOf(browser.matching(root, "ba", byTitleDown)), ElementsAre("Banka", "Bahçe"));
    EXPECT_THAT(titlesOf(browser.matching(root, "ba", manual)), ElementsAre("Banka", "Bahçe"));
    EXPECT_THAT(titlesOf(browser.matching(root, "yok", byTitle)), IsEmpty());
}

TEST(EntryBrowserTest, followsTheChangesOfTheVault) {
    EntryBrowser browser;
    auto root = smallTree();
    static_cast<void>(browser.entriesIn(root, byTitle));
    static_cast<void>(browser.matching(root, "ba", byTitle));
    root.entries.mutableAt(2).title = "Bakkal";
    root.entries.removeAt(1);
    EXPECT_THAT(titlesOf(browser.entriesIn(root, byTitle)), ElementsAre("Bakkal", "Posta"));
    EXPECT_THAT(titlesOf(browser.matching(root, "ba", byTitle)), ElementsAre("Bahçe", "Bakkal"));
}

TEST(EntryBrowserTest, preparesALargeVaultLittleByLittle) {
    EntryBrowser browser;
    auto root = groupNamed("Kök");
    for (int number = 0; number < 5'000; ++number)
        root.entries.append(entryTitled("Kayıt " + std::to_string(number)));
    int steps = 1;
    while (browser.prepare(root, byTitle))
        ++steps;
    EXPECT_GT(steps, 1);
    EXPECT_FALSE(browser.prepare(root, byTitle));
    EXPECT_EQ(browser.matching(root, "4999", byTitle).size(), 1U);
}

TEST(EntryBrowserTest, startsAnewOnceItHasForgotten) {
    EntryBrowser browser;
    const auto root = smallTree();
    while (browser.prepare(root, byTitle)) {
    }
    browser.forget();
    EXPECT_TRUE(browser.prepare(root, byTitle));
    EXPECT_THAT(titlesOf(browser.matching(root, "ba", byTitle)), ElementsAre("Bahçe", "Banka"));
}

TEST(EntryBrowserTest, holdsNoEntryOnceItHasForgotten) {
    EntryBrowser browser;
    auto root = smallTree();
    static_cast<void>(browser.entriesIn(root, byTitle));
    static_cast<void>(browser.matching(root, "ba", byTitle));
    browser.forget();
    const auto* const before = &root.entries[0];
    root.entries.mutableAt(0).title = "x";
    EXPECT_EQ(&root.entries[0], before);  // what is not shared is changed in place
}

}  // namespace
