// SPDX-License-Identifier: MIT
#include "tests/app/state/StateFakes.h"

#include <gmock/gmock.h>

namespace {

using namespace std::chrono_literals;
using Column = EntrySort::Column;
using Shift = AppState::Shift;
using ::testing::ElementsAre;

/// The root holds the entries "A" to "D" and the groups "İş", with "Sunucular" in it, "Ev" and "Okul".
class AppStateMovesTest : public StateTest {
protected:
    AppStateMovesTest() {
        auto vault = smallVault();
        vault.root.entries = {entryTitled("A"), entryTitled("B"), entryTitled("C"), entryTitled("D")};
        auto work = groupNamed("İş");
        work.groups = {groupNamed("Sunucular")};
        work.isExpanded = false;
        vault.root.groups = {work, groupNamed("Ev"), groupNamed("Okul")};
        putVault(vault);
        unlock();
        state->setSort({.column = Column::manual, .ascending = true});
        clock.advance(1h);
    }

    UUID entry(const std::string& title) const {
        for (const auto& each : root().allEntries())
            if (each.title == title)
                return each.id;
        ADD_FAILURE() << "no entry " << title;
        return {};
    }
    const KdbxGroup& work() const { return root().groups[0]; }
    const KdbxGroup& servers() const { return work().groups[0]; }
    const KdbxGroup& home() const { return root().groups[1]; }

