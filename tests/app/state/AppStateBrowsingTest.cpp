// SPDX-License-Identifier: MIT
#include "tests/app/state/StateFakes.h"

#include <gmock/gmock.h>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

using Extending = AppState::Extending;
using Toggling = AppState::Toggling;

constexpr auto none = std::nullopt;

/// The root shows "a", "b", "c", "d"; the group "Alt" has "e".
class AppStateBrowsingTest : public StateTest {
protected:
    AppStateBrowsingTest() {
        auto vault = smallVault();
        vault.root.entries.clear();
        for (const auto* title : {"c", "a", "d", "b"})
            vault.root.entries.append(entryTitled(title));
        auto group = groupNamed("Alt");
        group.entries = {entryTitled("e")};
        vault.root.groups = {group};
        putVault(vault);
        unlock();
    }

    UUID id(const std::string& title) const {
        for (const auto& entry : state->root()->allEntries())
            if (entry.title == title)
                return entry.id;
        return {};
    }

    static std::vector<std::string> titles(const EntryReferences& entries) {
        std::vector<std::string> titles;
        for (const auto* entry : entries)
            titles.push_back(entry->title);
        return titles;
    }
    std::vector<std::string> shown() const { return titles(state->visibleEntries()); }
    std::vector<std::string> selected() const { return titles(state->selectedEntries()); }

    void click(const std::string& title) { state->selectEntry(id(title), Extending::no, Toggling::no); }
    void extend(const std::string& title) { state->selectEntry(id(title), Extending::yes, Toggling::no); }
    void toggle(const std::string& title) { state->selectEntry(id(title), Extending::no, Toggling::yes); }
};

TEST_F(AppStateBrowsingTest, aGroupShowsItsOwnEntriesInTheChosenOrder) {
    EXPECT_THAT(shown(), ElementsAre("a", "b", "c", "d"));
    state->setSort({.column = EntrySort::Column::title, .ascending = false});
    EXPECT_THAT(shown(), ElementsAre("d", "c", "b", "a"));
    state->setSort({.column = EntrySort::Column::manual, .ascending = false});
    EXPECT_THAT(shown(), ElementsAre("c", "a", "d", "b"));
}

TEST_F(AppStateBrowsingTest, theSelectedGroupIsWhatShows) {
    state->setSelectedGroupID(state->root()->groups[0].id);
    EXPECT_THAT(shown(), ElementsAre("e"));
    state->setSelectedGroupID(UUID::random());
    EXPECT_THAT(shown(), ElementsAre("a", "b", "c", "d"));
}

TEST_F(AppStateBrowsingTest, aSearchCrossesAllGroups) {
    state->setSelectedGroupID(state->root()->groups[0].id);
    state->setSearchText("A");
    EXPECT_TRUE(state->isSearching());
    EXPECT_THAT(shown(), ElementsAre("a"));
    state->setSearchText("e");
    EXPECT_THAT(shown(), ElementsAre("e"));
}

TEST_F(AppStateBrowsingTest, aSearchForSpacesIsNone) {
    state->setSearchText(" \t ");
    EXPECT_FALSE(state->isSearching());
    EXPECT_THAT(shown(), ElementsAre("a", "b", "c", "d"));
}

TEST_F(AppStateBrowsingTest, aSearchFindsWhatAnEditMade) {
    state->setSearchText("yepyeni");
    EXPECT_THAT(shown(), IsEmpty());
    rename("yepyeni");
    EXPECT_THAT(shown(), ElementsAre("yepyeni"));
}

TEST_F(AppStateBrowsingTest, whileLockedNothingShows) {
    click("a");
    state->lock();
    EXPECT_THAT(shown(), IsEmpty());
    EXPECT_THAT(selected(), IsEmpty());
    EXPECT_EQ(state->focusedEntry(), nullptr);
}

TEST_F(AppStateBrowsingTest, clearingTheSearchEmptiesItsField) {
    state->setSearchText("a");
    state->clearSearch();
    EXPECT_EQ(state->searchText(), "");
}

TEST_F(AppStateBrowsingTest, askingForTheSearchIsReportedEachTime) {
    int asked = 0;
    QObject::connect(&*state, &AppState::searchFocusTokenChanged, &*state, [&] { ++asked; });
    state->focusSearch();
    state->focusSearch();
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(state->searchFocusToken(), 2);
}

