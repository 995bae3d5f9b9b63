// SPDX-License-Identifier: MIT
#include "tests/app/state/StateFakes.h"

#include <gmock/gmock.h>

namespace {

using namespace std::chrono_literals;
using Column = EntrySort::Column;
using ::testing::ElementsAre;

/// The root holds "C", "A", "D", "B" in stored order.
class AppStateOrderTest : public StateTest {
protected:
    AppStateOrderTest() {
        auto vault = smallVault();
        vault.root.entries = {entryTitled("C"), entryTitled("A"), entryTitled("D"), entryTitled("B")};
        putVault(vault);
        unlock();
        clock.advance(1h);
    }

    UUID idOf(const std::string& title) const {
        for (const auto& entry : root().allEntries())
            if (entry.title == title)
                return entry.id;
        ADD_FAILURE() << "no entry " << title;
        return {};
    }

    void sortBy(Column column, bool ascending = true) { state->setSort({.column = column, .ascending = ascending}); }

    std::vector<std::string> stored() const { return titlesOf(root().entries); }
    std::vector<std::string> shown() const {
        std::vector<std::string> titles;
        for (const auto* entry : state->visibleEntries())
            titles.push_back(entry->title);
        return titles;
    }
};

TEST_F(AppStateOrderTest, aDragInTheManualOrderIsStoredWithoutAWord) {
    sortBy(Column::manual);

    state->moveEntriesBefore({idOf("B")}, idOf("A"));

    EXPECT_THAT(stored(), ElementsAre("C", "B", "A", "D"));
    EXPECT_EQ(root().modified, clock.now());
    EXPECT_EQ(state->statusMessage(), std::nullopt);
    EXPECT_EQ(state->undoLabel(), "Sırayı Değiştir");
    EXPECT_TRUE(state->isDirty());
}

TEST_F(AppStateOrderTest, aDragInASortedListFreezesWhatIsShown) {
    sortBy(Column::title, false);
    ASSERT_THAT(shown(), ElementsAre("D", "C", "B", "A"));

    state->moveEntriesBefore({idOf("A")}, idOf("C"));

    EXPECT_THAT(stored(), ElementsAre("D", "A", "C", "B"));
    EXPECT_THAT(shown(), ElementsAre("D", "A", "C", "B"));
    EXPECT_EQ(state->sort(), (EntrySort{.column = Column::manual, .ascending = false}));
    EXPECT_EQ(preferences->sortColumn(), "manual");
    EXPECT_EQ(state->statusMessage(), "Kendi sıralamana geçildi.");
    clock.advance(2s);
    EXPECT_EQ(state->statusMessage(), std::nullopt);
}

TEST_F(AppStateOrderTest, oneUndoBringsBackTheOrderAndTheColumn) {
    sortBy(Column::title);
    state->moveEntriesToEnd({idOf("A")});
    ASSERT_THAT(stored(), ElementsAre("B", "C", "D", "A"));

    state->undo();

    EXPECT_THAT(stored(), ElementsAre("C", "A", "D", "B"));
    EXPECT_EQ(state->sort().column, Column::title);
    EXPECT_EQ(preferences->sortColumn(), "title");
    state->redo();
    EXPECT_THAT(stored(), ElementsAre("B", "C", "D", "A"));
    EXPECT_EQ(state->sort().column, Column::manual);
}

TEST_F(AppStateOrderTest, movingEntriesKeepTheOrderInWhichTheyAreShown) {
    sortBy(Column::title);

    state->moveEntriesBefore({idOf("D"), idOf("C")}, idOf("A"));

    EXPECT_THAT(stored(), ElementsAre("C", "D", "A", "B"));
}

TEST_F(AppStateOrderTest, entriesMovedToTheEndStandThereInShownOrder) {
    sortBy(Column::manual);

    state->moveEntriesToEnd({idOf("A"), idOf("C")});

    EXPECT_THAT(stored(), ElementsAre("D", "B", "C", "A"));
    EXPECT_EQ(state->undoLabel(), "Sırayı Değiştir");
}

TEST_F(AppStateOrderTest, aDropOntoItselfOrOntoTheDraggedSelectionDoesNothing) {
    state->moveEntriesBefore({idOf("A")}, idOf("A"));
    state->moveEntriesBefore({idOf("A"), idOf("B")}, idOf("B"));

    EXPECT_THAT(stored(), ElementsAre("C", "A", "D", "B"));
    EXPECT_FALSE(state->canUndo());
    EXPECT_EQ(state->sort().column, Column::title);
}

TEST_F(AppStateOrderTest, whatIsNotInTheListNeitherMovesNorTakesADrop) {
    state->moveEntriesBefore({}, idOf("A"));
    state->moveEntriesBefore({idOf("Forum")}, idOf("A"));
    state->moveEntriesBefore({idOf("A")}, idOf("Forum"));
    state->moveEntriesBefore({idOf("A")}, UUID::random());
    state->moveEntriesToEnd({});
    state->moveEntriesToEnd({idOf("Forum")});

    EXPECT_FALSE(state->canUndo());
    EXPECT_EQ(state->sort().column, Column::title);
    EXPECT_EQ(state->statusMessage(), std::nullopt);
}

TEST_F(AppStateOrderTest, aSearchHasNoOrderToChange) {
    state->setSearchText("a");

    state->moveEntriesBefore({idOf("A")}, idOf("C"));
    state->moveEntriesToEnd({idOf("A")});

    EXPECT_FALSE(state->canUndo());
    EXPECT_THAT(stored(), ElementsAre("C", "A", "D", "B"));
}

TEST_F(AppStateOrderTest, spacesInTheSearchFieldAreNoSearch) {
    state->setSearchText(" \t");

    state->moveEntriesToEnd({idOf("A")});

    EXPECT_EQ(state->undoLabel(), "Sırayı Değiştir");
}

TEST_F(AppStateOrderTest, withoutASelectedGroupTheRootIsReordered) {
    sortBy(Column::manual);
    state->setSelectedGroupID(std::nullopt);

    state->moveEntriesToEnd({idOf("C")});

    EXPECT_THAT(stored(), ElementsAre("A", "D", "B", "C"));
}

TEST_F(AppStateOrderTest, aReorderInASelectedGroupTouchesThatGroupAlone) {
    state->addEntry(entryTitled("Ek"), social().id);
    state->setSelectedGroupID(social().id);
    sortBy(Column::manual);
    const auto rootModified = root().modified;

    state->moveEntriesToEnd({idOf("Forum")});

    EXPECT_THAT(titlesOf(social().entries), ElementsAre("Ek", "Forum"));
    EXPECT_THAT(stored(), ElementsAre("C", "A", "D", "B"));
    EXPECT_EQ(root().modified, rootModified);
}

// The list then shows the root, but the order belongs to the group that is gone.
TEST_F(AppStateOrderTest, aReorderWithASelectedGroupThatIsGoneIsAStepWithoutAnOrder) {
    state->setSelectedGroupID(UUID::random());
    const auto rootModified = root().modified;

    state->moveEntriesToEnd({idOf("C")});

    EXPECT_THAT(stored(), ElementsAre("C", "A", "D", "B"));
    EXPECT_EQ(root().modified, rootModified);
    EXPECT_EQ(state->undoLabel(), "Sırayı Değiştir");
    EXPECT_EQ(state->sort().column, Column::manual);
    EXPECT_EQ(state->statusMessage(), "Kendi sıralamana geçildi.");
}

TEST_F(AppStateOrderTest, aReorderLosesNoEntryThatSharesItsIdentifier) {
    state->edit("Hazırlık", [](KdbxDatabase& database) {
        auto twin = database.root.entries[0];
        twin.title = "C'nin ikizi";
        database.root.entries.append(twin);
    });
    sortBy(Column::manual);

    state->moveEntriesToEnd({idOf("A")});

    EXPECT_EQ(root().entries.size(), 5U);
    EXPECT_THAT(stored(), ElementsAre("C", "D", "B", "A", "C'nin ikizi"));
}

}  // namespace
