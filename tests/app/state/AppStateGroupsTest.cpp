// SPDX-License-Identifier: MIT
#include "tests/app/state/StateFakes.h"

#include <gmock/gmock.h>

namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

class AppStateGroupsTest : public StateTest {
protected:
    AppStateGroupsTest() {
        unlock();
        clock.advance(1h);
    }
};

TEST_F(AppStateGroupsTest, anAddedGroupStandsLastInItsExpandedParentAndIsSelected) {
    state->setGroupExpanded(social().id, false);
    auto group = groupNamed("Yeni");
    group.created = group.modified = Timestamp{42};

    state->addGroup(groupNamed("Eski"), social().id);
    state->addGroup(group, social().id);

    ASSERT_EQ(social().groups.size(), 2U);
    EXPECT_EQ(social().groups[1].name, "Yeni");
    EXPECT_EQ(social().groups[1].created, Timestamp{42});
    EXPECT_EQ(social().groups[1].modified, Timestamp{42});
    EXPECT_TRUE(social().isExpanded);
    EXPECT_EQ(social().modified, clock.now());
    EXPECT_EQ(state->selectedGroupID(), group.id);
    EXPECT_EQ(state->undoLabel(), "Grup Ekle");
    EXPECT_TRUE(state->isDirty());
    EXPECT_EQ(files.writes, 0);
}

TEST_F(AppStateGroupsTest, undoingAnAdditionSelectsTheRoot) {
    state->addGroup(groupNamed("Yeni"), root().id);

    state->undo();

    EXPECT_EQ(state->selectedGroupID(), root().id);
    EXPECT_EQ(root().groups.size(), 1U);
}

TEST_F(AppStateGroupsTest, aGroupAddedToNoParentIsAStepThatAddsNothing) {
    const auto group = groupNamed("Yeni");

    state->addGroup(group, UUID::random());

    EXPECT_EQ(root().groups.size(), 1U);
    EXPECT_EQ(state->undoLabel(), "Grup Ekle");
    EXPECT_EQ(state->selectedGroupID(), group.id);
    EXPECT_EQ(state->selectedGroup(), state->root());
}

TEST_F(AppStateGroupsTest, aGroupThatWouldGoTooDeepIsNotAdded) {
    auto parent = root().id;
    for (int level = 2; level <= 2496; ++level) {
        const auto group = groupNamed("Alt");
        state->addGroup(group, parent);
        parent = group.id;
    }
    state->save();
    ASSERT_FALSE(state->lastError());
    const auto selected = state->selectedGroupID();

    state->addGroup(groupNamed("Bir fazla"), parent);

    EXPECT_EQ(state->lastError(),
              "Gruplar ve kayıtlar bu kadar derin iç içe geçemez; böyle bir kasa bir daha açılamaz.");
    EXPECT_FALSE(state->isDirty());
    EXPECT_TRUE(state->selectedGroup()->groups.empty());
    EXPECT_EQ(state->selectedGroupID(), selected);
}

TEST_F(AppStateGroupsTest, anEntryThatWouldGoTooDeepIsNeitherAddedNorMovedNorGivenAHistory) {
    std::vector<UUID> groups{root().id};
    for (int level = 2; level <= 2496; ++level) {
        const auto group = groupNamed("Alt");
        state->addGroup(group, groups.back());
        groups.push_back(group.id);
    }
    const auto inLevel = [&](std::size_t level) { return groups[level - 1]; };
    const auto tooDeep = "Gruplar ve kayıtlar bu kadar derin iç içe geçemez; böyle bir kasa bir daha açılamaz.";
    KdbxEntry entry;
    state->addEntry(entry, inLevel(2495));
    const auto bank = root().entries[0].id;
    state->save();
    ASSERT_FALSE(state->lastError());

    state->addEntry(KdbxEntry(), inLevel(2496));
    EXPECT_EQ(state->lastError(), tooDeep);
    EXPECT_EQ(state->selectedEntryIDs(), std::set{entry.id});
    state->setLastError(std::nullopt);

    state->moveEntriesTo({bank}, inLevel(2496));
    EXPECT_EQ(state->lastError(), tooDeep);
    EXPECT_EQ(root().entries[0].id, bank);
    state->setLastError(std::nullopt);

    entry.title = "Yeni";
    state->updateEntry(entry);
    EXPECT_EQ(state->lastError(), tooDeep);
    EXPECT_FALSE(state->isDirty());
    EXPECT_EQ(state->undoLabel(), "Kayıt Ekle");
}

TEST_F(AppStateGroupsTest, anUpdateTakesOverFourFieldsAndNoOther) {
    auto group = groupNamed("Yeni Ad");
    group.id = social().id;
    group.notes = "Not";
    group.iconID = 12;
    group.defaultAutoTypeSequence = "{ENTER}";
    group.isExpanded = false;
    group.created = group.modified = Timestamp{42};
    group.unknownXML = {"<x/>"};
    const auto before = social();

    state->updateGroup(group);

    EXPECT_EQ(social().name, "Yeni Ad");
    EXPECT_EQ(social().notes, "Not");
    EXPECT_EQ(social().iconID, 12);
    EXPECT_EQ(social().defaultAutoTypeSequence, "{ENTER}");
    EXPECT_EQ(social().modified, clock.now());
    EXPECT_TRUE(social().isExpanded);
    EXPECT_EQ(social().created, before.created);
    EXPECT_TRUE(social().unknownXML.empty());
    EXPECT_THAT(titlesOf(social().entries), ElementsAre("Forum"));
    EXPECT_EQ(state->undoLabel(), "Grubu Düzenle");
}