    std::vector<std::string> stored() const { return titlesOf(root().entries); }
    static std::vector<std::string> namesIn(const KdbxGroup& group) {
        std::vector<std::string> names;
        for (const auto& each : group.groups)
            names.push_back(each.name);
        return names;
    }
};

TEST_F(AppStateMovesTest, anEntryGoesOneRowUpOrDown) {
    state->shiftEntries({entry("C")}, Shift::up);
    EXPECT_THAT(stored(), ElementsAre("A", "C", "B", "D"));
    EXPECT_EQ(state->undoLabel(), "Sırayı Değiştir");
    state->shiftEntries({entry("C")}, Shift::down);
    state->shiftEntries({entry("C")}, Shift::down);
    EXPECT_THAT(stored(), ElementsAre("A", "B", "D", "C"));
}

TEST_F(AppStateMovesTest, severalEntriesGoTogetherBesideTheFirstOrTheLastOfThem) {
    state->shiftEntries({entry("B"), entry("D")}, Shift::up);
    EXPECT_THAT(stored(), ElementsAre("B", "D", "A", "C"));
    state->shiftEntries({entry("B"), entry("D")}, Shift::down);
    EXPECT_THAT(stored(), ElementsAre("A", "B", "D", "C"));
}

TEST_F(AppStateMovesTest, atTheEndOfTheListNothingMoves) {
    state->shiftEntries({entry("A")}, Shift::up);
    state->shiftEntries({entry("D")}, Shift::down);
    state->shiftEntries({UUID::random()}, Shift::up);
    state->shiftEntries({}, Shift::down);
    EXPECT_FALSE(state->canUndo());
}

TEST_F(AppStateMovesTest, aSearchHasNoOrderToChange) {
    state->setSearchText("a b");
    state->shiftEntries({entry("B")}, Shift::up);
    EXPECT_FALSE(state->canUndo());
}

TEST_F(AppStateMovesTest, aSortedListIsFrozenAsADragDoes) {
    state->setSort({.column = Column::title, .ascending = false});
    state->shiftEntries({entry("A")}, Shift::up);
    EXPECT_THAT(stored(), ElementsAre("D", "C", "A", "B"));
    EXPECT_EQ(state->sort().column, Column::manual);
    EXPECT_EQ(state->statusMessage(), "Kendi sıralamana geçildi.");
    state->undo();
    EXPECT_EQ(state->sort().column, Column::title);
}

TEST_F(AppStateMovesTest, aGroupMovesWithAllThatItHoldsToTheEndOfAnother) {
    const auto id = home().id;
    state->setSelectedGroupID(id);
    state->moveGroupTo(id, work().id);

    EXPECT_THAT(namesIn(root()), ElementsAre("İş", "Okul"));
    EXPECT_THAT(namesIn(work()), ElementsAre("Sunucular", "Ev"));
    EXPECT_TRUE(work().isExpanded) << "so that the group is seen where it is now";
    EXPECT_EQ(work().modified, clock.now());
    EXPECT_EQ(state->selectedGroupID(), id);
    EXPECT_EQ(state->undoLabel(), "Grubu Taşı");
    EXPECT_TRUE(state->isDirty());

    state->undo();
    EXPECT_THAT(namesIn(root()), ElementsAre("İş", "Ev", "Okul"));
    EXPECT_FALSE(work().isExpanded);
}

TEST_F(AppStateMovesTest, aGroupCannotBePutIntoWhatItHolds) {
    for (const auto& [group, target] :
         {std::pair(work().id, work().id), std::pair(work().id, servers().id), std::pair(root().id, work().id),
          std::pair(UUID::random(), work().id), std::pair(work().id, UUID::random())}) {
        EXPECT_FALSE(state->canMoveGroup(group, target));
        state->moveGroupTo(group, target);
    }
    EXPECT_FALSE(state->canUndo());
    EXPECT_TRUE(state->canMoveGroup(servers().id, home().id));
}

/// Groups within each other down to the `level`th from the top, each of which has its level as its name.
KdbxGroup groupsDownTo(int level) {
    auto group = groupNamed(std::to_string(level));
    while (--level > 1) {
        auto parent = groupNamed(std::to_string(level));
        parent.groups = {std::move(group)};
        group = std::move(parent);
    }
    return group;
}

TEST_F(AppStateMovesTest, aGroupGoesNoDeeperThanCanBeOpenedAgain) {
    state->edit("Adım", [](KdbxDatabase& database) { database.root.groups.append(groupsDownTo(2495)); });
    const auto* deep = &root().groups[3];
    while (deep->name != "2494")
        deep = &deep->groups[0];
    const auto deepest = deep->groups[0].id;  // takes a group, but none that holds another
    const auto above = deep->id;

    EXPECT_FALSE(state->canMoveGroup(work().id, deepest));
    EXPECT_TRUE(state->canMoveGroup(home().id, deepest));
    EXPECT_TRUE(state->canMoveGroup(work().id, above));
    EXPECT_EQ(state->deepestParentLevel(work().id), 2494U);
    EXPECT_EQ(state->deepestParentLevel(home().id), 2495U);

    state->moveGroupTo(work().id, deepest);
    EXPECT_EQ(state->lastError(),
              "Gruplar ve kayıtlar bu kadar derin iç içe geçemez; böyle bir kasa bir daha açılamaz.");
    EXPECT_EQ(state->undoLabel(), "Adım");
    EXPECT_EQ(work().name, "İş");

    state->setLastError(std::nullopt);
    state->moveGroupTo(work().id, above);
    state->save();
    EXPECT_EQ(state->lastError(), std::nullopt);
    EXPECT_FALSE(state->isDirty());
}

TEST_F(AppStateMovesTest, theHistoriesOfAGroupsEntriesCountForItsDepth) {
    state->edit("Adım", [](KdbxDatabase& database) {
        auto& home = database.root.groups.mutableAt(1);
        home.entries = {entryTitled("Eski")};
        database.root.groups.append(groupsDownTo(2493));
    });
    EXPECT_EQ(state->deepestParentLevel(home().id), 2494U);

    auto entry = home().entries[0];
    entry.title = "Yeni";
    state->updateEntry(entry);

    EXPECT_EQ(state->deepestParentLevel(home().id), 2492U) << "the entry has a history now";
}

TEST_F(AppStateMovesTest, aGroupThatIsLastInItsParentStaysThere) {
    state->moveGroupTo(servers().id, work().id);
    EXPECT_FALSE(state->canUndo());
    state->moveGroupTo(work().id, root().id);
    EXPECT_THAT(namesIn(root()), ElementsAre("Ev", "Okul", "İş"));
}

TEST_F(AppStateMovesTest, aGroupChangesPlacesWithItsNeighbour) {
    const auto id = home().id;
    state->shiftGroup(id, Shift::up);
    EXPECT_THAT(namesIn(root()), ElementsAre("Ev", "İş", "Okul"));
    EXPECT_EQ(root().modified, clock.now());
    EXPECT_EQ(state->undoLabel(), "Sırayı Değiştir");
    state->shiftGroup(id, Shift::up);
    state->shiftGroup(root().id, Shift::down);
    state->shiftGroup(UUID::random(), Shift::down);
    EXPECT_THAT(namesIn(root()), ElementsAre("Ev", "İş", "Okul")) << "there is no group above";
    state->shiftGroup(id, Shift::down);
    state->shiftGroup(id, Shift::down);
    state->shiftGroup(id, Shift::down);
    EXPECT_THAT(namesIn(root()), ElementsAre("İş", "Okul", "Ev"));
}

TEST_F(AppStateMovesTest, eachStepSaysWhatWasDoneAlsoTwiceTheSame) {
    std::vector<std::pair<AppState::Change::Kind, std::string>> changes;
    QObject::connect(&*state, &AppState::lastChangeMade, &*state,
                     [&] { changes.emplace_back(state->lastChange().kind, state->lastChange().label); });
    state->deleteEntries({entry("A")});
    state->deleteEntries({entry("B")});
    state->undo();
    state->redo();
    using Kind = AppState::Change::Kind;
    EXPECT_THAT(changes, ElementsAre(std::pair(Kind::made, "Kaydı Sil"), std::pair(Kind::made, "Kaydı Sil"),
                                     std::pair(Kind::undone, "Kaydı Sil"), std::pair(Kind::redone, "Kaydı Sil")));
}

TEST_F(AppStateMovesTest, aLockedVaultHasNothingToMove) {
    const auto group = home().id;
    const auto target = work().id;
    state->lock();
    state->shiftEntries({UUID::random()}, Shift::up);
    state->moveGroupTo(group, target);
    state->shiftGroup(group, Shift::up);
    EXPECT_TRUE(state->isLocked());
    EXPECT_FALSE(state->canMoveGroup(group, target));
    EXPECT_EQ(state->deepestParentLevel(group), 0U);
}

}  // namespace