TEST_F(AppStateBrowsingTest, oneSelectedEntryHasTheFocusAndTwoHaveNot) {
    EXPECT_EQ(state->focusedEntry(), nullptr);
    state->setSelectedEntryIDs({id("a")});
    ASSERT_TRUE(state->focusedEntry());
    EXPECT_EQ(state->focusedEntry()->title, "a");
    state->setSelectedEntryIDs({id("a"), id("b")});
    EXPECT_EQ(state->focusedEntry(), nullptr);
    state->setSelectedEntryIDs({UUID::random()});
    EXPECT_EQ(state->focusedEntry(), nullptr);
}

TEST_F(AppStateBrowsingTest, whatIsSelectedNeedNotShow) {
    click("a");
    state->setSearchText("e");
    ASSERT_TRUE(state->focusedEntry());
    EXPECT_EQ(state->focusedEntry()->title, "a");
}

TEST_F(AppStateBrowsingTest, selectedEntriesAreThoseThatExist) {
    state->setSelectedEntryIDs({id("a"), id("e"), UUID::random()});
    EXPECT_THAT(selected(), UnorderedElementsAre("a", "e"));
}

TEST_F(AppStateBrowsingTest, aPlainClickSelectsOne) {
    click("a");
    click("c");
    EXPECT_THAT(selected(), ElementsAre("c"));
}

TEST_F(AppStateBrowsingTest, anExtendingClickSelectsFromTheAnchorInEitherDirection) {
    click("b");
    extend("d");
    EXPECT_THAT(selected(), UnorderedElementsAre("b", "c", "d"));
    extend("a");
    EXPECT_THAT(selected(), UnorderedElementsAre("a", "b")) << "the former range is replaced";
    extend("b");
    EXPECT_THAT(selected(), ElementsAre("b"));
}

TEST_F(AppStateBrowsingTest, anExtendingClickWithoutAnAnchorSelectsOne) {
    extend("c");
    EXPECT_THAT(selected(), ElementsAre("c"));
    extend("d");
    EXPECT_THAT(selected(), UnorderedElementsAre("c", "d")) << "and made it the anchor";
}

TEST_F(AppStateBrowsingTest, aTogglingClickWinsOverAnExtendingOne) {
    click("a");
    state->selectEntry(id("c"), Extending::yes, Toggling::yes);
    EXPECT_THAT(selected(), UnorderedElementsAre("a", "c"));
    toggle("a");
    EXPECT_THAT(selected(), ElementsAre("c"));
}

TEST_F(AppStateBrowsingTest, aRangeStartsAtTheEntryThatWasToggledAway) {
    click("a");
    toggle("b");
    toggle("b");
    extend("d");
    EXPECT_THAT(selected(), UnorderedElementsAre("b", "c", "d"));
}

TEST_F(AppStateBrowsingTest, anAnchorThatHasLeftTheListIsReplaced) {
    click("a");
    state->setSearchText("b");
    extend("b");
    EXPECT_THAT(selected(), ElementsAre("b"));
    state->clearSearch();
    extend("c");
    EXPECT_THAT(selected(), UnorderedElementsAre("b", "c"));
}

TEST_F(AppStateBrowsingTest, clearingTheSelectionLeavesTheAnchor) {
    click("b");
    state->lock();
    state->unlock("parola", none);
    extend("c");
    EXPECT_THAT(selected(), UnorderedElementsAre("b", "c"));
}

TEST_F(AppStateBrowsingTest, aSearchFindsTheSameWhetherItWasPreparedOrNot) {
    while (state->prepareBrowsing()) {
    }
    EXPECT_FALSE(state->prepareBrowsing());
    state->setSearchText("e");
    EXPECT_THAT(shown(), ElementsAre("e"));
    state->setSort({.column = EntrySort::Column::title, .ascending = false});
    state->edit("Adım", [](KdbxDatabase& database) { database.root.entries.mutableAt(0).title = "eski"; });
    state->prepareBrowsing();
    EXPECT_THAT(shown(), ElementsAre("eski", "e"));
}

TEST_F(AppStateBrowsingTest, thereIsNothingToPrepareWhileLocked) {
    state->lock();
    EXPECT_FALSE(state->prepareBrowsing());
}

}  // namespace