TEST_F(AppStateGroupsTest, anUpdateFromBeforeAChildAppearedKeepsTheChild) {
    const auto edited = social();
    state->addGroup(groupNamed("Çocuk"), social().id);
    state->addEntry(entryTitled("Yeni"), social().id);

    state->updateGroup(edited);

    EXPECT_EQ(social().groups.size(), 1U);
    EXPECT_THAT(titlesOf(social().entries), ElementsAre("Forum", "Yeni"));
}

TEST_F(AppStateGroupsTest, theRootCanBeUpdated) {
    auto group = root();
    group.name = "Köküm";

    state->updateGroup(group);

    EXPECT_EQ(root().name, "Köküm");
}

TEST_F(AppStateGroupsTest, anUpdateOfAnUnknownGroupIsAStepThatChangesNothing) {
    state->updateGroup(groupNamed("Yok"));

    EXPECT_EQ(social().name, "Sosyal");
    EXPECT_EQ(state->undoLabel(), "Grubu Düzenle");
}

TEST_F(AppStateGroupsTest, aDeletedGroupTakesAllThatItHoldsAndTheRootIsSelected) {
    state->setSelectedGroupID(social().id);
    state->setSelectedEntryIDs({forum().id, bank().id});
    const auto bankID = bank().id;

    state->deleteGroup(social().id);

    EXPECT_TRUE(root().groups.empty());
    EXPECT_EQ(root().allEntries().size(), 2U);
    EXPECT_EQ(state->selectedGroupID(), root().id);
    EXPECT_THAT(state->selectedEntryIDs(), ElementsAre(bankID));
    EXPECT_EQ(state->undoLabel(), "Grubu Sil");
    state->undo();
    EXPECT_THAT(titlesOf(social().entries), ElementsAre("Forum"));
}

TEST_F(AppStateGroupsTest, deletingAGroupOtherThanTheSelectedOneSelectsTheRootToo) {
    const auto other = groupNamed("Öteki");
    state->addGroup(other, root().id);
    ASSERT_EQ(state->selectedGroupID(), other.id);

    state->deleteGroup(social().id);

    EXPECT_EQ(state->selectedGroupID(), root().id);
    EXPECT_EQ(root().groups.size(), 1U);
}

TEST_F(AppStateGroupsTest, theRootCannotBeDeleted) {
    state->setSelectedGroupID(social().id);

    state->deleteGroup(root().id);

    EXPECT_EQ(root().allEntries().size(), 3U);
    EXPECT_FALSE(state->canUndo());
    EXPECT_FALSE(state->isDirty());
    EXPECT_EQ(state->selectedGroupID(), social().id);
    EXPECT_EQ(state->lastError(), std::nullopt);
    EXPECT_EQ(state->statusMessage(), std::nullopt);
}

TEST_F(AppStateGroupsTest, deletingAnUnknownGroupIsAStepThatSelectsTheRoot) {
    state->setSelectedGroupID(social().id);

    state->deleteGroup(UUID::random());

    EXPECT_EQ(root().groups.size(), 1U);
    EXPECT_EQ(state->undoLabel(), "Grubu Sil");
    EXPECT_EQ(state->selectedGroupID(), root().id);
}

TEST_F(AppStateGroupsTest, collapsingAGroupIsNoStepAndNothingToSave) {
    const auto modified = social().modified;
    int changes = 0;
    QObject::connect(&*state, &AppState::databaseChanged, [&] { ++changes; });

    state->setGroupExpanded(social().id, false);

    EXPECT_FALSE(social().isExpanded);
    EXPECT_EQ(social().modified, modified);
    EXPECT_FALSE(state->canUndo());
    EXPECT_FALSE(state->isDirty());
    EXPECT_EQ(changes, 1);
    state->setGroupExpanded(social().id, true);
    EXPECT_TRUE(social().isExpanded);
}

TEST_F(AppStateGroupsTest, collapsingAnUnknownGroupChangesNothing) {
    state->setGroupExpanded(UUID::random(), false);

    EXPECT_TRUE(root().isExpanded);
    EXPECT_TRUE(social().isExpanded);
}

TEST_F(AppStateGroupsTest, aCollapsedGroupIsWrittenAlongWithALaterSave) {
    state->setGroupExpanded(social().id, false);

    state->save();

    EXPECT_FALSE(codec.databaseIn(files.contents.at(vaultFile)).root.groups[0].isExpanded);
}

// A snapshot is the whole vault, so what was collapsed since the step was taken opens again.
TEST_F(AppStateGroupsTest, undoOfALaterStepBringsTheExpansionOfItsTimeBack) {
    state->setGroupExpanded(social().id, false);
    rename("Yeni");
    state->setGroupExpanded(social().id, true);

    state->undo();

    EXPECT_FALSE(social().isExpanded);
}

TEST_F(AppStateGroupsTest, whileLockedOnlyTheSelectionOfAnAdditionIsLeftOfTheVerbs) {
    const auto socialGroup = social();
    const auto group = groupNamed("Yeni");
    state->lock();

    state->updateGroup(socialGroup);
    state->deleteGroup(socialGroup.id);
    state->setGroupExpanded(socialGroup.id, false);
    EXPECT_EQ(state->selectedGroupID(), std::nullopt);
    state->addGroup(group, socialGroup.id);

    EXPECT_FALSE(state->database().has_value());
    EXPECT_FALSE(state->canUndo());
    EXPECT_FALSE(state->isDirty());
    EXPECT_EQ(state->selectedGroupID(), group.id);
}

}  // namespace
